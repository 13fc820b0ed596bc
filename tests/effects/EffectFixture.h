// A document with samples for the tests of effects, and everything recorded that the user would
// see.
#pragma once

#include "base/BusyPointer.h"
#include "base/DocumentState.h"
#include "base/Failure.h"
#include "base/ProgressReport.h"
#include "base/ViewState.h"
#include "selection/DurationEntry.h"
#include "selection/ViewListener.h"
#include "settings/STD1.h"
#include "storage/DiskSpaceGuardMod.h"
#include "storage/FileMemoClass.h"
#include "storage/StorageChecks.h"
#include "storage/UndoListener.h"
#include "support/FullDisk.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quoril::test {

/// Writes down where the bar went, and can fail in the middle.
class RecordingProgress final : public ProgressReport {
  public:
    RecordingProgress() { SetProgressReport(this); }
    ~RecordingProgress() override { SetProgressReport(nullptr); }
    RecordingProgress(const RecordingProgress&) = delete;
    RecordingProgress& operator=(const RecordingProgress&) = delete;
    void SetVisible(bool Visible) override { On = Visible; }
    void SetBarColor1(std::uint32_t Color) override {
        BarColor = Color;
        if (BarColor == 0x808000 && WhenComputing)
            WhenComputing();
    }
    void SetCurrentProgress(float Value) override {
        Current = Value;
        if (BarColor == 0x808000)
            Values.push_back(Value);
        if (BarColor == 0x808000 && FailAt >= 0 && Value >= FailAt)
            throw Failure("Disk full");
    }
    [[nodiscard]] float CurrentProgress() const override { return Current; }
    void BlinkLamp() override {}

    bool On = false;
    std::uint32_t BarColor = 0;
    float Current = 0;
    float FailAt = -1;
    std::vector<float> Values;
    std::function<void()> WhenComputing; ///< called when a command begins to compute
};

/// Counts the redraws.
class CountingView final : public ViewListener {
  public:
    CountingView() { SetViewListener(this); }
    ~CountingView() override { SetViewListener(nullptr); }
    CountingView(const CountingView&) = delete;
    CountingView& operator=(const CountingView&) = delete;
    void Refresh_Wave_View() override { ++Redraws; }
    void RefreshMousePointer() override {}
    void RefreshDisplayLabels(bool) override {}
    void RefreshChannelSelector() override {}
    void ClearMouseFlags() override {}

    int Redraws = 0;
};

/// Answers the question for a duration, and keeps what was asked.
class ScriptedDuration final : public EntDurDialog {
  public:
    ScriptedDuration() { SetEntDurDialog(this); }
    ~ScriptedDuration() override { SetEntDurDialog(nullptr); }
    ScriptedDuration(const ScriptedDuration&) = delete;
    ScriptedDuration& operator=(const ScriptedDuration&) = delete;
    EntDurAnswer ShowEntDur(const EntDurRequest& Request) override {
        Requests.push_back(Request);
        return Answer;
    }

    EntDurAnswer Answer;
    std::vector<EntDurRequest> Requests;
};

/// Answers the question for disk space, and keeps what the command needed.
class ScriptedDisk final : public ChkDskSpcDialog {
  public:
    ScriptedDisk() { SetChkDskSpcDialog(this); }
    ~ScriptedDisk() override { SetChkDskSpcDialog(nullptr); }
    ScriptedDisk(const ScriptedDisk&) = delete;
    ScriptedDisk& operator=(const ScriptedDisk&) = delete;
    std::int32_t ShowChkDskSpc(const DiskSpaceNumbers& Numbers, const FreeBytesRoutine&) override {
        Needed.push_back(Numbers.Needed2);
        return 0;
    }

    std::vector<std::int64_t> Needed;
};

inline int BusyDepth = 0;
inline int BusyCalls = 0;

class EffectTest : public ::testing::Test {
  protected:
    using Samples = std::vector<std::int16_t>;

    EffectTest() {
        SelBoth = true;
        SelSingle = 1;
        MouseMode = ViewMouseMode = 0;
        BusyDepth = BusyCalls = 0;
        SetBusyPointerRoutine([](bool Busy) {
            BusyDepth += Busy ? 1 : -1;
            ++BusyCalls;
        });
    }
    ~EffectTest() override {
        SetBusyPointerRoutine({});
        WaveStore.reset();
    }

    static std::unique_ptr<BlockCarrBuffClass> Carrier(const Samples& From) {
        auto Made = std::make_unique<BlockCarrBuffClass>();
        if (!From.empty())
            Made->ReDimSize(static_cast<std::int32_t>(From.size()));
        for (std::size_t i = 0; i < From.size(); ++i)
            Made->WaveLR(static_cast<std::int32_t>(i) + 1, From[i]);
        return Made;
    }
    /// A document of one or two channels, everything selected, with an empty journal. It is put
    /// together of pieces of `Piece` samples, so that there are borders of blocks inside.
    static void Document(const Samples& Left, const Samples& Right = {}, std::int32_t Bits = 16,
                         std::size_t Piece = 0) {
        WaveStore = std::make_unique<FileMemoClass>();
        WaveStore->WavFmtChannel = Right.empty() ? 1 : 2;
        WaveStore->WavFmtBits = Bits;
        WaveStore->WavFmtFreq = 1000;
        if (Piece == 0)
            Piece = Left.size();
        for (std::size_t At = 0; At < Left.size(); At += Piece) {
            const std::size_t End = std::min(At + Piece, Left.size());
            const auto Part = [&](const Samples& All) {
                return All.empty() ? Samples{}
                                   : Samples(All.begin() + static_cast<std::ptrdiff_t>(At),
                                             All.begin() + static_cast<std::ptrdiff_t>(End));
            };
            const auto L = Carrier(Part(Left));
            const auto R = Carrier(Part(Right));
            WaveStore->WaveDataInsert(static_cast<std::int32_t>(At) + 1, Right.empty() ? 1 : 0,
                                      L.get(), R.get(), "Fill", true);
        }
        WaveStore->UndoInfoReset();
        WaveChanged = false;
        Select(1, WaveStore->WavWaveINos);
    }
    static void Select(std::int32_t From, std::int32_t To) {
        SelStart = From;
        SelEnd = To;
    }
    static Samples Left() { return ChannelSamples(*WaveStore, 1); }
    static Samples Right() { return ChannelSamples(*WaveStore, 2); }

