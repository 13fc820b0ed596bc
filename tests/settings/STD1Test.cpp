#include "settings/STD1.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace quoril {
namespace {

using test::TempFolder;

class STD1 : public ::testing::Test {
  protected:
    STD1() {
        AppPath = Folder.Path();
        SysTempDir = Folder.Path();
        TmpDir0 = Folder.Path();
    }
    const TempFolder Folder;
};

TEST_F(STD1, EmptySectionAndKeyReadTheKeyEndInGeneral) {
    IniPut("General", "END", "found");
    std::string Section;
    std::string Key;
    EXPECT_EQ(IniGet(Section, Key, "default"), "found");
    EXPECT_EQ(Section, "General");
    EXPECT_EQ(Key, "END");
}

TEST_F(STD1, LongValueIsCutByIniGetAndWholeFromProfileGet) {
    const std::string Value(120, 'v');
    IniPut("General", "Long", Value);
    EXPECT_EQ(IniGet("General", "Long", ""), std::string(99, 'v'));
    EXPECT_EQ(ProfileGet("General", "Long", "", SettingsFileName()), Value);
}

} // namespace
} // namespace quoril
