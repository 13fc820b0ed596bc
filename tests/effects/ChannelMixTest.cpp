// New channels out of both: the arithmetic, what the user is asked and told, and undo.
#include "effects/ChannelMix.h"

#include "audiofile/OpenSaveClass.h"
#include "audiofile/WavMaker.h"
#include "effects/EffectFixture.h"
#include "effects/ScriptedMix.h"
#include "effects/TransformCommands.h"
#include "storage/UndoListener.h"
#include "support/LargeFile.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace quoril::test {

namespace {

constexpr std::int32_t SourceCount = 7;

/// What a source makes of two samples, worked out in fractions: the sum of the two over 1 or 2, and
/// a half goes to the even side.
std::int16_t Expected(std::int32_t Source, std::int32_t L, std::int32_t R, std::int32_t Bits) {
    const std::int32_t High = Bits == 8 ? 127 : 32767;
    const auto Limited = [High](std::int32_t Value) {
        return static_cast<std::int16_t>(std::min(std::max(Value, -High - 1), High));
    };
    switch (Source) {
    case 0:
        return static_cast<std::int16_t>(L);
    case 1:
        return static_cast<std::int16_t>(R);
    case 2: {
        const std::int32_t Twice = L + R;
        if (Twice % 2 == 0)
            return static_cast<std::int16_t>(Twice / 2);
        // Of the whole numbers beside an odd half, one is even.
        const std::int32_t Below = (Twice - 1) / 2;
        return static_cast<std::int16_t>(Below % 2 == 0 ? Below : Below + 1);
    }
    case 3:
        return Limited(L + R);
    case 4:
        return Limited(L - R);
    case 5:
        return Limited(R - L);
    default:
        return 0;
    }
}

/// Compares all samples of a run, and tells the first one that is wrong.
void ExpectMix(const Samples& L, const Samples& R, std::int32_t Bits) {
    for (std::int32_t Source = 0; Source < SourceCount; ++Source) {
        Samples Out(L.size(), 99);
        MixRun(Source, L, R, Out, Bits);
        for (std::size_t i = 0; i < L.size(); ++i)
            ASSERT_EQ(Out[i], Expected(Source, L[i], R[i], Bits))
                << MixSourceNames.at(static_cast<std::size_t>(Source)) << " of " << L[i] << " and "
                << R[i] << " at " << Bits;
    }
}

TEST(MixKernels, EveryPairOf8BitsIsExact) {
    Samples L;
    Samples R;
    for (std::int32_t A = -128; A <= 127; ++A)
        for (std::int32_t B = -128; B <= 127; ++B) {
            L.push_back(static_cast<std::int16_t>(A));
            R.push_back(static_cast<std::int16_t>(B));
        }
    ExpectMix(L, R, 8);
}

TEST(MixKernels, EveryValueOf16BitsIsExactBesideEveryKindOfOther) {
    Samples All;
    for (std::int32_t Value = -32768; Value <= 32767; ++Value)
        All.push_back(static_cast<std::int16_t>(Value));
    const std::size_t Count = All.size();
    for (const int Other : {-32768, -32767, -20000, -2, -1, 0, 1, 2, 20000, 32766, 32767}) {
        const Samples Same(Count, static_cast<std::int16_t>(Other));
        ExpectMix(All, Same, 16);
        ExpectMix(Same, All, 16);
    }
    Samples Turned = All;
    std::reverse(Turned.begin(), Turned.end());
    ExpectMix(All, Turned, 16);
    ExpectMix(All, All, 16);
    Samples Scattered = All;
    for (std::size_t i = 0; i < Count; ++i)
        Scattered[i] = All[(i * 40503U + 7U) % Count];
    ExpectMix(All, Scattered, 16);
    ExpectMix(Scattered, All, 16);
}

TEST(MixKernels, RunsOfEveryLengthAreExact) {
    for (std::size_t Count = 0; Count < 70; ++Count) {
        Samples L;
        Samples R;
        for (std::size_t i = 0; i < Count; ++i) {
            L.push_back(static_cast<std::int16_t>(i * 7919U));
            R.push_back(static_cast<std::int16_t>(i * 104729U + 5U));
        }
        ExpectMix(L, R, 16);
    }
}

class ChannelMixTest : public EffectTest {
  protected:
    using Samples = std::vector<std::int16_t>;

