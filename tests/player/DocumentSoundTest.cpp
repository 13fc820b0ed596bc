// What is heard of a document while the user works on it: the real store, the real file commands
// and the real player, with a recording of the sound server.
#include "PlayerSoundFixture.h"
#include "audiofile/FileCommands.h"
#include "audiofile/WavHeader.h"
#include "base/PlayState.h"
#include "base/ViewState.h"
#include "effects/VolumeCommands.h"
#include "playback/DsPlayClass.h"
#include "playback/PlayMod.h"
#include "playback/SoundDriver.h"
#include "settings/STD1.h"
#include "settings/UserGuideMod.h"
#include "storage/FileMemoClass.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include <fcntl.h>
#include <unistd.h>

namespace quoril::test {
namespace {

using ::testing::IsEmpty;

/// A sample that belongs to this place of this channel alone, as far as the ear of a test goes;
/// never 0, so that it is told from silence.
std::int16_t SampleAt(std::int64_t Frame, int Channel) {
    std::uint64_t Mixed = static_cast<std::uint64_t>(2 * Frame + Channel + 1) * 0x9E3779B97F4A7C15U;
    Mixed ^= Mixed >> 29U;
    Mixed *= 0xBF58476D1CE4E5B9U;
    return static_cast<std::int16_t>((Mixed >> 40U) | 1U);
}

/// The dialogs and the surroundings of the file commands, with the player among them.
class Around final : public FileDialogs, public FileCommandsView {
  public:
    std::string SaveName;

    std::optional<std::string> OpenFile(const FileDialogRequest&) override { return {}; }
    std::optional<std::string> SaveFile(const FileDialogRequest&) override { return SaveName; }
    bool ConfirmSelection(std::int32_t&, std::int32_t&, std::int32_t&, std::int32_t,
                          const std::string&) override {
        return false;
    }
    void DocumentReplaced(std::int32_t, bool) override {}
    void SetDocumentTitle(const std::string&) override {}
    void SetMenu_To_DefaultFormat() override {}
    void Refresh_Wave_View() override {}
    void ShowRecentFiles(const std::vector<std::string>&) override {}
    void StartProgram(const std::vector<std::string>&) override {}
    void ReleasePlayingFiles(bool OnlyOriginal) override {
        quoril::ReleasePlayingFiles(OnlyOriginal);
    }
    void EmptyBookmarks() override {}
};

class DocumentSoundTest : public ::testing::Test {
  protected:
    explicit DocumentSoundTest(std::int32_t Budget = 2000000) : Session(Budget), Server(2) {
        GuideChanceFix(0.9); // no tips
        // Work files on a disk, not in memory.
        SessionDir = Folder / "session";
        std::filesystem::create_directory(SessionDir);
        WaveStore = std::make_unique<FileMemoClass>();
        DsPlayer = std::make_unique<DsPlayClass>(
            [] { return StartPlayerProcess(PLAYER_PROGRAM, SessionDir); });
        SoundDriverSwitch(SoundDriverOn);
        EXPECT_EQ(SoundDriverState, 1);
        Heard = std::make_unique<Recorder>(Server, 2);
    }
    ~DocumentSoundTest() override {
        PlayCommand(PlayStopAndRelease, 0);
        DsPlayer.reset();
        WaveStore.reset();
    }

    /// Opens a new stereo file of 16 bits at 44100 Hz, which lies on the disk alone.
    void OpenNewFile(std::int32_t FrameCount) {
        Frames = FrameCount;
        FileName = Folder / "document.wav";
        {
            std::ofstream Out(FileName, std::ios::binary);
            const auto Header = WavHeaderMake({2, Rate, 16}, Frames);
            Out.write(reinterpret_cast<const char*>(Header.data()), Header.size());
            Samples Piece;
            for (std::int32_t First = 0; First < Frames;) {
                const std::int32_t End = std::min(Frames, First + 1000000);
                Piece.clear();
                for (; First < End; ++First)
                    Piece.insert(Piece.end(), {SampleAt(First, 0), SampleAt(First, 1)});
                Out.write(reinterpret_cast<const char*>(Piece.data()),
                          static_cast<std::streamsize>(Piece.size() * sizeof Piece[0]));
            }
        }
        const int Handle = ::open(FileName.c_str(), O_RDONLY | O_CLOEXEC);
        ASSERT_EQ(::fdatasync(Handle), 0);
        (void)::posix_fadvise(Handle, 0, 0, POSIX_FADV_DONTNEED);
        ::close(Handle);
        Commands.OpenDropped(FileName);
        ASSERT_EQ(WaveStore->WavWaveINos, Frames);
    }
    void SelectAll() {
        SelStart = 1;
        SelEnd = WaveStore->WavWaveINos;
    }
    [[nodiscard]] double SecondsHeard() const {
        return static_cast<double>(Heard->Count() - Heard->FirstSound()) / 2 / Rate;
    }
    void WaitHeard(double Seconds) {
        ASSERT_TRUE(WaitFor([&] { return SecondsHeard() > Seconds; }, std::chrono::seconds(20)));
    }
    /// How many frames of the document, from its first one on, were heard without a sample more,
    /// less or other than theirs; what follows is silence.
    [[nodiscard]] std::int64_t FramesHeardWell() const {
        const Samples Got = Heard->Samples();
        const std::size_t First = Heard->FirstSound() / 2 * 2;
        std::int64_t Count = 0;
        std::size_t i = First;
        for (;
             i + 1 < Got.size() && Got[i] == SampleAt(Count, 0) && Got[i + 1] == SampleAt(Count, 1);
             i += 2)
            ++Count;
        for (std::size_t After = i; After < Got.size(); ++After)
            if (Got[After] != 0) {
                ADD_FAILURE() << "another sound at frame " << Count << ", after " << (After - i) / 2
                              << " frames of silence";
                break;
            }
        return Count;
    }

