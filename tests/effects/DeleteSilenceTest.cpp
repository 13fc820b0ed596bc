// The shortening of silence: what remains, sample for sample, what is copied and what moves, and
// the command with its undo.
#include "effects/DeleteSilence.h"

#include "effects/EffectFixture.h"
#include "effects/LiteralWaves.h"
#include "effects/ScriptedSilence.h"
#include "storage/CarrierWriter.h"
#include "support/LargeFile.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace quoril::test {
namespace {

SilenceRule FastRule(const LiteralSilenceRule& Rule) {
    return {Rule.Rate,   Rule.SilenVol, Rule.SilenDur, static_cast<std::int16_t>(Rule.SilenDelStyl),
            Rule.BalDur, Rule.BalPer,   Rule.BalMin,   Rule.BalMax};
}

class DeleteSilenceTest : public EffectTest {
  protected:
    std::int32_t Number(std::int32_t From, std::int32_t To) {
        return std::uniform_int_distribution<std::int32_t>(From, To)(Random);
    }
    /// Loud and quiet stretches of random lengths, with values around the threshold.
    Samples Speech(std::int32_t Count, std::int32_t Thr, std::int32_t LongestRun) {
        Samples Made;
        bool Quiet = Number(0, 1) == 1;
        while (std::ssize(Made) < Count) {
            const std::int32_t Run = Number(1, LongestRun);
            const std::int32_t High = std::min(Quiet ? Thr - 1 : Thr * 3, 32767);
            for (std::int32_t i = 0; i < Run && std::ssize(Made) < Count; ++i)
                Made.push_back(static_cast<std::int16_t>(
                    High <= 0 ? 0 : Number(High == 32767 ? -32768 : -High, High)));
            Quiet = !Quiet;
        }
        return Made;
    }
    LiteralSilenceRule AnyRule() {
        LiteralSilenceRule Rule;
        Rule.Rate = Number(0, 3) == 0 ? 44100 : Number(20, 2000);
        Rule.SilenVol = Number(0, 9) == 0 ? Number(0, 100) / 100.0 : Number(0, 40) / 1000.0;
        Rule.SilenDur = Number(0, 4) == 0 ? 0.025 : Number(25, 900) / 1000.0;
        Rule.SilenDelStyl = Number(1, 2);
        Rule.BalDur = Number(0, 5) == 0 ? 0 : Number(0, 1500) / 1000.0;
        Rule.BalPer = Number(0, 5) == 0 ? 1 : Number(0, 10000) / 10000.0;
        Rule.BalMin = Number(0, 2) == 0 ? 0 : Number(0, 300) / 1000.0;
        Rule.BalMax = Number(0, 2) == 0 ? 100 : Number(25, 700) / 1000.0;
        return Rule;
    }
    static Samples SamplesOf(BlockCarrBuffClass& Of) {
        std::vector<std::int16_t> Read(static_cast<std::size_t>(Of.WaveINos) + 1);
        Of.QuickBuffGet(1, Read);
        return {Read.begin() + 1, Read.end()};
    }
    /// A carrier of pieces of random lengths.
    std::unique_ptr<BlockCarrBuffClass> InPieces(const Samples& From) {
        CarrierWriter Made(1);
        for (std::size_t At = 0; At < From.size();) {
            const auto Piece =
                std::min<std::size_t>(From.size() - At, static_cast<std::size_t>(Number(1, 30000)));
            const auto Part = Carrier({From.begin() + static_cast<std::ptrdiff_t>(At),
                                       From.begin() + static_cast<std::ptrdiff_t>(At + Piece)});
            Made.Append(*Part, 1, Part->WaveINos);
            At += Piece;
        }
        return Made.Finish();
    }
    void ExpectLikeLiteral(const LiteralSilenceRule& Rule, std::int32_t Count,
                           std::int32_t LongestRun) {
        const auto Thr = static_cast<std::int32_t>(std::nearbyint(Rule.SilenVol * 32767));
        const Samples L = Speech(Count, Thr, LongestRun);
        Samples R = Speech(Count, Thr, LongestRun);
        if (Number(0, 2) == 0) // mostly quiet together
            std::transform(L.begin(), L.end(), R.begin(),
                           [](std::int16_t One) { return static_cast<std::int16_t>(-(One / 2)); });
        const auto SourceL = InPieces(L);
        const auto SourceR = InPieces(R);
        std::unique_ptr<BlockCarrBuffClass> ResultL;
        std::unique_ptr<BlockCarrBuffClass> ResultR;
        PassProgress Bar(1, 100000);
        DeleteSilenceMono(*SourceL, FastRule(Rule), ResultL, Bar);
        const LiteralWave Mono = LiteralDeleteSilence(L, Rule);
        ASSERT_TRUE(SamplesOf(*ResultL) == Mono) << "mono";
        DeleteSilenceStereo(*SourceL, *SourceR, FastRule(Rule), ResultL, ResultR, Bar);
        LiteralWave LiteralL;
        LiteralWave LiteralR;
        LiteralDeleteSilence(L, R, Rule, LiteralL, LiteralR);
        ASSERT_TRUE(SamplesOf(*ResultL) == LiteralL) << "left";
        ASSERT_TRUE(SamplesOf(*ResultR) == LiteralR) << "right";
        ASSERT_TRUE(SamplesOf(*SourceL) == L && SamplesOf(*SourceR) == R) << "the sources";
        Shortened += Mono.size() < L.size() ? 1 : 0;
    }
    void Answer(const DelSilenChoice& Choice) { Silence.Answer = {true, Choice}; }
    static DelSilenChoice Fixed(double Vol, double Dur, double Bal) {
        DelSilenChoice Choice;
        Choice.SilenVol = Vol;
        Choice.SilenDur = Dur;
        Choice.BalDur = Bal;
        return Choice;
    }
    static Samples Joined(std::initializer_list<Samples> Parts) {
        Samples All;
        for (const Samples& Part : Parts)
            All.insert(All.end(), Part.begin(), Part.end());
        return All;
    }
    /// Quiet samples that can be told from one another.
    static Samples Quiet(std::int32_t Count) {
        Samples Made;
        for (std::int32_t i = 0; i < Count; ++i)
            Made.push_back(static_cast<std::int16_t>(i % 300 - 150));
        return Made;
    }
    static Samples Part(const Samples& Whole, std::ptrdiff_t From, std::ptrdiff_t Count) {
        return {Whole.begin() + From, Whole.begin() + From + Count};
    }