    void Choose(std::int32_t LeftSrc, std::int32_t RightSrc) {
        Dialog.Answer = {true, {LeftSrc, RightSrc}};
    }
    static Samples Mixed(std::int32_t Source, const Samples& L, const Samples& R,
                         std::int32_t Bits) {
        Samples Result;
        for (std::size_t i = 0; i < L.size(); ++i)
            Result.push_back(Expected(Source, L[i], R[i], Bits));
        return Result;
    }
    /// All pairs of sources on the present document, each one step that undo takes back.
    void ExpectAllPairs() {
        const Samples L = Left();
        const Samples R = Right();
        for (std::int32_t A = 0; A < SourceCount; ++A)
            for (std::int32_t B = 0; B < SourceCount; ++B) {
                Choose(A, B);
                ExpectStep(ChannelMix, "Interchange Left-Right",
                           Mixed(A, L, R, WaveStore->WavFmtBits),
                           Mixed(B, L, R, WaveStore->WavFmtBits));
                ASSERT_FALSE(HasFailure()) << A << " and " << B;
                EXPECT_EQ(BrokenRule(*WaveStore), "");
            }
    }
    /// Opens a file with both channels, so that the samples lie in that file.
    void Open(std::int32_t Frames, std::int32_t Bits) const {
        WaveStore = std::make_unique<FileMemoClass>();
        WavFile File;
        File.Channels = 2;
        File.Bits = Bits;
        File.Data = AudioBytes(Noise(2 * Frames, Bits, 5), Bits);
        bool Result = false;
        OpenSaveClass().FileLoadWave(*WaveStore, Session.WriteFile("a.wav", File.Whole()), Result);
        ASSERT_TRUE(Result);
        WaveChanged = false;
        Select(1, Frames);
    }

