// The disk becomes full in the middle of the commands that compute. The document must be what it
// was, undo must have nothing new, and the command must work once there is room.
#include "support/FullDisk.h"
#include "audiofile/OpenSaveClass.h"
#include "audiofile/WavMaker.h"
#include "base/CommandFailure.h"
#include "base/Failure.h"
#include "edit/CopyPasteFixture.h"
#include "edit/LapMod.h"
#include "edit/LengthCommands.h"
#include "storage/UndoListener.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace quoril::test {

namespace {

using ::testing::HasSubstr;
using ::testing::SizeIs;

/// A progress window at one of whose reports the disk becomes full, and the memory with it, so that
/// whatever is needed from then on has to push something out.
class FillingProgress final : public ProgressReport {
  public:
    explicit FillingProgress(FullDisk& UsedDisk) : Disk(UsedDisk) { SetProgressReport(this); }
    ~FillingProgress() override { SetProgressReport(nullptr); }
    FillingProgress(const FillingProgress&) = delete;
    FillingProgress& operator=(const FillingProgress&) = delete;
    void SetVisible(bool NowVisible) override {
        Visible = NowVisible;
        if (!Visible && FillWhenHidden && Color == FillColor)
            FillNow();
    }
    void SetBarColor1(std::uint32_t NewColor) override { Color = NewColor; }
    void SetCurrentProgress(float Value) override {
        Current = Value;
        if (Color != FillColor || Value <= FillAt || Value >= 1)
            return;
        FillNow();
    }
    [[nodiscard]] float CurrentProgress() const override { return Current; }
    void BlinkLamp() override {}

    bool Visible = false;
    std::uint32_t FillColor = 0;
    float FillAt = 2;
    bool FillWhenHidden = false; ///< when the command has computed all

