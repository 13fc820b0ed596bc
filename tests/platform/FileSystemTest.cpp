#include "platform/FileSystem.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace quoril {
namespace {

using test::TempFolder;

TEST(FileSystem, TellsFilesFromFolders) {
    const TempFolder Folder;
    const std::string File = Folder.Write("a.wav", "x");
    EXPECT_TRUE(FileExists(File));
    EXPECT_FALSE(FileExists(Folder.Path()));
    EXPECT_FALSE(FileExists(File + "x"));
    EXPECT_FALSE(FileExists(""));
    EXPECT_FALSE(FileExists(File + std::string(1, '\0') + "more"));
    EXPECT_TRUE(FolderExists(Folder.Path()));
    EXPECT_TRUE(FolderExists(Folder.Path() + "/"));
    EXPECT_FALSE(FolderExists(File));
    EXPECT_FALSE(FolderExists(File + "/"));
}

} // namespace
} // namespace quoril