    ScriptedMix Dialog;
    const std::string StereoOnly = "This function works only in Stereo";
    const std::string BothOnly = "This function works only if you select both channels";
};

TEST_F(ChannelMixTest, EveryPairOfSourcesComesOutAcrossBordersOfBlocks) {
    for (const std::int32_t Bits : {8, 16}) {
        const Samples Extra = Noise(700, Bits, 3);
        Document(Noise(12000, Bits, 1), Noise(12000, Bits, 2), Bits, 3001);
        // The channels have borders at different places.
        WaveStore->WaveDataReplace(777, 2, nullptr, Carrier(Extra).get(), "Fill", true);
        WaveStore->UndoInfoReset();
        WaveChanged = false;
        ExpectAllPairs();
        // A part of the sound, with the rest left alone.
        const Samples L = Left();
        const Samples R = Right();
        Select(2990, 9010);
        Choose(MixSum, MixRightLessLeft);
        ChannelMix();
        const Samples NewL = Left();
        const Samples NewR = Right();
        for (std::size_t i = 0; i < L.size(); ++i) {
            const bool Within = i >= 2989 && i < 9010;
            ASSERT_EQ(NewL[i], Within ? Expected(MixSum, L[i], R[i], Bits) : L[i]) << i;
            ASSERT_EQ(NewR[i], Within ? Expected(MixRightLessLeft, L[i], R[i], Bits) : R[i]) << i;
        }
    }
}

TEST_F(ChannelMixTest, EveryPairOfSourcesComesOutOfAnOpenedFile) {
    for (const std::int32_t Bits : {8, 16}) {
        Open(5000, Bits);
        ExpectAllPairs();
    }
}

TEST_F(ChannelMixTest, AnOpenedFileIsReadOnceForBothChannels) {
    constexpr std::int32_t Frames = 2000000;
    MakeLongWav(Session.Path("long.wav"), Frames);
    for (const auto& [A, B] :
         {std::pair(MixSum, MixLeftLessRight), std::pair(MixAverage, MixAverage),
          std::pair(MixLeft, MixSum), std::pair(MixRightLessLeft, MixSilence)}) {
        OpenAsDocument(Session.Path("long.wav"));
        Select(1, Frames);
        Choose(A, B);
        const std::int64_t Before = BytesReadSoFar();
        ChannelMix();
        EXPECT_EQ(WaveStore->UndoMenu().Caption, "Undo [Interchange Left-Right]");
        EXPECT_LT(BytesReadSoFar() - Before, std::int64_t{Frames} * 4 + 10000) << A << B;
    }
}

TEST_F(ChannelMixTest, ChannelsOfAnOpenedFileThatHaveChangedPlacesComeOut) {
    Open(5000, 16);
    InterchangeChannels();
    WaveStore->UndoInfoReset();
    WaveChanged = false;
    ExpectAllPairs();
    // One channel a whole block earlier than the other: blocks of the same length and the same file
    // then stand side by side, and are no stretch of it.
    const std::int32_t BlockLen = DefaultBlockLen();
    Open(3 * BlockLen, 16);
    WaveStore->WaveDataDelete(1, 1, BlockLen, "Cut", true);
    InterchangeChannels();
    WaveStore->UndoInfoReset();
    WaveChanged = false;
    ASSERT_EQ(Block(WaveStore->BlocksL().At(0)).BlockKind, BlockOrgFile);
    ASSERT_EQ(Block(WaveStore->BlocksR().At(0)).BlockKind, BlockOrgFile);
    const Samples L = Left();
    const Samples R = Right();
    Choose(MixSum, MixLeftLessRight);
    ChannelMix();
    EXPECT_TRUE(Left() == Mixed(MixSum, L, R, 16));
    EXPECT_TRUE(Right() == Mixed(MixLeftLessRight, L, R, 16));
}

TEST_F(ChannelMixTest, ARangeLargerThanMemoryComesOutTheSame) {
    MemoryBudget = 100000;
    Document(Noise(300000, 16, 1), Noise(300000, 16, 2), 16, 30000);
    const Samples L = Left();
    const Samples R = Right();
    for (const auto& [A, B] : {std::pair(MixSum, MixLeftLessRight), std::pair(MixAverage, MixLeft),
                               std::pair(MixSilence, MixAverage), std::pair(MixSum, MixSum)}) {
        Choose(A, B);
        ExpectStep(ChannelMix, "Interchange Left-Right", Mixed(A, L, R, 16), Mixed(B, L, R, 16));
    }
}

TEST_F(ChannelMixTest, RightForLeftAndLeftForRightSwapsTheChannels) {
    Document({1, 2, 3}, {4, 5, 6});
    Choose(MixRight, MixLeft);
    ExpectStep(ChannelMix, "Interchange Left-Right", {4, 5, 6}, {1, 2, 3});
}

TEST_F(ChannelMixTest, ASumOfTwoLoudSamplesIsClipped) {
    Document({20000, -20000, 100}, {20000, -20000, -1});
    Choose(MixSum, MixSilence);
    ExpectStep(ChannelMix, "Interchange Left-Right", {32767, -32768, 99}, {0, 0, 0});
    Document({100, -100, 100}, {100, -100, -1}, 8);
    Choose(MixLeft, MixSum);
    ExpectStep(ChannelMix, "Interchange Left-Right", {100, -100, 100}, {127, -128, 99});
}

TEST_F(ChannelMixTest, HalvesOfTheAverageGoToTheEvenSide) {
    Document({0, 1, 2, 0, -1, -2, 32767, -32768}, {1, 2, 3, -1, -2, -3, 32766, -32767});
    Choose(MixAverage, MixAverage);
    const Samples Middle = {0, 2, 2, 0, -2, -2, 32766, -32768};
    ExpectStep(ChannelMix, "Interchange Left-Right", Middle, Middle);
}

TEST_F(ChannelMixTest, ChannelsThatShareTheirSamplesAreToldApart) {
    Document({7, -8, 9}, {1, 2, 3});
    Choose(MixLeft, MixLeft);
    ChannelMix();
    WaveChanged = false;
    WaveStore->UndoInfoReset();
    Choose(MixLeftLessRight, MixSum);
    ExpectStep(ChannelMix, "Interchange Left-Right", {0, 0, 0}, {14, -16, 18});
    Choose(MixSum, MixSum);
    ChannelMix();
    EXPECT_EQ(Left(), (Samples{14, -16, 18}));
    // What the two channels share now is no longer shared when one of them changes.
    SelBoth = false;
    WaveInvert();
    EXPECT_EQ(Left(), (Samples{-14, 16, -18}));
    EXPECT_EQ(Right(), (Samples{14, -16, 18}));
}

TEST_F(ChannelMixTest, AChannelThatEndsEarlyCountsAsSilentThere) {
    Document({1, 2, 3, 4}, {10, 20, 30, 40});
    WaveStore->WaveDataDelete(3, 2, 2, "Cut", false);
    ASSERT_EQ(WaveStore->WaveNosR(), 2);
    Choose(MixSum, MixLeftLessRight);
    ChannelMix();
    EXPECT_EQ(Left(), (Samples{11, 22, 3, 4}));
    EXPECT_EQ(Right(), (Samples{-9, -18, 3, 4}));
    EXPECT_EQ(BrokenRule(*WaveStore), "");
}

TEST_F(ChannelMixTest, AMonoDocumentIsRefusedBeforeAnythingIsAsked) {
    Document({1, 2, 3});
    Select(0, 0);
    EXPECT_EQ(Unchanged(ChannelMix), std::vector<std::string>{StereoOnly});
    EXPECT_TRUE(Dialog.Offered.empty());
}

TEST_F(ChannelMixTest, OneSelectedChannelIsRefusedBeforeTheSourcesAreAskedFor) {
    Document({1, 2, 3}, {4, 5, 6});
    SelBoth = false;
    for (const std::int16_t Channel : {std::int16_t{1}, std::int16_t{2}}) {
        SelSingle = Channel;
        EXPECT_EQ(Unchanged(ChannelMix), std::vector<std::string>{BothOnly});
    }
    EXPECT_TRUE(Dialog.Offered.empty());
}

TEST_F(ChannelMixTest, CancelChangesAndRemembersNothing) {
    Document({1, 2, 3}, {4, 5, 6});
    Dialog.Answer = {false, {MixSum, MixSilence}};
    EXPECT_TRUE(Unchanged(ChannelMix).empty());
    EXPECT_EQ(Dialog.Offered.size(), 1U);
    EXPECT_EQ(IniGet("ChannelMix", "LeftSrc", "none"), "none");
    SetChnMixDialog(nullptr);
    EXPECT_TRUE(Unchanged(ChannelMix).empty());
}

TEST_F(ChannelMixTest, WithoutASelectionAndAnAnswerNothingHappens) {
    Document({1, 2, 3}, {4, 5, 6});
    Select(0, 0);
    EXPECT_TRUE(Unchanged(ChannelMix).empty());
    EXPECT_TRUE(Dialog.Offered.empty());
}

TEST_F(ChannelMixTest, TheSourcesAreRememberedInTheSettings) {
    Document({1, 2, 3}, {4, 5, 6});
    Choose(MixSilence, MixLeft);
    ChannelMix();
    EXPECT_EQ(Dialog.Offered.at(0), (ChnMixChoice{MixAverage, MixAverage}));
    EXPECT_EQ(IniGet("ChannelMix", "LeftSrc", ""), "6");
    EXPECT_EQ(IniGet("ChannelMix", "RightSrc", ""), "0");
    ChannelMix();
    EXPECT_EQ(Dialog.Offered.at(1), (ChnMixChoice{MixSilence, MixLeft}));
}

TEST_F(ChannelMixTest, ASettingOutOfRangeBecomesTheAverage) {
    for (const char* Wrong : {"-1", "7", "99999999999", "1e300", "-0.6", "6.51"}) {
        IniPut("ChannelMix", "LeftSrc", Wrong);
        IniPut("ChannelMix", "RightSrc", "5");
        EXPECT_EQ(ChnMixSettingsRead(), (ChnMixChoice{MixAverage, MixRightLessLeft})) << Wrong;
    }
    IniPut("ChannelMix", "LeftSrc", "0");
    IniPut("ChannelMix", "RightSrc", "7");
    EXPECT_EQ(ChnMixSettingsRead(), (ChnMixChoice{MixLeft, MixAverage}));
}

TEST_F(ChannelMixTest, TheDiskIsAskedFor4BytesASampleAfterTheSources) {
    Document(Samples(1000, 1), Samples(1000, 1));
    Choose(MixSum, MixSum);
    EXPECT_EQ(Refused(ChannelMix), std::vector<std::int64_t>{4000});
    EXPECT_EQ(Dialog.Offered.size(), 1U);
    // What was chosen is kept, although there was no room for it.
    EXPECT_EQ(ChnMixSettingsRead(), (ChnMixChoice{MixSum, MixSum}));
}

TEST_F(ChannelMixTest, AFailureInTheMiddleLeavesTheDocumentAsItWas) {
    Document(Noise(100000, 16, 1), Noise(100000, 16, 2), 16, 30000);
    for (const auto& [A, B] : {std::pair(MixSum, MixAverage), std::pair(MixSum, MixLeft),
                               std::pair(MixSilence, MixAverage), std::pair(MixLeft, MixRight)}) {
        Choose(A, B);
        for (const float Where : {0.1F, 0.5F, 1.0F}) {
            Progress.FailAt = Where;
            Progress.BarColor = 0;
            EXPECT_EQ(Unchanged(ChannelMix),
                      std::vector<std::string>{"Interchange Left-Right Error|Disk full"});
        }
    }
}

TEST_F(ChannelMixTest, TheBarMovesEvery10000SamplesThroughBothChannelsAtOnce) {
    const auto Bar = [this](std::int32_t A, std::int32_t B) {
        Document(Samples(20000, 1), Samples(20000, 1), 16, 10000);
        Progress.Values.clear();
        Progress.BarColor = 0;
        Choose(A, B);
        ChannelMix();
        return Progress.Values;
    };
    EXPECT_EQ(Bar(MixLeft, MixRight), (std::vector<float>{0, 1}));
    for (const auto& [A, B] : {std::pair(MixSum, MixLeft), std::pair(MixRight, MixSum),
                               std::pair(MixSum, MixAverage), std::pair(MixSum, MixSum)})
        EXPECT_EQ(Bar(A, B), (std::vector<float>{0, 0.5F, 1, 1}));
}

} // namespace

} // namespace quoril::test
