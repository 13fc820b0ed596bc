// The real player where something goes wrong: what is told, and what is left behind.
#include "PlayerSoundFixture.h"
#include "base/Failure.h"

namespace quoril::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class PlayerFaultsTest : public PlayerSoundTest {};

TEST_F(PlayerFaultsTest, TheServersEndIsToldAndTheNextStartFindsANewOne) {
    Begin();
    Load(Sound(4 * Rate));
    Player->PlayForward();
    WaitHeard(Rate / 4);
    Heard.reset();
    Server->Kill();
    ASSERT_TRUE(WaitFor([&] { return Player->PlayStatus() == 0; }));
    ASSERT_TRUE(WaitFor([&] { return !Messages.empty(); }));
    EXPECT_THAT(Messages.front(), HasSubstr("lost"));
    Server->Restart();
    Heard = std::make_unique<Recorder>(*Server, 1);
    Player->PlayForward();
    WaitHeard(Rate / 4);
    EXPECT_EQ(Player->PlayStatus(), 1);
}

TEST_F(PlayerFaultsTest, AMissingFileIsSilentAndTold) {
    Begin();
    BlockWords List;
    List.Add(Folder / "nothing", Rate / 4, 3, 1);
    Player->Load(16, 1, Rate, Rate / 4, List.Words, NoList);
    Player->PlayForward();
    ASSERT_TRUE(WaitFor([&] { return Player->PlayStatus() == 0; }));
    ASSERT_TRUE(WaitFor([&] { return !Messages.empty(); }));
    EXPECT_THAT(Messages.front(), HasSubstr("nothing"));
}

TEST_F(PlayerFaultsTest, ADeviceThatVanishesIsToldAndTheNextStartFindsAnother) {
    Begin();
    Load(Sound(4 * Rate));
    Player->PlayForward();
    WaitHeard(Rate / 4);
    Heard.reset();
    Server->TakeDeviceAway();
    ASSERT_TRUE(WaitFor([&] { return Player->PlayStatus() == 0; }));
    ASSERT_TRUE(WaitFor([&] { return !Messages.empty(); }));
    EXPECT_THAT(Messages, ElementsAre(HasSubstr("lost")));
    Player->PlayForward(); // without any device
    ASSERT_TRUE(WaitFor([&] { return Player->PlayStatus() == 0; }));
    Server->PutDeviceBack();
    Heard = std::make_unique<Recorder>(*Server, 1);
    Player->PlayForward();
    EXPECT_TRUE(HeardToTheEnd() == All);
}

TEST_F(PlayerFaultsTest, AFileThatWasChangedAfterItWasEnteredIsSilentAndTold) {
    Begin();
    constexpr std::int32_t Part = Rate / 4;
    const Samples Good = Sound(Part);
    const std::string Work = WriteSamples(Folder, "work", Good);
    const std::string Opened = WriteSamples(Folder, "opened", Sound(Part, 2));
    const std::vector<EnteredFile> Entered = {{Opened, IdentityOfFile(Opened)}};
    const BlockWords List =
        BlockWords().Add(Opened, Part, 4, 1, 1, 1, 16).Add(Work, Part, 3, Part + 1);
    Player->FilesEntered(Entered);
    Player->Load(16, 1, Rate, 2 * Part, List.Words, NoList);
    WriteSamples(Folder, "opened", Sound(Part, 3)); // of the same length
    Player->PlayForward();
    EXPECT_TRUE(HeardToTheEnd() == Good);
    EXPECT_THAT(Messages, ElementsAre(HasSubstr(Opened)));
    Heard = std::make_unique<Recorder>(*Server, 1);
    Player->FilesEntered({{Opened, IdentityOfFile(Opened)}});
    Player->Load(16, 1, Rate, Part, List.Words, NoList);
    Player->PlayForward();
    EXPECT_TRUE(HeardToTheEnd() == Sound(Part, 3)) << "entered as it is now";
    EXPECT_EQ(Messages.size(), 1U);
}