  private:
    void FillNow() {
        Disk.Fill();
        MemoryBudget = std::min(MemoryBudget, MemoryUsed);
    }
    FullDisk& Disk;
    std::uint32_t Color = 0;
    float Current = 0;
};

struct LapChosen final : LapDialog {
    LapChosen() { SetLapDialog(this); }
    ~LapChosen() override { SetLapDialog(nullptr); }
    LapChosen(const LapChosen&) = delete;
    LapChosen& operator=(const LapChosen&) = delete;
    LapAnswer ShowLap() override { return {true, Choice}; }
    LapChoice Choice;
};

constexpr std::uint32_t DarkCyan = 8421376;
constexpr std::int32_t Count = 4000000; // 8 MB for each channel, where 10 MB may be in memory

class FullDiskTest : public CopyPasteFixture {
  protected:
    /// A document of `Channels` that lies in an opened file.
    void Opened(std::int32_t Channels) {
        const std::string Path = Session.WriteFile(
            "a.wav", WavFile{.Channels = Channels,
                             .Rate = 1000,
                             .Data = AudioBytes(Noise(Count * Channels, 16, 7), 16)}
                         .Whole());
        bool Loaded = false;
        OpenSaveClass().FileLoadWave(*WaveStore, Path, Loaded);
        ASSERT_TRUE(Loaded);
        WaveStore->UndoInfoReset();
    }
    static std::vector<const BlockCarrBuffClass*> Clips() {
        std::vector<const BlockCarrBuffClass*> Held;
        for (const auto* const Clip : {&ClipCarrL, &ClipCarrR})
            if (*Clip != nullptr)
                Held.push_back(Clip->get());
        return Held;
    }
    /// Runs a command during which the disk becomes full, and again with room.
    template <class CommandType>
    void FailsAndThenWorks(const CommandType& Command, float FillAt, const std::string& Name) {
        const auto BeforeL = Left();
        const auto BeforeR = Right();
        FullDisk Disk;
        FillingProgress Progress(Disk);
        Progress.FillColor = DarkCyan;
        Progress.FillAt = FillAt;
        WaveChanged = false;
        const std::int32_t Budget = MemoryBudget;
        Command();
        MemoryBudget = Budget;
        Disk.Empty();
        Progress.FillColor = 0;
        EXPECT_FALSE(Progress.Visible);
        EXPECT_EQ(BusyDepth, 0);
        EXPECT_THAT(Messages.Texts(), SizeIs(1)) << Name;
        for (const std::string& Text : Messages.TakeTexts())
            EXPECT_THAT(Text, HasSubstr("File too large\n" + SessionDir)) << Name;
        EXPECT_EQ(BrokenRule(*WaveStore, Clips()), "");
        EXPECT_EQ(WaveStore->UndoCount(), 0) << Name;
        EXPECT_FALSE(WaveChanged) << Name;
        EXPECT_EQ(WaveStore->WavWaveINos, static_cast<std::int32_t>(BeforeL.size()));
        EXPECT_TRUE(Left() == BeforeL) << Name;
        EXPECT_TRUE(Right() == BeforeR) << Name;

        Command();
        EXPECT_THAT(Messages.Texts(), SizeIs(0)) << Name;
        EXPECT_FALSE(Left() == BeforeL) << Name;
        EXPECT_THAT(WaveStore->UndoMenu().Caption, HasSubstr(Name));
        WaveStore->Undo();
        EXPECT_EQ(WaveStore->UndoCount(), 0) << Name;
        EXPECT_TRUE(Left() == BeforeL) << Name;
        EXPECT_TRUE(Right() == BeforeR) << Name;
        EXPECT_EQ(BrokenRule(*WaveStore, Clips()), "");
    }
};

TEST_F(FullDiskTest, InTheMiddleOfAPasteThatComputes) {
    Clip(Noise(Count, 16, 1));
    Opened(1);
    for (const auto& [Mode, Name] :
         {std::pair(PasteMix, "Paste Mix"), std::pair(PasteModulate, "Paste Modulate"),
          std::pair(PasteCrossFade, "Paste Cross Fade")})
        FailsAndThenWorks([&, Used = Mode] { PasteAt(Used, 1000); }, 0.6F, Name);
}

TEST_F(FullDiskTest, LateInAPasteThatComputesBothChannels) {
    Clip(Noise(Count, 16, 1), Noise(Count, 16, 2));
    Opened(2);
    for (const auto& [Mode, Name] :
         {std::pair(PasteMix, "Paste Mix"), std::pair(PasteModulate, "Paste Modulate"),
          std::pair(PasteCrossFade, "Paste Cross Fade")})
        FailsAndThenWorks([&, Used = Mode] { PasteAt(Used, 1000); }, 0.8F, Name);
}

TEST_F(FullDiskTest, InTheMiddleOfALap) {
    LapChosen Chosen;
    Opened(2);
    for (const std::int32_t Style : {LapSmooth, LapSimple}) {
        Chosen.Choice.TransOpn = Style;
        FailsAndThenWorks(
            [] {
                Select(1001, Count - 1000);
                RunCommand({}, EditLap);
            },
            0.6F, "Lap");
    }
}

/// The samples are there: their way into the document, and out of it again, needs no room.
TEST_F(FullDiskTest, OnceTheSamplesAreComputedNoDiskKeepsThemOutOfTheDocument) {
    Clip(Noise(Count, 16, 1), Noise(Count, 16, 2));
    Opened(2);
    const auto BeforeL = Left();
    const auto BeforeR = Right();
    FullDisk Disk;
    FillingProgress Progress(Disk);
    Progress.FillColor = DarkCyan;
    Progress.FillWhenHidden = true;
    const std::int32_t Budget = MemoryBudget;
    PasteAt(PasteMix, 1); // no border in the file, which would be read
    EXPECT_LT(MemoryBudget, Budget) << "the disk became full";
    EXPECT_THAT(Messages.Texts(), SizeIs(0));
    EXPECT_FALSE(Left() == BeforeL);
    EXPECT_EQ(BrokenRule(*WaveStore, Clips()), "");
    WaveStore->Undo();
    MemoryBudget = Budget;
    EXPECT_TRUE(Left() == BeforeL);
    EXPECT_TRUE(Right() == BeforeR);
    EXPECT_EQ(BrokenRule(*WaveStore, Clips()), "");
}

/// The left channel needs no room for any edit, and the right one does.
class FullDiskEdits : public FullDiskTest {
  protected:
    FullDiskEdits() {
        Opened(1);
        std::unique_ptr<BlockCarrBuffClass> InFile;
        std::unique_ptr<BlockCarrBuffClass> None;
        WaveStore->WaveCollectData(1, Count, 1, InFile, None);
        WaveStore->StorageReset();
        WaveStore->WavFmtChannel = 2;
        BlockCarrBuffClass Silent;
        Silent.ReDimSize(Count);
        WaveStore->WaveDataInsert(1, 0, &Silent, InFile.get(), "", true);
        WaveStore->UndoInfoReset();
        FewSilent.ReDimSize(1000);
        Fill(Memory, Noise(6000000, 16, 4)); // more than may be in memory
    }
    void ExpectWholeOrNothing(const char* Name, const std::function<void()>& Edit) {
        const auto BeforeL = Left();
        const auto BeforeR = Right();
        for (const bool Undo : {true, false}) {
            UndoOptionON = Undo;
            WaveChanged = false;
            Memory.WaveLR(1, 1); // all but the oldest blocks are in memory again
            for (std::int32_t i = 1; i < Memory.WaveINos; i += 1000)
                Memory.WaveLR(i, 1);
            {
                const FullDisk Disk;
                Disk.Fill();
                const std::int32_t Budget = std::exchange(MemoryBudget, MemoryUsed);
                EXPECT_THROW(Edit(), Failure) << Name;
                MemoryBudget = Budget;
            }
            EXPECT_EQ(WaveStore->UndoCount(), 0) << Name;
            EXPECT_FALSE(WaveChanged) << Name;
            EXPECT_TRUE(Left() == BeforeL) << Name;
            EXPECT_TRUE(Right() == BeforeR) << Name;
            EXPECT_EQ(BrokenRule(*WaveStore, {&Memory, &FewSilent}), "") << Name;
        }
        UndoOptionON = true;
        Edit();
        WaveStore->Undo();
        EXPECT_TRUE(Left() == BeforeL) << Name;
        EXPECT_TRUE(Right() == BeforeR) << Name;
    }

