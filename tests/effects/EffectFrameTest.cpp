// What a command of the frame may do otherwise than most, and what the user sees in which order.
#include "effects/EffectFrame.h"
#include "effects/EffectFixture.h"
#include "effects/SampleKernels.h"
#include "platform/SampleMemory.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace quoril::test {
namespace {

class EffectFrameTest : public EffectTest {};

/// A command whose samples come from nowhere.
class MadeOfNothing final : public EffectClass {
  public:
    MadeOfNothing() : EffectClass("Make") { Collects = false; }
    void Compute(EffectWork& Work, PassProgress&) override {
        for (const std::int32_t Chn : {1, 2})
            if (Work.InWork(Chn)) {
                CarrierWriter Made(Work.Length());
                Made.Make(static_cast<std::size_t>(Work.Length()), [](std::size_t At, RunOut Out) {
                    for (std::int16_t& One : Out)
                        One = static_cast<std::int16_t>(++At);
                });
                Work.Carrier(Chn) = Made.Finish();
            }
    }
};

TEST_F(EffectFrameTest, ACommandThatCollectsNothingGetsEmptyCarriers) {
    class Looking final : public EffectClass {
      public:
        Looking() : EffectClass("Look") { Collects = false; }
        bool AskParameters(const EffectWork& Work) override {
            EXPECT_NE(Work.CarrierL, nullptr);
            EXPECT_NE(Work.CarrierR, nullptr);
            EXPECT_EQ(Work.CarrierL->WaveINos + Work.CarrierR->WaveINos, 0);
            return false;
        }
    } Effect;
    Document({1, 2, 3}, {4, 5, 6});
    EXPECT_FALSE(RunEffect(Effect));
    EXPECT_TRUE(Messages.Texts().empty());
}

TEST_F(EffectFrameTest, SamplesMadeOfNothingReplaceTheRangeAndUndoBringsItBack) {
    Document({10, 20, 30, 40}, {50, 60, 70, 80});
    Select(2, 3);
    ExpectStep(
        [] {
            MadeOfNothing Effect;
            RunEffect(Effect);
        },
        "Make", {10, 1, 2, 40}, {50, 1, 2, 80});
}

TEST_F(EffectFrameTest, TheWindowGoesThenTheViewIsDrawnAndThenThePointerIsAsItWas) {
    class Order final : public ViewListener {
      public:
        explicit Order(const RecordingProgress& Watched) : Window(Watched) {}
        void Refresh_Wave_View() override {
            EXPECT_FALSE(Window.On);
            EXPECT_EQ(BusyDepth, 1);
            ++Drawn;
        }
        void RefreshMousePointer() override {}
        void RefreshDisplayLabels(bool) override {}
        void RefreshChannelSelector() override {}
        void ClearMouseFlags() override {}
        int Drawn = 0;

      private:
        const RecordingProgress& Window;
    } Watching(Progress);
    Document({10, 20, 30, 40});
    SetViewListener(&Watching);
    MadeOfNothing Effect;
    EXPECT_TRUE(RunEffect(Effect));
    SetViewListener(nullptr);
    EXPECT_EQ(Watching.Drawn, 1);
    ExpectQuiet();
}

/// Changes samples in their places, and gives up at a position.
class GivesUp final : public EffectClass {
  public:
    explicit GivesUp(std::int32_t Position) : EffectClass("Give up"), Where(Position) {}
    RunChange ChannelKernel(const EffectWork&, std::int32_t) override {
        return [Last = Where](std::int32_t First, RunIn In, RunOut Out) {
            if (First + static_cast<std::int32_t>(In.size()) > Last)
                throw Failure("Given up");
            InvertRun(In, Out, 16);
        };
    }

