// The help against the commands that the whole program has.
#include "shell/EditorFixture.h"
#include "shell/HelpTopics.h"
#include "shell/HelpViewer.h"
#include "shell/OptionsFrm.h"
#include "view/MenuTable.h"

namespace quoril::test {

namespace {

class HelpCoverageTest : public EditorFixture {};

TEST_F(HelpCoverageTest, EveryMenuEntryWithACommandHasATopic) {
    Start();
    int Seen = 0;
    for (const std::vector<MenuRow>* Table : {&MenuTable(), &PopMnuTable()})
        for (const MenuRow& Row : *Table)
            if (Window().Commands.Has(Row.Name)) {
                ++Seen;
                EXPECT_NE(HelpContextOf(Row.Name), 0) << Row.Name;
            }
    EXPECT_GT(Seen, 30);
}

TEST_F(HelpCoverageTest, APageOfTheOptionsLeadsToItsTopic) {
    const OptionsFrm Options({}, nullptr);
    const auto PageOf = [&Options](const char* Name) {
        return HelpPageOf(HelpContextAt(Options.findChild<QWidget*>(QLatin1String(Name))));
    };
    EXPECT_EQ(PageOf("ColorNmLst"), "options.html#colors");
    EXPECT_EQ(PageOf("LoopPlay_Chk"), "options.html#play");
    EXPECT_EQ(PageOf("Guide_Option_1"), "options.html#guide");
    EXPECT_EQ(PageOf("TempPathTxt"), "options.html#disk");
    EXPECT_EQ(PageOf("SoundDriverBtn_0"), "options.html#sound");
    EXPECT_EQ(PageOf("OkBtn"), "options.html");
}

} // namespace

} // namespace quoril::test