    BlockCarrBuffClass Memory;
    BlockCarrBuffClass FewSilent;
};

TEST_F(FullDiskEdits, ADeleteChangesBothChannelsOrNone) {
    ExpectWholeOrNothing("Delete",
                         [] { WaveStore->WaveDataDelete(1000, 0, 5000, "Delete", true); });
}

/// The tail lies on a border, and the front ends within a block of memory.
TEST_F(FullDiskEdits, ATrimTakesBothEndsOffOrNone) {
    WaveStore->WaveDataInsert(Count + 1, 0, &FewSilent, &FewSilent, "", true);
    WaveStore->UndoInfoReset();
    ExpectWholeOrNothing("Trim", [] {
        SelBoth = true;
        Select(1000, Count);
        EditTrim();
    });
}

TEST_F(FullDiskEdits, AnInsertChangesBothChannelsOrNone) {
    ExpectWholeOrNothing("Insert in a block", [this] {
        WaveStore->WaveDataInsert(1000, 0, &FewSilent, &FewSilent, "Insert", true);
    });
    ExpectWholeOrNothing("Insert of memory", [this] {
        WaveStore->WaveDataInsert(200000, 0, &FewSilent, &Memory, "Insert", true);
    });
}

TEST_F(FullDiskEdits, AReplaceTakesNothingOutThatItCannotReplace) {
    ExpectWholeOrNothing("Replace in a block", [this] {
        WaveStore->WaveDataReplace(1000, 0, &FewSilent, &FewSilent, "Replace", true);
    });
    ExpectWholeOrNothing("Replace with memory", [this] {
        WaveStore->WaveDataReplace(200000, 0, &FewSilent, &Memory, "Replace", true);
    });
}

TEST_F(FullDiskEdits, AnExchangeTakesNothingOutThatItCannotReplace) {
    ExpectWholeOrNothing("Exchange", [this] {
        WaveStore->WaveDataExchange(1000, 0, 5000, &FewSilent, &Memory, "Exchange", true);
    });
}

} // namespace

} // namespace quoril::test