    /// Runs a command, expects what it makes of the channels under that undo name, and that one
    /// undo step takes it back to the sample.
    void ExpectStep(const std::function<void()>& Command, const std::string& UndoName,
                    const Samples& NewLeft, const Samples& NewRight = {}) {
        const Samples OldLeft = Left();
        const Samples OldRight = Right();
        const int Redraws = View.Redraws;
        BusyCalls = 0;
        Command();
        EXPECT_EQ(Messages.Texts(), std::vector<std::string>{});
        EXPECT_EQ(Left(), NewLeft);
        EXPECT_EQ(Right(), NewRight);
        EXPECT_EQ(View.Redraws, Redraws + 1);
        EXPECT_TRUE(WaveChanged);
        ExpectQuiet();
        EXPECT_EQ(BusyCalls, 2);
        EXPECT_EQ(Progress.BarColor, 0x808000U);
        ASSERT_GE(WaveStore->UndoCount(), 1);
        EXPECT_EQ(
            WaveStore->UndoRecords().at(static_cast<std::size_t>(WaveStore->UndoCount())).UndoName,
            UndoName);
        WaveStore->Undo();
        EXPECT_EQ(Left(), OldLeft);
        EXPECT_EQ(Right(), OldRight);
        EXPECT_EQ(WaveStore->UndoCount(), 0);
    }
    /// Runs a command that must change nothing, and tells what the user reads meanwhile.
    std::vector<std::string> Unchanged(const std::function<void()>& Command) {
        const Samples OldLeft = Left();
        const Samples OldRight = Right();
        const std::int32_t Records = WaveStore->UndoCount();
        Command();
        EXPECT_EQ(Left(), OldLeft);
        EXPECT_EQ(Right(), OldRight);
        EXPECT_EQ(WaveStore->UndoCount(), Records);
        EXPECT_FALSE(WaveChanged);
        ExpectQuiet();
        return Messages.TakeTexts();
    }
    /// Runs a command on a disk that is full from its computing on, each time with a little more
    /// memory, until it gets through. Each time before, everything must be left as it was. Gives
    /// the number of failures, which are all told under `Title`.
    int FailuresOnAFullDisk(const std::function<void()>& Command, const std::string& Title) {
        constexpr std::int32_t MoreMemory = 1000;
        const FullDisk Work;
        const std::int32_t GoodBudget = MemoryBudget;
        int Failures = 0;
        for (std::int32_t Spare = 0;; Spare += MoreMemory) {
            Progress.WhenComputing = [&Work, Spare] {
                Work.Fill();
                MemoryBudget = MemoryUsed + Spare;
            };
            const Samples OldLeft = Left();
            const Samples OldRight = Right();
            const std::int32_t Records = WaveStore->UndoCount();
            const std::string Caption = WaveStore->UndoMenu().Caption;
            const int Redraws = View.Redraws;
            WaveChanged = false;
            (void)Messages.TakeTexts();
            Command();
            Progress.WhenComputing = nullptr;
            Work.Empty();
            MemoryBudget = GoodBudget;
            ExpectQuiet();
            EXPECT_EQ(BrokenRule(*WaveStore), "");
            if (View.Redraws != Redraws || ::testing::Test::HasFailure())
                return Failures;
            ++Failures;
            EXPECT_FALSE(WaveChanged) << "with " << Spare;
            EXPECT_TRUE(Left() == OldLeft && Right() == OldRight) << "with " << Spare;
            EXPECT_EQ(WaveStore->WavWaveINos, static_cast<std::int32_t>(OldLeft.size()));
            EXPECT_EQ(WaveStore->UndoCount(), Records) << "with " << Spare;
            EXPECT_EQ(WaveStore->UndoMenu().Caption, Caption);
            const std::vector<std::string> Told = Messages.TakeTexts();
            EXPECT_TRUE(!Told.empty() && Told.back().starts_with(Title)) << "with " << Spare;
        }
    }
    /// What a command asks of the disk when there is no space; refused, it must change nothing.
    std::vector<std::int64_t> Refused(const std::function<void()>& Command) {
        const std::string Place = TmpDir0;
        TmpDir0 = "/nowhere";
        Disk.Needed.clear();
        EXPECT_TRUE(Unchanged(Command).empty());
        TmpDir0 = Place;
        return Disk.Needed;
    }
    /// The wait cursor and the progress window are gone.
    void ExpectQuiet() const {
        EXPECT_EQ(BusyDepth, 0);
        EXPECT_FALSE(Progress.On);
    }

    const TestSession Session;
    ScriptedMessages Messages;
    ScriptedDuration Duration;
    ScriptedDisk Disk;
    RecordingProgress Progress;
    CountingView View;
};

} // namespace quoril::test
