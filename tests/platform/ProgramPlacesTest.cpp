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

TEST(ProgramPlaces, SettingsNeverLieAmongTheProgramsOfTheSystemEvenWhereTheyCouldBeWritten) {
    const TempFolder Folder;
    ::setenv("XDG_CONFIG_HOME", Folder.Path().c_str(), 1);
    for (const char* Installed :
         {"/usr/bin", "/usr/local/bin", "/usr/local/bin/", "/opt", "/usr/lib", "/bin"})
        EXPECT_EQ(FolderForSettings(Installed), Folder / "quoril-wave-editor") << Installed;
    EXPECT_FALSE(FileExists("/usr/bin/quoril-wave-editor.ini"));
}

TEST(ProgramPlaces, FoldersOfTheSystemAreKnownByTheirWholeNames) {
    for (const char* Folder : {"/usr", "/usr/bin", "/usr/local/bin", "/usr/games/", "/opt",
                               "/opt/quoril/bin", "/home/../opt/quoril", "//usr//bin", "/bin",
                               "/sbin", "/snap/quoril/7/bin", "/nix/store/x/bin"})
        EXPECT_TRUE(IsSystemFolder(Folder)) << Folder;
    for (const char* Folder :
         {"/", "", "/home/me/bin", "/home/me/usr/bin", "/home/opt", "/optional", "/usr2/bin",
          "/srv/quoril", "/media/stick/opt", "usr/bin"})
        EXPECT_FALSE(IsSystemFolder(Folder)) << Folder;
}

TEST(ProgramPlaces, SoundsAreLookedForInTheMusicFolderElseInTheHomeFolder) {
    const TempFolder Home;
    ::setenv("HOME", Home.Path().c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", (Home / "config").c_str(), 1);
    EXPECT_EQ(FolderForSounds(), Home.Path());
    ASSERT_TRUE(MakeFolderPath(Home / "Music"));
    EXPECT_EQ(FolderForSounds(), Home / "Music");
    ASSERT_TRUE(MakeFolderPath(Home / "config"));
    const auto Note = [&Home](const std::string& Where) {
        (void)Home.Write("config/user-dirs.dirs", "# folders\nXDG_DESKTOP_DIR=\"$HOME/Desk\"\n"
                                                  "XDG_MUSIC_DIR=\"" +
                                                      Where + "\"\nXDG_VIDEOS_DIR=\"/\"\n");
    };
    Note("$HOME/my songs");
    EXPECT_EQ(FolderForSounds(), Home / "Music") << "a folder that is not there";
    ASSERT_TRUE(MakeFolderPath(Home / "my songs"));
    EXPECT_EQ(FolderForSounds(), Home / "my songs");
    ASSERT_TRUE(MakeFolderPath(Home / "elsewhere"));
    Note(Home / "elsewhere/");
    EXPECT_EQ(FolderForSounds(), Home / "elsewhere");
    Note("$HOME/");
    EXPECT_EQ(FolderForSounds(), Home.Path()) << "the desktop has none";
    for (const char* Broken : {"", "relative", "$HOME"}) {
        Note(Broken);
        EXPECT_EQ(FolderForSounds(), Home / "Music") << Broken;
    }
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