  private:
    std::int32_t Where;
};

TEST_F(EffectFrameTest, WhereverItIsGivenUpTheDocumentAndTheCountOfMemoryAreAsTheyWere) {
    constexpr std::int32_t Count = 150000;
    Document(TestSamples(1, Count, 1), TestSamples(1, Count, 2), 16, 40000);
    for (const auto& [From, To] : {std::pair(1, Count), std::pair(10001, 100000)})
        for (const bool Both : {true, false})
            for (std::int32_t Where = 1; Where < Count; Where += 17000) {
                Select(From, To);
                SelBoth = Both;
                SelSingle = 2;
                WaveChanged = false;
                const std::int32_t Used = MemoryUsed;
                const std::int64_t Held = SampleMemoryInUse();
                const std::size_t Blocks = WaveStore->BlocksR().Numbers().size();
                GivesUp Effect(Where);
                const bool Fits = Where > To - From + 1;
                const std::vector<std::string> Told = Unchanged([&] {
                    if (!Fits) {
                        EXPECT_FALSE(RunEffect(Effect));
                    }
                });
                EXPECT_EQ(Told.size(), Fits ? 0U : 1U);
                EXPECT_EQ(MemoryUsed, Used);
                EXPECT_EQ(SampleMemoryInUse(), Held);
                EXPECT_EQ(WaveStore->BlocksR().Numbers().size(), Blocks);
                EXPECT_EQ(BrokenRule(*WaveStore), "");
            }
}

/// Looks one sample ahead, and says at the end how many there were: 1, 2, 4 becomes 1, 2, -4, 3.
class LooksAhead final : public EffectClass {
  public:
    explicit LooksAhead(WalkOrder Wanted) : EffectClass("Look ahead"), Order(Wanted) {}
    void Compute(EffectWork& Work, PassProgress& Progress) override {
        StreamPass(
            Work, Progress,
            [](std::int32_t) {
                return [Before = std::optional<std::int16_t>(),
                        Count = std::int16_t{0}](RunIn In, CarrierWriter& Out) mutable {
                    for (const std::int16_t One : In) {
                        if (Before)
                            Out.Put(std::array{static_cast<std::int16_t>(One - *Before)});
                        Before = One;
                        ++Count;
                    }
                    if (In.empty())
                        Out.Put(std::array{static_cast<std::int16_t>(-*Before), Count});
                };
            },
            Order);
    }
    void GiveBack(EffectWork& Work) override {
        WaveStore->WaveDataExchange(Work.From, Work.WorkChn, Work.Length(), Work.CarrierL.get(),
                                    Work.CarrierR.get(), UndoName, true);
    }

  private:
    WalkOrder Order;
};

TEST_F(EffectFrameTest, AStreamIsToldItsEndAndMayMakeMoreThanItTook) {
    const auto Run = [](WalkOrder Order) {
        return [Order] {
            LooksAhead Effect(Order);
            RunEffect(Effect);
        };
    };
    Document({9, 1, 2, 4, 9}, {9, 10, 30, 60, 9});
    Select(2, 4);
    ExpectStep(Run(WalkOrder::Rising), "Look ahead", {9, 1, 2, -4, 3, 9}, {9, 20, 30, -60, 3, 9});
    SelBoth = false;
    SelSingle = 2; // the left channel is filled up
    ExpectStep(Run(WalkOrder::Rising), "Look ahead", {9, 1, 2, 4, 9, 0}, {9, 20, 30, -60, 3, 9});
    // The last run comes first; within a run the order stays.
    Samples Long(40000, 0);
    Long[0] = 7;
    Long[39999] = 5;
    Document(Long);
    Samples Made(40001, 0);
    Made[32767 - 1] = 5; // to the end of the run that comes first
    Made[32767] = 7 - 5; // and on to the beginning of all
    Made[32768] = -7;
    Made[39999] = 0;
    Made[40000] = static_cast<std::int16_t>(40000);
    ExpectStep(Run(WalkOrder::Falling), "Look ahead", Made);
}

TEST_F(EffectFrameTest, AFailureBetweenTwoEditsOfTheGivingBackTakesTheFirstOneBack) {
    class TwoEdits final : public EffectClass {
      public:
        TwoEdits() : EffectClass("Two edits") {}
        void Compute(EffectWork&, PassProgress&) override {}
        void GiveBack(EffectWork& Work) override {
            WaveStore->WaveDataDelete(Work.From, Work.WorkChn, 1, UndoName, false);
            throw Failure("No room");
        }
    };
    for (const bool Undo : {true, false}) {
        Document({1, 2, 3}, {4, 5, 6});
        Select(2, 3);
        UndoOptionON = Undo;
        EXPECT_EQ(Unchanged([] {
                      TwoEdits Effect;
                      EXPECT_FALSE(RunEffect(Effect));
                  }),
                  std::vector<std::string>{"No room"});
        EXPECT_EQ(BrokenRule(*WaveStore), "");
    }
    UndoOptionON = true;
}

TEST_F(EffectFrameTest, ACommandOnTheWholeDocumentAsksForNoSelectionAndWorksOnAllChannels) {
    class Whole final : public EffectClass {
      public:
        Whole() : EffectClass("Whole") { WholeDocument = true; }
        RunChange ChannelKernel(const EffectWork&, std::int32_t) override {
            return [](std::int32_t, RunIn In, RunOut Out) { InvertRun(In, Out, 16); };
        }
    };
    const auto Command = [] {
        Whole Effect;
        RunEffect(Effect);
    };
    Document({1, 2, 3}, {4, 5, 6});
    Select(0, 0);
    SelBoth = false;
    ExpectStep(Command, "Whole", {-1, -2, -3}, {-4, -5, -6});
    Document({1, 2, 3});
    Select(0, 0);
    ExpectStep(Command, "Whole", {-1, -2, -3});
}

} // namespace
} // namespace quoril::test