TEST_F(PlayerFaultsTest, AWorkFileThatCannotBeReadIsSilentAndToldAndTheRestIsHeard) {
    Begin();
    constexpr std::int32_t Part = Rate / 4;
    const Samples Good = Sound(Part);
    std::filesystem::create_directory(Folder / "folder");
    BlockWords List;
    List.Add(Folder / "folder", Part, 3, 1);
    List.Add(WriteSamples(Folder, "good", Good), Part, 3, Part + 1);
    List.Add(WriteSamples(Folder, "short", {1, 2, 3}), Part, 3, 2 * Part + 1);
    List.Add("/dev/mem", Part, 3, 3 * Part + 1);
    Player->Load(16, 1, Rate, 4 * Part, List.Words, NoList);
    Player->PlayForward();
    const Samples Got = HeardToTheEnd();
    EXPECT_TRUE(Got == Good) << Got.size();
    EXPECT_THAT(Messages, ElementsAre(HasSubstr("folder"))) << "told once";
}

TEST_F(PlayerFaultsTest, AWorkFileThatIsCutShortWhileItPlaysIsSilentFromThereOn) {
    Begin();
    Player->MemoryBytes(500000); // reads less than a second ahead
    Load(Sound(4 * Rate));
    Player->PlayForward();
    WaitHeard(Rate / 4);
    std::filesystem::resize_file(Folder / "sound", 100);
    const Samples Got = HeardToTheEnd();
    EXPECT_LT(Got.size(), All.size());
    EXPECT_TRUE(std::equal(Got.begin(), Got.end(), All.begin()));
    EXPECT_THAT(Messages, ElementsAre(HasSubstr("sound")));
}

TEST_F(PlayerFaultsTest, OnlyItsUserCanReachIt) {
    const std::string Socket = Folder / "player.socket";
    const TestChild Process(
        {PLAYER_PROGRAM, "unix:path=" + Socket, std::to_string(static_cast<int>(::getpid()))});
    char Letter = 0;
    ASSERT_EQ(ReadOnce(Process.Output(), &Letter, 1), 1); // it has said that it is ready
    using std::filesystem::perms;
    const std::filesystem::file_status File = std::filesystem::status(Socket);
    EXPECT_EQ(File.type(), std::filesystem::file_type::socket);
    EXPECT_EQ(File.permissions() & (perms::group_all | perms::others_all), perms::none);
    EXPECT_EQ(std::filesystem::status(Folder.Path()).permissions() &
                  (perms::group_all | perms::others_all),
              perms::none)
        << "as the folder of a session";
}

TEST_F(PlayerFaultsTest, ItsSocketLiesInTheSessionFolderAndLosesItsNameAtOnce) {
    const auto Made = Make();
    EXPECT_TRUE(std::filesystem::is_empty(Folder.Path()));
    EXPECT_THROW((void)StartPlayerProcess(PLAYER_PROGRAM, Folder / "no folder"), Failure);
}

TEST_F(PlayerFaultsTest, HostileListsHarmNobody) {
    Begin();
    const std::int32_t Low = -2147483647 - 1;
    const std::vector<std::vector<std::int32_t>> Lists = {
        {},
        {0},
        {-1},
        {1, 1000000000},
        {2147483647, 2147483647},
        {9, 1, 2, -4, 32, 5, 5, 1, 0, 0},
        {10, 1, 2, 1, 32, Low, 5, 1, 0, 0, 0},
        {10, 1, 2, 1, 32, 2147483647, 3, 1, 2147483647, 0, 0},
        {10, 1, 2, 1, 47, 1000, 4, 1, 1, 2, 16}};
    for (const std::vector<std::int32_t>& List : Lists) {
        Player->Load(16, 2, Rate, 4000, List, List);
        Player->PlayForward();
        Player->UTurn();
        Player->PlayReverseFrom(Low);
        Player->PlayForwardFrom(2147483647);
        EXPECT_GE(Player->PlayPosition(), 0);
        Player->Stop();
        EXPECT_EQ(Player->PlayStatus(), 0);
    }
    Player->Load(99, -1, 0, Low, {0}, {0});
    Player->PlayForward();
    EXPECT_EQ(Player->PlayStatus(), 0);
    ASSERT_TRUE(WaitFor([&] { return !Messages.empty(); }));
    Load(Sound(Rate / 4));
    Player->PlayForward();
    EXPECT_TRUE(HeardToTheEnd() == All) << "it still plays";
}

