#include "edit/EditFixture.h"

#include "base/BusyPointer.h"
#include "base/Failure.h"
#include "edit/LapKernel.h"
#include "settings/STD1.h"
#include "storage/UndoListener.h"
#include "storage/WoroFileBlockMod.h"
#include "support/OrderLog.h"

#include <algorithm>
#include <cmath>

namespace quoril::test {
namespace {

const char* const FirstMessage =
    " Lap failed|If the current selection is the first part:\n"
    "Available duration after the selection is smaller then this selection\n"
    "(not sufficient to lap on this selection).\n"
    "Make smaller selection or add silence at the end and try again.";
const char* const SecondMessage =
    " Lap failed|If the current selection is the second part:\n"
    "Available duration before the selection is smaller then this selection\n"
    "(not sufficient to lap this selection).\n"
    "Make smaller selection or add silence at the starting and try again.";
const char* const SmallMessage = " Lap failed|Current selection is too small to lap.";

class Lap : public EditTest {
  protected:
    void Choose(std::int32_t SelcOpn, std::int32_t TransOpn) {
        Questions.Lap = {true, {SelcOpn, TransOpn}};
    }
    /// What the overlap of A and B must be, sample by sample.
    static Samples Overlap(const Samples& A, const Samples& B, bool Smooth, int Max = 32767) {
        Samples Result;
        const double Count = static_cast<double>(A.size());
        for (std::size_t i = 0; i < A.size(); ++i) {
            double Value = A[i] + B[i];
            if (Smooth) {
                const double T = static_cast<double>(i + 1) / Count;
                Value = std::nearbyint(A[i] * (1.0 - T));
                const double Rising = B[i] * T;
                Value = std::nearbyint(Rising + Value);
            }
            Value = std::clamp(Value, -1.0 * Max, 1.0 * Max);
            Result.push_back(static_cast<std::int16_t>(Value));
        }
        return Result;
    }
};

TEST_F(Lap, SmoothGivesTheValuesWorkedOutByHand) {
    // t = 1/4, 2/4, 3/4, 1. 100 x 3/4 = 75, + 200/4 = 125; 101 / 2 = 50.5 -> 50, + 100.5 = 150.5
    // -> 150; 103 / 4 = 25.75 -> 26, + 151.5 = 177.5 -> 178; 0 + -7.
    Fill({100, 101, 103, 104, 200, 201, 202, -7});
    Select(1, 8);
    Choose(LapSelectionBoth, LapSmooth);
    OneStep(EditLap, "Lap - Smooth");
    EXPECT_EQ(MadeL, (Samples{125, 150, 178, -7}));
}

TEST_F(Lap, SimpleClipsAtTheHighestSampleBothWays) {
    Fill({32767, -32768, 30000, -30000, 32767, -32768, 3000, -2000});
    Select(1, 8);
    Choose(LapSelectionBoth, LapSimple);
    OneStep(EditLap, "Lap - Simple");
    EXPECT_EQ(MadeL, (Samples{32767, -32767, 32767, -32000}));
}

TEST_F(Lap, EightBitsClipAt127) {
    Fill({100, -128, 5, 100, -128, 6}, {}, 8);
    Select(1, 6);
    Choose(LapSelectionBoth, LapSimple);
    OneStep(EditLap, "Lap - Simple");
    EXPECT_EQ(MadeL, (Samples{127, -127, 11}));
    Choose(LapSelectionBoth, LapSmooth);
    OneStep(EditLap, "Lap - Smooth");
    EXPECT_EQ(MadeL.back(), 6);
}

TEST_F(Lap, TheLowestSampleIsRaisedAlsoByTheSmoothOne) {
    Fill({-32768, -32768, -32768, -32768});
    Select(1, 4);
    Choose(LapSelectionBoth, LapSmooth);
    OneStep(EditLap, "Lap - Smooth");
    EXPECT_EQ(MadeL, (Samples{-32767, -32767}));
}

TEST_F(Lap, BothOfAnOddSelectionLeavesItsLastSample) {
    Stereo(1000);
    Select(101, 111);
    Choose(LapSelectionBoth, LapSmooth);
    OneStep(EditLap, "Lap - Smooth");
    EXPECT_EQ(MadeL, Joined({TestSamples(1, 100, 1),
                             Overlap(TestSamples(101, 105, 1), TestSamples(106, 110, 1), true),
                             TestSamples(111, 1000, 1)}));
    EXPECT_EQ(MadeR, Joined({TestSamples(1, 100, 2),
                             Overlap(TestSamples(101, 105, 2), TestSamples(106, 110, 2), true),
                             TestSamples(111, 1000, 2)}));
    EXPECT_EQ(MadeL.size(), 995U);
}

TEST_F(Lap, TwoOrThreeSamplesInBothAreTooFew) {
    Stereo(1000);
    Choose(LapSelectionBoth, LapSmooth);
    for (const std::int32_t Last : {102, 103}) {
        Select(101, Last);
        ExpectUntouched(EditLap);
        EXPECT_THAT(Messages.TakeTexts(), ::testing::ElementsAre(SmallMessage));
    }
    Select(101, 104);
    OneStep(EditLap, "Lap - Smooth");
    EXPECT_EQ(MadeL.size(), 998U);
}

TEST_F(Lap, TheFirstPartTakesAsMuchBehindIt) {
    Mono(1000);
    Select(101, 150);
    Choose(LapSelectionFirst, LapSimple);
    OneStep(EditLap, "Lap - Simple");
    EXPECT_EQ(MadeL, Joined({TestSamples(1, 100),
                             Overlap(TestSamples(101, 150), TestSamples(151, 200), false),
                             TestSamples(201, 1000)}));
}

TEST_F(Lap, TheFirstPartReachesUpToTheEndAndNoFurther) {
    Mono(1000);
    Choose(LapSelectionFirst, LapSmooth);
    Select(801, 900); // the second part ends with the last sample
    OneStep(EditLap, "Lap - Smooth");
    EXPECT_EQ(MadeL, Joined({TestSamples(1, 800),
                             Overlap(TestSamples(801, 900), TestSamples(901, 1000), true)}));
    Select(802, 901);
    ExpectUntouched(EditLap);
    EXPECT_THAT(Messages.TakeTexts(), ::testing::ElementsAre(FirstMessage));
    Select(1, 1000);
    ExpectUntouched(EditLap);
    EXPECT_THAT(Messages.TakeTexts(), ::testing::ElementsAre(FirstMessage));
}

TEST_F(Lap, TheSecondPartTakesAsMuchBeforeIt) {
    Mono(1000);
    Select(101, 150);
    Choose(LapSelectionSecond, LapSmooth);
    OneStep(EditLap, "Lap - Smooth");
    EXPECT_EQ(MadeL, Joined({TestSamples(1, 50),
                             Overlap(TestSamples(51, 100), TestSamples(101, 150), true),
                             TestSamples(151, 1000)}));
}

TEST_F(Lap, TheSecondPartMayBeginOneSampleBeforeTheDocument) {
    Mono(1000);
    Choose(LapSelectionSecond, LapSimple);
    Select(101, 200);
    OneStep(EditLap, "Lap - Simple");
    EXPECT_EQ(MadeL, Joined({Overlap(TestSamples(1, 100), TestSamples(101, 200), false),
                             TestSamples(201, 1000)}));
    Select(100, 199); // from place 0 on: what would come to lie there is not made
    OneStep(EditLap, "Lap - Simple");
    Samples Expected =
        Overlap(Joined({Silence(1), TestSamples(1, 99)}), TestSamples(100, 199), false);
    Expected.erase(Expected.begin());
    EXPECT_EQ(MadeL, Joined({Expected, TestSamples(200, 1000)}));
    EXPECT_EQ(MadeL.size(), 900U);
    Select(99, 198);
    ExpectUntouched(EditLap);
    EXPECT_THAT(Messages.TakeTexts(), ::testing::ElementsAre(SecondMessage));
}

TEST_F(Lap, OneChannelIsFilledUpAtItsEnd) {
    Stereo(1000);
    OneChannel(1);
    Select(101, 120);
    Choose(LapSelectionBoth, LapSmooth);
    OneStep(EditLap, "Lap - Smooth");
    EXPECT_EQ(MadeL, Joined({TestSamples(1, 100, 1),
                             Overlap(TestSamples(101, 110, 1), TestSamples(111, 120, 1), true),
                             TestSamples(121, 1000, 1), Silence(10)}));
    EXPECT_EQ(MadeR, TestSamples(1, 1000, 2));
}

TEST_F(Lap, OverManyBlocksIsTheSameToTheBit) {
    constexpr std::int32_t Count = 1300002;
    Stereo(Count);
    Select(2, Count);
    for (const bool Smooth : {true, false}) {
        Choose(LapSelectionBoth, Smooth ? LapSmooth : LapSimple);
        OneStep(EditLap, "Lap");
        constexpr std::int32_t N = (Count - 1) / 2;
        for (const std::int32_t Channel : {1, 2})
            EXPECT_TRUE((Channel == 1 ? MadeL : MadeR) ==
                        Joined({TestSamples(1, 1, Channel),
                                Overlap(TestSamples(2, N + 1, Channel),
                                        TestSamples(N + 2, 2 * N + 1, Channel), Smooth),
                                TestSamples(2 * N + 2, Count, Channel)}))
                << Channel << Smooth;
    }
}

TEST_F(Lap, ShowsTheNewSoundAndLeavesTheSelection) {
    Stereo(1000);
    Select(101, 120);
    Choose(LapSelectionBoth, LapSmooth);
    EditLap();
    ExpectSelection(101, 120);
    ExpectCalls({"Refresh_Wave_View"});
}

TEST_F(Lap, CancelOrNobodyToAskDoesNothing) {
    Stereo(1000);
    Select(101, 120);
    Questions.Lap = {false, {}};
    ExpectUntouched(EditLap);
    EXPECT_EQ(Questions.LapsAsked, 1);
    SetLapDialog(nullptr);
    ExpectUntouched(EditLap);
    ExpectCalls({});
}

TEST_F(Lap, NeedsARange) {
    ScriptedSelConf Dialog;
    Stereo(1000);
    Select(300, 300);
    ExpectUntouched(EditLap);
    ASSERT_EQ(Dialog.Requests.size(), 1U);
    EXPECT_EQ(Dialog.Requests[0].Need, 2);
    EXPECT_EQ(Dialog.Requests[0].Caption, " Confirm Selection [Lap]");
    EXPECT_EQ(Questions.LapsAsked, 0);
}

TEST_F(Lap, AsksTheDiskForTwiceTheStretchPerChannel) {
    Stereo(1000);
    Select(101, 120);
    Choose(LapSelectionBoth, LapSmooth);
    TmpDir0 = Session.Path("nowhere");
    ExpectUntouched(EditLap);
    OneChannel(2);
    ExpectUntouched(EditLap);
    EXPECT_THAT(Questions.Needs, ::testing::ElementsAre(40, 20));
}

TEST_F(Lap, TellsHowFarItHasComeAndPutsThePointerBack) {
    static std::vector<bool> Pointers;
    SetBusyPointerRoutine([](bool Busy) { Pointers.push_back(Busy); });
    Stereo(500000);
    Select(1, 500000);
    Choose(LapSelectionBoth, LapSimple);
    std::vector<std::string> Lines;
    {
        OrderLog Log;
        EditLap();
        Lines.assign(std::find(Log.Lines.begin(), Log.Lines.end(), "color 8421376"),
                     Log.Lines.end());
    }
    SetBusyPointerRoutine({});
    // Both channels at once; 100000 and 200000 of 250000 are reported.
    EXPECT_THAT(Lines, ::testing::ElementsAre("color 8421376", "0.000", "0.400", "0.800", "hide"));
    EXPECT_THAT(Pointers, ::testing::ElementsAre(true, false));
}

/// The disk is full as soon as memory has to move to a work file.
TEST_F(Lap, AFullDiskInTheMiddleLeavesTheDocumentAsItWas) {
    static std::int32_t Depth;
    Depth = 0;
    SetBusyPointerRoutine([](bool Busy) { Depth += Busy ? 1 : -1; });
    constexpr std::int32_t Count = 4000000; // 8 MB of 10 in memory
    Mono(Count);
    Select(1, Count);
    Choose(LapSelectionBoth, LapSmooth);
    const std::string Good = SessionDir;
    SessionDir = Session.Path("nowhere");
    EXPECT_THROW(EditLap(), Failure);
    SessionDir = Good;
    SetBusyPointerRoutine({});
    EXPECT_EQ(Depth, 0);
    EXPECT_TRUE(Left() == TestSamples(1, Count));
    EXPECT_FALSE(WaveStore->UndoMenu().Enabled);
    EXPECT_EQ(BrokenRule(*WaveStore), "");
    OneStep(EditLap, "Lap - Smooth");
}

TEST_F(Lap, AWrongSettingBecomesTheFirstOption) {
    EXPECT_EQ(LapSettingsRead(), (LapChoice{0, 0}));
    LapSettingsWrite({2, 1});
    EXPECT_EQ(IniGet("Lap", "SelOpn", ""), "2");
    EXPECT_EQ(IniGet("Lap", "TransOpn", ""), "1");
    EXPECT_EQ(LapSettingsRead(), (LapChoice{2, 1}));
    for (const char* Wrong : {"3", "-1", "junk", "1e300", "99999999999"}) {
        IniPut("Lap", "SelOpn", Wrong);
        IniPut("Lap", "TransOpn", Wrong);
        EXPECT_EQ(LapSettingsRead(), (LapChoice{0, 0})) << Wrong;
    }
    IniPut("Lap", "SelOpn", "2");
    IniPut("Lap", "TransOpn", "2");
    EXPECT_EQ(LapSettingsRead(), (LapChoice{2, 0}));
}

} // namespace
} // namespace quoril::test
