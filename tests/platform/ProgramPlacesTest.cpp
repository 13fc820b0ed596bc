#include "platform/ProgramPlaces.h"

#include "platform/FileSystem.h"
#include "support/OrdinaryUser.h"
#include "support/TempFolder.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace quoril {
namespace {

using test::TempFolder;

TEST(ProgramPlaces, KnowsTheRunningExecutable) {
    EXPECT_EQ(NameOfPath(ProgramFile()), "program_places_tests");
    EXPECT_TRUE(std::filesystem::equivalent(ProgramFile(), "/proc/self/exe"));
}

/// What a copy of the small program that prints its places prints: program file, settings folder.
std::pair<std::string, std::string> PlacesOf(const std::string& Copy, const char* Argument) {
    int Ends[2];
    if (::pipe(Ends) != 0)
        return {};
    const pid_t Child = ::fork();
    if (Child == 0) {
        ::dup2(Ends[1], STDOUT_FILENO);
        ::close(Ends[0]);
        ::close(Ends[1]);
        ::execl(Copy.c_str(), Copy.c_str(), Argument, static_cast<char*>(nullptr));
        ::_exit(99);
    }
    ::close(Ends[1]);
    std::string Output;
    char Byte;
    while (::read(Ends[0], &Byte, 1) == 1)
        Output += Byte;
    ::close(Ends[0]);
    int Status = 0;
    if (::waitpid(Child, &Status, 0) != Child || Status != 0)
        return {};
    const std::size_t First = Output.find('\0');
    return {Output.substr(0, First), Output.substr(First + 1, Output.size() - First - 2)};
}

TEST(ProgramPlaces, TakesAnyNameOfTheExecutableAsItIs) {
    const TempFolder Folder;
    const std::string Deep = Folder / (std::string(200, 'd') + "/" + std::string(200, 'e'));
    for (const std::string& Place : {Deep, Folder / "caf\xE9 \xFF", Folder / "a (deleted)"}) {
        std::filesystem::create_directories(Place);
        const std::string Copy = Place + "/program (deleted)";
        std::filesystem::copy_file(PLACES_PRINTER, Copy);
        EXPECT_EQ(PlacesOf(Copy, nullptr), std::pair(Copy, Place));
    }
}

TEST(ProgramPlaces, AfterAnUpdateInPlaceTheNameIsThatOfTheNewProgram) {
    const TempFolder Folder;
    const std::string Copy = Folder / "program";
    std::filesystem::copy_file(PLACES_PRINTER, Copy);
    EXPECT_EQ(PlacesOf(Copy, "unlink"), std::pair(Copy, Folder.Path()));
    EXPECT_FALSE(FileExists(Copy));
}

TEST(ProgramPlaces, SettingsLieBesideAProgramInAWritableFolder) {
    const TempFolder Folder;
    ::setenv("XDG_CONFIG_HOME", (Folder / "config").c_str(), 1);
    EXPECT_EQ(FolderForSettings(Folder.Path()), Folder.Path());
    EXPECT_FALSE(FolderExists(Folder / "config"));
}

TEST(ProgramPlaces, OtherwiseInTheUsersOwnFolderWhichIsMade) {
    const TempFolder Folder;
    ::setenv("XDG_CONFIG_HOME", (Folder / "deep/config/").c_str(), 1);
    EXPECT_EQ(FolderForSettings("/no/such/folder"), Folder / "deep/config/quoril-wave-editor");
    EXPECT_TRUE(FolderExists(Folder / "deep/config/quoril-wave-editor"));
}

TEST(ProgramPlaces, FolderWithoutTheRightToWriteIsNotTaken) {
    const TempFolder Folder;
    const std::string Home = Folder / "home";
    const std::string Installed = Folder / "installed";
    ASSERT_TRUE(MakeFolderPath(Home));
    ASSERT_TRUE(MakeFolderPath(Installed));
    ASSERT_EQ(::chmod(Folder.Path().c_str(), 0755), 0);
    ASSERT_EQ(::chmod(Installed.c_str(), 0555), 0);
    // The right to write everywhere goes with the user.
    ASSERT_EQ(::geteuid() == 0 ? ::chown(Home.c_str(), 65534, 65534) : 0, 0);
    EXPECT_EQ(test::AsOrdinaryUser([&] {
                  ::setenv("XDG_CONFIG_HOME", Home.c_str(), 1);
                  const std::string Expected = Home + "/quoril-wave-editor";
                  return FolderForSettings(Installed) == Expected && FolderExists(Expected) ? 0 : 1;
              }),
              0);
}

TEST(ProgramPlaces, WithoutAnAbsoluteConfigFolderItIsInTheHomeFolder) {
    const TempFolder Folder;
    ::setenv("HOME", Folder.Path().c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", "relative/config", 1);
    EXPECT_EQ(FolderForSettings("/no/such/folder"), Folder / ".config/quoril-wave-editor");
    ::unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(FolderForSettings("/no/such/folder"), Folder / ".config/quoril-wave-editor");
    EXPECT_TRUE(FolderExists(Folder / ".config/quoril-wave-editor"));
}

TEST(ProgramPlaces, TemporaryFolderIsTheOneOfTheEnvironment) {
    const TempFolder Folder;
    ::setenv("TMPDIR", (Folder.Path() + "//").c_str(), 1);
    EXPECT_EQ(GetTempPathA(), Folder.Path());
}

TEST(ProgramPlaces, OtherwiseTheTemporaryFolderOnTheDisk) {
    const TempFolder Folder;
    const std::string Usual = FolderExists("/var/tmp") ? "/var/tmp" : "/tmp";
    for (const std::string& Useless :
         {Folder / "missing", Folder.Write("file", ""), std::string(), std::string("/")}) {
        ::setenv("TMPDIR", Useless.c_str(), 1);
        EXPECT_EQ(GetTempPathA(), Usual) << Useless;
    }
    ::unsetenv("TMPDIR");
    EXPECT_EQ(GetTempPathA(), Usual);
}

} // namespace
} // namespace quoril