    TestSession Session;
    ScriptedMessages Messages;
    TempFolder Folder;
    SoundServer Server;
    Around Surroundings;
    FileCommandsClass Commands{Surroundings, Surroundings};
    std::unique_ptr<Recorder> Heard;
    std::string FileName;
    std::int32_t Frames = 0;
};

TEST_F(DocumentSoundTest, WhatIsHeardIsTheDocumentAsItWasWhenPlayWasPressed) {
    constexpr std::int32_t Length = 7 * Rate + 123;
    OpenNewFile(Length);
    PlayCommand(PlayNew, 0);
    WaitHeard(0.3);
    SelectAll();
    AdjustVolume(13); // 120 %
    SelStart = Rate;
    SelEnd = 3 * Rate;
    AdjustVolume(21); // silence, ahead of what is heard
    WaveStore->WaveDataDelete(2 * Rate, 0, 3 * Rate, "Cut", true);
    WaveStore->WaveDataInsert(10, 0, PlayBuffL.get(), PlayBuffR.get(), "Paste", true);
    WaitHeard(0.8);
    WaveStore->Undo();
    WaveStore->Undo();
    EXPECT_TRUE(Commands.Save(false)); // over the opened file
    WaitHeard(1.3);
    WaveStore->Undo();
    WaveStore->WaveDataDelete(1, 0, WaveStore->WavWaveINos - 100, "Cut", true);
    EXPECT_TRUE(Commands.Save(false));
    EXPECT_TRUE(
        WaitFor([&] { return DsPlayer->Component().PlayStatus() == 0; }, std::chrono::seconds(20)));
    WaitHeard(static_cast<double>(Length) / Rate + 0.3);
    EXPECT_EQ(FramesHeardWell(), Length);
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
    EXPECT_EQ(std::filesystem::file_size(FileName), 44U + 4 * 100);
}

TEST_F(DocumentSoundTest, AFileThatWasRewrittenFromOutsideIsNotHeardAndToldByName) {
    OpenNewFile(2 * Rate);
    {
        std::fstream Outside(FileName, std::ios::binary | std::ios::in | std::ios::out);
        Outside.seekp(44);
        const Samples Foreign = Sound(2 * Rate * 2, 7);
        Outside.write(reinterpret_cast<const char*>(Foreign.data()),
                      static_cast<std::streamsize>(Foreign.size() * sizeof Foreign[0]));
    }
    PlayCommand(PlayNew, 0);
    EXPECT_EQ(DsPlayer->Component().PlayStatus(), 0);
    EXPECT_THAT(Messages.TakeTexts(),
                ::testing::ElementsAre(
                    "Play failed|This file has been changed by another program\n" + FileName));
    const std::size_t Now = Heard->Count();
    ASSERT_TRUE(WaitFor([&] { return Heard->Count() > Now + Rate; }));
    EXPECT_EQ(Heard->FirstSound(), Heard->Count()) << "nothing was heard";
}

TEST_F(DocumentSoundTest, AFileThatIsReplacedWhileItPlaysIsHeardToItsEnd) {
    const std::int32_t Length = 3 * Rate;
    OpenNewFile(Length);
    PlayCommand(PlayNew, 0);
    WaitHeard(0.2);
    std::filesystem::rename(WriteSamples(Folder, "other", Sound(2 * Length, 7)), FileName);
    EXPECT_TRUE(
        WaitFor([&] { return DsPlayer->Component().PlayStatus() == 0; }, std::chrono::seconds(20)));
    WaitHeard(static_cast<double>(Length) / Rate + 0.3);
    EXPECT_EQ(FramesHeardWell(), Length);
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
}

TEST_F(DocumentSoundTest, AfterASaveOverTheOpenedFileTheSoundCanBePausedAndGoOn) {
    const std::int32_t Length = 3 * Rate;
    OpenNewFile(Length);
    PlayCommand(PlayNew, 0);
    WaitHeard(0.2);
    WaveStore->WaveDataDelete(1, 0, Rate, "Cut", true);
    EXPECT_TRUE(Commands.Save(false));
    PlayCommand(PlayCodePause, 0);
    EXPECT_EQ(DsPlayer->Component().PlayStatus(), 3);
    PlayCommand(PlayCodePause, 0);
    EXPECT_EQ(DsPlayer->Component().PlayStatus(), 1);
    EXPECT_TRUE(
        WaitFor([&] { return DsPlayer->Component().PlayStatus() == 0; }, std::chrono::seconds(20)));
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
}

/// With the memory that a small machine would give it, so that most samples go over the disk.
class LongDocumentTest : public DocumentSoundTest {
  protected:
    LongDocumentTest() : DocumentSoundTest(64000000) {}
};

TEST_F(LongDocumentTest, SavingThreeHundredMegabytesAndChangingTheirVolumeMeanwhileIsNotHeard) {
    OpenNewFile(75000000);
    Surroundings.SaveName = Folder / "copy.wav";
    PlayCommand(PlayNew, 0);
    WaitHeard(0);
    int Rounds = 0;
    do {
        SelectAll();
        AdjustVolume(13);
        EXPECT_TRUE(Commands.Save(true));
        WaveStore->Undo();
        ++Rounds;
    } while (SecondsHeard() < 20);
    EXPECT_EQ(DsPlayer->Component().PlayStatus(), 1);
    PlayCommand(PlayCodeStop, 0);
    EXPECT_GE(FramesHeardWell(), 20 * Rate);
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
    RecordProperty("Rounds", Rounds);
}

} // namespace
} // namespace quoril::test