    std::mt19937 Random{17};
    int Shortened = 0;
    ScriptedSilence Silence;
};

// ---- The arithmetic

TEST_F(DeleteSilenceTest, RandomSoundsAndRulesAreShortenedAsTheWalkSampleBySampleDoes) {
    for (int Case = 0; Case < 1500; ++Case) {
        ExpectLikeLiteral(AnyRule(), Number(1, 3000), Number(2, 900));
        ASSERT_FALSE(HasFailure()) << "case " << Case;
    }
    EXPECT_GT(Shortened, 300);
}

TEST_F(DeleteSilenceTest, LongSoundsWithLongStretchesAreToo) {
    for (int Case = 0; Case < 25; ++Case) {
        LiteralSilenceRule Rule = AnyRule();
        Rule.Rate = 44100;
        Rule.SilenVol = 0.01;
        ExpectLikeLiteral(Rule, Number(90000, 300000), Number(3000, 70000));
        ASSERT_FALSE(HasFailure()) << "case " << Case;
    }
    EXPECT_GT(Shortened, 8);
}

TEST_F(DeleteSilenceTest, AnOddRestIsOneSampleLessOrMore) {
    LiteralSilenceRule Rule;
    Rule.Rate = 1000;
    Rule.SilenDur = 0.03;
    Rule.BalDur = 0.005;
    for (const std::int32_t Before : {9, 10}) // the run begins at an even or an odd position
        for (const std::int32_t Run : {40, 41}) {
            const Samples Source =
                Joined({Samples(static_cast<std::size_t>(Before), 5000), Quiet(Run), {5000}});
            const auto Whole = Carrier(Source);
            std::unique_ptr<BlockCarrBuffClass> Result;
            PassProgress Bar(1, 100000);
            DeleteSilenceMono(*Whole, FastRule(Rule), Result, Bar);
            EXPECT_EQ(SamplesOf(*Result), LiteralDeleteSilence(Source, Rule));
            const std::int32_t Rest = Result->WaveINos - Before - 1;
            EXPECT_TRUE(Rest >= 4 && Rest <= 6) << Rest;
            EXPECT_EQ(Rest == 5, Run == 40) << Before << " and " << Run;
        }
}

TEST_F(DeleteSilenceTest, TheLowestSampleIsLoudAndARunThatIsNeverLongEnoughStays) {
    LiteralSilenceRule Rule;
    Rule.Rate = 10; // the shortest run rounds to no sample at all
    Rule.SilenDur = 0.025;
    Rule.SilenVol = 1;
    Rule.BalDur = 0;
    const Samples Source = {0, 0, -32768, 0, 0, 32767, 0};
    const auto Whole = Carrier(Source);
    std::unique_ptr<BlockCarrBuffClass> Result;
    PassProgress Bar(1, 100000);
    DeleteSilenceMono(*Whole, FastRule(Rule), Result, Bar);
    EXPECT_EQ(SamplesOf(*Result), Source);
    Rule.SilenDur = 0.1; // one sample
    DeleteSilenceMono(*Whole, FastRule(Rule), Result, Bar);
    EXPECT_EQ(SamplesOf(*Result), (Samples{-32768, 32767}));
}

TEST_F(DeleteSilenceTest, LongStretchesMoveWithoutACopy) {
    constexpr std::int32_t Frames = 4000000;
    MakeLongWav(Session.Path("long.wav"), Frames);
    OpenAsDocument(Session.Path("long.wav"));
    Select(1, Frames);
    const std::int32_t Before = MemoryUsed;
    DelSilenSettingsWrite(Fixed(0, 0.1, 0)); // so that there is no need to write it once more
    const std::int64_t Read = BytesReadSoFar();
    const std::int64_t Written = BytesWrittenSoFar();
    Answer(Fixed(0, 0.1, 0)); // nothing is quiet
    DeleteSilence();
    EXPECT_LE(BytesReadSoFar() - Read, Frames * std::int64_t{4} * 102 / 100);
    EXPECT_LT(BytesWrittenSoFar() - Written, 65536);
    EXPECT_EQ(WaveStore->UndoMenu().Caption, "Undo [Delete Silence]");
    EXPECT_EQ(WaveStore->WavWaveINos, Frames);
    EXPECT_EQ(MemoryUsed, Before);
}

// ---- The command

TEST_F(DeleteSilenceTest, OfALongSilenceItsBeginningAndItsEndRemain) {
    // Three seconds of silence, of which one remains.
    const Samples Silent = Quiet(132300);
    const Samples Source = Joined({Samples(5000, 4000), Silent, Samples(7000, -4000)});
    Document(Source, {}, 16, 33333);
    WaveStore->WavFmtFreq = 44100;
    Answer(Fixed(1, 0.1, 1));
    ExpectStep(DeleteSilence, "Delete Silence",
               Joined({Samples(5000, 4000), Part(Silent, 0, 22050),
                       Part(Silent, 132300 - 22050, 22050), Samples(7000, -4000)}));
    // Nothing but silence.
    Select(5001, 5000 + 132300);
    ExpectStep(DeleteSilence, "Delete Silence",
               Joined({Samples(5000, 4000), Part(Silent, 0, 22050),
                       Part(Silent, 132300 - 22050, 22050), Samples(7000, -4000)}));
}

TEST_F(DeleteSilenceTest, ARangeThatEndsInSilenceIsClosedLikeOneThatEndsInSound) {
    const Samples Silent = Quiet(3000);
    for (const Samples& End : {Samples{}, Samples(40, 9000)}) {
        Document(Joined({Samples(40, 9000), Silent, End}));
        Answer(Fixed(1, 0.1, 1));
        ExpectStep(DeleteSilence, "Delete Silence",
                   Joined({Samples(40, 9000), Part(Silent, 0, 500), Part(Silent, 2500, 500), End}));
    }
}

TEST_F(DeleteSilenceTest, ASilenceShorterThanWhatIsToRemainStaysWhole) {
    const Samples Silent = Quiet(900);
    Document(Silent);
    Answer(Fixed(1, 0.1, 1));
    ExpectStep(DeleteSilence, "Delete Silence", Silent);
}

TEST_F(DeleteSilenceTest, WithAThresholdOfZeroNothingIsQuietAndTheStepIsMade) {
    const Samples Source = Joined({Samples(3000, 0), Samples(10, 3)});
    Document(Source);
    Answer(Fixed(0, 0.1, 0));
    ExpectStep(DeleteSilence, "Delete Silence", Source);
}

TEST_F(DeleteSilenceTest, WithEightBitsOnePercentIsAboveEverySample) {
    Samples Source;
    for (std::int32_t i = 0; i < 4000; ++i)
        Source.push_back(static_cast<std::int16_t>(i % 256 - 128));
    Document(Source, {}, 8);
    Answer(Fixed(1, 0.1, 1));
    ExpectStep(DeleteSilence, "Delete Silence",
               Joined({Part(Source, 0, 500), Part(Source, 3500, 500)}));
}

TEST_F(DeleteSilenceTest, OneChannelAloneShortensAndTheChannelsFallOutOfStep) {
    const Samples L = Joined({Samples(100, 5000), Quiet(2000), Samples(300, 6000)});
    const Samples R = Samples(2400, 77);
    Document(L, R);
    SelBoth = false;
    Answer(Fixed(1, 0.1, 0));
    ExpectStep(DeleteSilence, "Delete Silence",
               Joined({Samples(100, 5000), Samples(300, 6000), Samples(2000, 0)}), R);
    Document(R, L);
    SelSingle = 2;
    ExpectStep(DeleteSilence, "Delete Silence", R,
               Joined({Samples(100, 5000), Samples(300, 6000), Samples(2000, 0)}));
}

TEST_F(DeleteSilenceTest, BothChannelsAreQuietOnlyTogether) {
    const Samples L = Joined({Samples(100, 5000), Quiet(2000), Samples(100, 5000)});
    const Samples R = Joined({Quiet(1100), Samples(100, -400), Quiet(1000)});
    Document(L, R, 16, 77);
    Answer(Fixed(1, 0.5, 0));
    // Quiet together are 1000 samples and, behind the loud ones of the right channel, 900.
    ExpectStep(DeleteSilence, "Delete Silence",
               Joined({Samples(100, 5000), Part(L, 1100, 100), Samples(100, 5000)}),
               Joined({Part(R, 0, 100), Samples(100, -400), Part(R, 2100, 100)}));
}

TEST_F(DeleteSilenceTest, WhatLiesBehindTheRangeMovesUp) {
    Document(Joined({Samples(50, 1), Quiet(1000), Samples(50, 2)}));
    Select(51, 1050);
    Answer(Fixed(1, 0.1, 0));
    // Where everything goes one silent sample is left.
    ExpectStep(DeleteSilence, "Delete Silence", Joined({Samples(50, 1), {0}, Samples(50, 2)}));
}

TEST_F(DeleteSilenceTest, OfAllSoundOneSampleAtLeastRemains) {
    Document(Quiet(1000), Quiet(1000));
    Answer(Fixed(1, 0.1, 0));
    ExpectStep(DeleteSilence, "Delete Silence", {0}, {0});
}

TEST_F(DeleteSilenceTest, APartOfTheSilenceIsKeptBetweenItsEnds) {
    DelSilenChoice Choice = Fixed(1, 0.1, 0);
    Choice.SilenDelStyl = 2;
    Choice.BalPer = 20;
    const auto Rest = [&](double Min, double Max) {
        Choice.BalMin = Min;
        Choice.BalMax = Max;
        Answer(Choice);
        Document(Joined({{9000}, Quiet(2000), {9000}}));
        DeleteSilence();
        return WaveStore->WavWaveINos - 2;
    };
    EXPECT_EQ(Rest(0, 100), 400);
    EXPECT_EQ(Rest(0.6, 100), 600);
    EXPECT_EQ(Rest(0, 0.1), 100);
    EXPECT_EQ(Rest(3, 100), 2000); // the least is more than there is
    Choice.BalPer = 100;
    EXPECT_EQ(Rest(0, 100), 2000);
    Choice.BalPer = 0;
    EXPECT_EQ(Rest(0, 100), 0);
}

TEST_F(DeleteSilenceTest, TheAnswerIsRememberedAndShownTheNextTime) {
    Document(Samples(100, 5000));
    const DelSilenChoice Choice = {2.5, 0.333, 2, 0.75, 12.5, 0.25, 60};
    Answer(Choice);
    DeleteSilence();
    Silence.Answer.OkClicked = false;
    WaveChanged = false;
    EXPECT_TRUE(Unchanged(DeleteSilence).empty());
    ASSERT_EQ(Silence.Shown.size(), 2U);
    EXPECT_EQ(Silence.Shown[0], DelSilenChoice{});
    EXPECT_EQ(Silence.Shown[1], Choice);
}

TEST_F(DeleteSilenceTest, BackingOutChangesNothingAndRemembersNothing) {
    Document(Samples(100, 5000));
    Silence.Answer = {false, Fixed(3, 3, 3)};
    EXPECT_TRUE(Unchanged(DeleteSilence).empty());
    EXPECT_EQ(DelSilenSettingsRead(), DelSilenChoice{});
    SetDelSilenDialog(nullptr);
    EXPECT_TRUE(Unchanged(DeleteSilence).empty());
}

TEST_F(DeleteSilenceTest, TheDiskIsAskedForNothingOfItsOwn) {
    Document(Samples(1000, 1));
    Answer(Fixed(1, 0.1, 0));
    EXPECT_EQ(Refused(DeleteSilence), std::vector<std::int64_t>{0});
}

TEST_F(DeleteSilenceTest, AFailureInTheMiddleIsToldAndLeavesTheDocument) {
    Document(Samples(500000, 5000), Samples(500000, 1), 16, 90000);
    Answer(Fixed(1, 0.1, 0));
    Progress.FailAt = 0.3F;
    EXPECT_EQ(Unchanged(DeleteSilence), std::vector<std::string>{"Delete Silence Error|Disk full"});
}

TEST_F(DeleteSilenceTest, TheBarGoesThroughOnce) {
    Document(Samples(250000, 5000));
    Answer(Fixed(1, 0.1, 0));
    DeleteSilence();
    EXPECT_EQ(Progress.Values, (std::vector<float>{0, 0.4F, 0.8F, 1}));
}

} // namespace
} // namespace quoril::test
