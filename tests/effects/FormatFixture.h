// A document in a format of its own for the commands that change it, and what the Format menu is
// told.
#pragma once

#include "audiofile/OpenSaveClass.h"
#include "audiofile/WavMaker.h"
#include "effects/EffectFixture.h"
#include "effects/LiteralFormats.h"
#include "effects/ScriptedMono.h"

#include <string>
#include <vector>

namespace quoril::test {

/// Notes each format that the menu is told of.
class FormatMenu final : public UndoListener {
  public:
    FormatMenu() { SetUndoListener(this); }
    ~FormatMenu() override { SetUndoListener(nullptr); }
    FormatMenu(const FormatMenu&) = delete;
    FormatMenu& operator=(const FormatMenu&) = delete;
    void UndoMenuChanged(const UndoMenuState&) override {}
    void SetMenu_To_DefaultFormat() override { Shown.push_back(CurrentFormat); }

    std::vector<WaveFormat> Shown;
};

class FormatTest : public EffectTest {
  protected:
    static WaveFormat FormatNow() {
        return {WaveStore->WavFmtChannel, WaveStore->WavFmtFreq, WaveStore->WavFmtBits};
    }
    static PlainSound Now() { return {FormatNow(), {Left(), Right()}}; }

    /// The document of a plain sound, of pieces of so many samples.
    void Begin(const PlainSound& Sound, std::size_t Piece = 0) {
        Document(Sound.Channels[0], Sound.Channels[1], Sound.Format.Bits, Piece);
        Established(Sound.Format);
    }
    /// Noise, of pieces that do not end where blocks usually end.
    void BeginNoise(const WaveFormat& Format, std::int32_t Frames, std::size_t Piece = 0) {
        PlainSound Sound{Format, {Noise(Frames, Format.Bits, 1), {}}};
        if (Format.Channel == 2)
            Sound.Channels[1] = Noise(Frames, Format.Bits, 2);
        Begin(Sound, Piece);
    }
    /// Opens a file of noise, so that the samples lie in that file.
    void Open(const WaveFormat& Format, std::int32_t Frames) {
        WaveStore = std::make_unique<FileMemoClass>();
        WavFile File;
        File.Channels = Format.Channel;
        File.Rate = Format.Freq;
        File.Bits = Format.Bits;
        File.Data = AudioBytes(Noise(Format.Channel * Frames, Format.Bits, 5), Format.Bits);
        bool Result = false;
        OpenSaveClass().FileLoadWave(*WaveStore, Session.WriteFile("a.wav", File.Whole()), Result);
        ASSERT_TRUE(Result);
        WaveChanged = false;
        Established(Format);
    }
    /// The document's format is the current one, and nothing is selected.
    void Established(const WaveFormat& Format) {
        WaveStore->WavFmtChannel = Format.Channel;
        WaveStore->WavFmtFreq = Format.Freq;
        CurrentFormat = FormatNow();
        Select(0, 0);
        Menu.Shown.clear();
        (void)Messages.TakeTexts();
    }

    /// Runs a command that asks `Questions` first and makes `Expected` of the document: one step,
    /// with the format in the document, as the current one and in the menu, and undo takes all of
    /// it back.
    void ExpectChange(const std::function<void()>& Command, const std::string& UndoName,
                      const PlainSound& Expected, const std::vector<std::string>& Questions) {
        const PlainSound Old = Now();
        const int Redraws = View.Redraws;
        Menu.Shown.clear();
        Command();
        EXPECT_EQ(Messages.TakeTexts(), Questions);
        EXPECT_TRUE(Now() == Expected) << UndoName;
        EXPECT_EQ(FormatNow(), Expected.Format);
        EXPECT_EQ(CurrentFormat, Expected.Format);
        EXPECT_EQ(Menu.Shown, std::vector<WaveFormat>{Expected.Format});
        EXPECT_EQ(WaveStore->WavWaveINos, static_cast<std::int32_t>(Expected.Channels[0].size()));
        EXPECT_EQ(View.Redraws, Redraws + 1);
        EXPECT_TRUE(WaveChanged);
        ExpectQuiet();
        EXPECT_EQ(BrokenRule(*WaveStore), "");
        EXPECT_EQ(WaveStore->UndoMenu().Caption, "Undo [" + UndoName + "]");
        Menu.Shown.clear();
        WaveStore->Undo();
        EXPECT_TRUE(Now() == Old) << "undo of " << UndoName;
        EXPECT_EQ(CurrentFormat, Old.Format);
        EXPECT_EQ(Menu.Shown, std::vector<WaveFormat>{Old.Format});
        EXPECT_EQ(WaveStore->WavWaveINos, static_cast<std::int32_t>(Old.Channels[0].size()));
        EXPECT_EQ(WaveStore->UndoCount(), 0);
        EXPECT_EQ(BrokenRule(*WaveStore), "");
    }
    /// Runs a command that must leave everything as it is, and tells what the user reads meanwhile.
    std::vector<std::string> NoChange(const std::function<void()>& Command) {
        const WaveFormat Document = FormatNow();
        const WaveFormat Current = CurrentFormat;
        std::vector<std::string> Told = Unchanged(Command);
        EXPECT_EQ(FormatNow(), Document);
        EXPECT_EQ(CurrentFormat, Current);
        return Told;
    }
    /// What such a command asks of the disk behind its questions, when there is no space.
    std::vector<std::int64_t> AskedOfTheDisk(const std::function<void()>& Command,
                                             const std::vector<std::string>& Questions) {
        const std::string Place = TmpDir0;
        TmpDir0 = "/nowhere";
        Disk.Needed.clear();
        EXPECT_EQ(NoChange(Command), Questions);
        TmpDir0 = Place;
        return Disk.Needed;
    }
    /// Runs a command on a disk that fills up at any place of its work, and gives the number of
    /// failures. With room it is done, and is one step.
    int FailuresThatKeepTheFormat(const std::function<void()>& Command) {
        const PlainSound Old = Now();
        const int Failures = FailuresOnAFullDisk(
            [&] {
                const int Redraws = View.Redraws;
                Command();
                if (View.Redraws == Redraws) {
                    EXPECT_EQ(FormatNow(), Old.Format);
                    EXPECT_EQ(CurrentFormat, Old.Format);
                }
            },
            "");
        EXPECT_NE(FormatNow(), Old.Format);
        EXPECT_EQ(CurrentFormat, FormatNow());
        if (UndoOptionON)
            WaveStore->Undo();
        EXPECT_TRUE(!UndoOptionON || Now() == Old);
        return Failures;
    }

    FormatMenu Menu;
    ScriptedMono Mono;
    const std::string BitsQuestion = "Changing Bit format|Do you wish to Change Bit format?";
    const std::string RateQuestion = "Changing Sampling rate (Frequency format)|"
                                     "Do you wish to Change Sampling rate?";
    const std::string StereoQuestion = "Convert to Stereo|Do you wish to change to stereo?\n\n"
                                       "(Left channel will be copied to Right)";
};

} // namespace quoril::test