TEST_F(PlayerFaultsTest, WhatAPlayerThatEndedOrHangsFailsWithIsSaidInPlainWords) {
    const auto WordsOf = [this] {
        try {
            (void)Player->PlayStatus();
        } catch (const PlayerGone& Told) {
            return std::string(Told.what());
        }
        return std::string();
    };
    Player = Make();
    ASSERT_EQ(WordsOf(), "");
    ::kill(PlayerProcessId(*Player), SIGSTOP);
    EXPECT_EQ(WordsOf(), "The player does not answer.\nThe next Play starts it anew.");
    ::kill(PlayerProcessId(*Player), SIGKILL);
    ASSERT_TRUE(WaitFor([&] { return !Player->IsAlive(); }));
    EXPECT_EQ(WordsOf(), "The player has ended.\nThe next Play starts it anew.");
}

TEST_F(PlayerFaultsTest, AKilledPlayerIsSeenAndLeavesNothingAHundredTimes) {
    Begin();
    for (int Round = 0; Round < 100; ++Round) {
        Load(Sound(Rate));
        Player->PlayForward();
        const int Process = PlayerProcessId(*Player);
        ::kill(Process, SIGKILL);
        EXPECT_THROW(
            {
                for (int Try = 0; Try < 1000; ++Try)
                    (void)Player->PlayStatus();
            },
            Failure);
        ASSERT_TRUE(WaitFor([&] { return !Player->IsAlive(); }));
        EXPECT_FALSE(ProcessExists(Process)) << "not even a zombie";
        Player = Make();
        ASSERT_EQ(Player->DriverState(1), 1);
    }
    const int Last = PlayerProcessId(*Player);
    Player.reset();
    EXPECT_FALSE(ProcessExists(Last));
    for (const auto& Entry : std::filesystem::directory_iterator(Folder.Path()))
        EXPECT_EQ(Entry.path().filename(), "sound") << "no socket stays behind";
}

TEST_F(PlayerFaultsTest, ItEndsWithinASecondOfItsEditorsDeath) {
    Begin();
    // A stand-in for the editor: starts a player, tells its number, and is killed.
    TestChild Editor({EDITOR_STAND_IN, PLAYER_PROGRAM, Folder.Path()});
    std::string Said;
    char Letter = 0;
    while (ReadOnce(Editor.Output(), &Letter, 1) == 1 && Letter != '\n')
        Said.push_back(Letter);
    const int Process = std::stoi(Said);
    ASSERT_TRUE(ProcessRuns(Process));
    Editor.Kill();
    EXPECT_TRUE(WaitFor([&] { return !ProcessRuns(Process); }, milliseconds(1000)));
}

TEST_F(PlayerFaultsTest, AFolderWithALongOrStrangeNameIsNoHindrance) {
    Begin();
    for (const std::string& Name :
         {std::string("with blank, comma; 100%"), std::string(200, 'x'), std::string("\xC3\xA4")}) {
        const std::string Where = Folder / Name;
        std::filesystem::create_directory(Where);
        const auto Other = StartPlayerProcess(PLAYER_PROGRAM, Where);
        EXPECT_EQ(Other->PlayStatus(), 0) << Name;
        EXPECT_TRUE(std::filesystem::is_empty(Where));
    }
}

TEST_F(PlayerFaultsTest, AProgramThatDoesNotStartIsToldSoon) {
    EXPECT_THROW((void)StartPlayerProcess(Folder / "nothing", Folder.Path()), Failure);
    EXPECT_THROW((void)StartPlayerProcess("/bin/true", Folder.Path()), Failure);
}

} // namespace
} // namespace quoril::test
