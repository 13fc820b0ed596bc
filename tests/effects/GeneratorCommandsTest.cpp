// Sine Wave, Noise and Modulate as commands: what is asked, what comes out, what the user reads,
// and undo.
#include "effects/GeneratorCommands.h"

#include "base/Random.h"
#include "effects/EffectFixture.h"
#include "effects/LiteralWaves.h"
#include "effects/ScriptedFrequency.h"
#include "effects/TestWaves.h"
#include "selection/ScriptedSelConf.h"

#include <cmath>

namespace quoril::test {
namespace {

class GeneratorTest : public EffectTest {
  protected:
    void Enter(const std::string& Start, const std::string& End, bool UseTwo = true) {
        Frequency.Entries = {{Start, End, UseTwo}};
    }
    static Samples Noise(std::int32_t Count, std::uint32_t Seed, std::int32_t Bits = 16) {
        const std::int32_t High = Bits == 8 ? 127 : 32767;
        return NoiseWave(Count, -High - 1, High, Seed);
    }
    /// `Whole` with other samples from an index on.
    static Samples With(Samples Whole, std::size_t At, const Samples& Part) {
        std::copy(Part.begin(), Part.end(), Whole.begin() + static_cast<std::ptrdiff_t>(At));
        return Whole;
    }
    static Samples Part(const Samples& Whole, std::size_t From, std::size_t Count) {
        const auto First = Whole.begin() + static_cast<std::ptrdiff_t>(From);
        return {First, First + static_cast<std::ptrdiff_t>(Count)};
    }
    /// Runs the command for noise with a known sequence, and takes it back.
    void ExpectNoise(const Samples& NewLeft, const Samples& NewRight) {
        const Samples OldLeft = Left();
        const Samples OldRight = Right();
        const int Redraws = View.Redraws;
        RandomSeed(5);
        DrawNoise();
        EXPECT_EQ(Messages.TakeTexts(), NoiseIsMade);
        EXPECT_GT(View.Redraws, Redraws);
        EXPECT_TRUE(Left() == NewLeft);
        EXPECT_TRUE(Right() == NewRight);
        ExpectQuiet();
        EXPECT_EQ(WaveStore->UndoMenu().Caption, "Undo [Noise]");
        WaveStore->Undo();
        EXPECT_TRUE(Left() == OldLeft);
        EXPECT_TRUE(Right() == OldRight);
        EXPECT_EQ(WaveStore->UndoCount(), 0);
    }
    static Samples Walk(std::int32_t Count, std::int32_t Bits = 16) {
        RandomSeed(5);
        return LiteralNoise(Count, Bits, RandomDraw);
    }

    ScriptedFrequency Frequency;
    const std::vector<std::string> NoiseIsMade = {
        "Noise Generated|Noise Generated with all frequencies.\n"
        "Use Equalizer effect on it, to choose as needed."};
};

// ---- Sine Wave

TEST_F(GeneratorTest, ASineTakesThePlaceOfTheSamplesInBothChannels) {
    const Samples L = Noise(100000, 1);
    const Samples R = Noise(100000, 2);
    Document(L, R, 16, 30011);
    Select(1001, 91000);
    const Samples Tone = LiteralSine(90000, 22937, 20, 480, 1000);
    Enter("20", "480");
    ExpectStep(DrawSine, "Sine", With(L, 1000, Tone), With(R, 1000, Tone));
    EXPECT_EQ(Progress.Values.back(), 1.0F);
}

TEST_F(GeneratorTest, ASineOfEightBitsIsLowerAndKeepsToItsChannel) {
    const Samples L = Noise(3000, 1, 8);
    const Samples R = Noise(3000, 2, 8);
    Document(L, R, 8);
    SelBoth = false;
    SelSingle = 2;
    Enter("50", "50");
    const Samples Tone = LiteralSine(3000, 89, 50, 50, 1000);
    EXPECT_EQ(*std::max_element(Tone.begin(), Tone.end()), 89);
    ExpectStep(DrawSine, "Sine", L, Tone);
}

TEST_F(GeneratorTest, ASineOfTwoSamplesIsSilence) {
    Document({5, 6, 7, 8});
    Select(2, 3);
    Enter("200", "1000");
    ExpectStep(DrawSine, "Sine", {5, 0, 0, 8});
}

TEST_F(GeneratorTest, WithoutTwoValuesTheEndIsTheStart) {
    Document(Samples(500, 1));
    Enter("40", "77", false);
    ExpectStep(DrawSine, "Sine", LiteralSine(500, 22937, 40, 40, 1000));
}

TEST_F(GeneratorTest, FrequenciesAreRoundedAndCountBetweenTheirLimits) {
    Document(Samples(500, 1));
    for (const auto& [Text, Hz] : {std::pair("2", 2),
                                   {"1.5", 2},
                                   {"20000", 20000},
                                   {"20000.5", 20000},
                                   {" 30 Hz", 30},
                                   {"2.5", 2},
                                   {"3.5", 4}}) {
        Enter(Text, "", false);
        ExpectStep(DrawSine, "Sine", LiteralSine(500, 22937, Hz, Hz, 1000));
    }
}

TEST_F(GeneratorTest, AFrequencyOutOfRangeBringsTheDialogBackWithoutAWord) {
    Document(Samples(500, 1));
    for (const char* Text : {"1", "20001", "0", "-200", "", "abc", "1.4999", "20000.51", "1e300",
                             "99999999999999999999"}) {
        Frequency.Shown.clear();
        Frequency.Entries = {{Text, "300", true}, {"300", Text, true}, {Text, "300", false}};
        EXPECT_TRUE(Unchanged(DrawSine).empty()) << Text;
        ASSERT_EQ(Frequency.Shown.size(), 4U) << Text;
        EXPECT_EQ(Frequency.Shown[0], EntFrqEntry{});
        // What was entered stands there again.
        EXPECT_EQ(Frequency.Shown[1], (EntFrqEntry{Text, "300", true}));
        EXPECT_EQ(Frequency.Shown[2], (EntFrqEntry{"300", Text, true}));
        EXPECT_EQ(Frequency.Shown[3], (EntFrqEntry{Text, "300", false}));
    }
}

TEST_F(GeneratorTest, EachCommandRemembersItsOwnAcceptedEntry) {
    Document(Samples(500, 1));
    const EntFrqEntry First = {"200", "1000", true};
    const EntFrqEntry OfSine = {"31", "32", false};
    const EntFrqEntry OfModulate = {"41.2", "42", true};
    Frequency.Entries = {OfSine};
    DrawSine();
    Frequency.Entries = {{"1", "2", true}, OfModulate};
    Modulate();
    WaveChanged = false;
    (void)Unchanged(DrawSine);
    (void)Unchanged(Modulate);
    ASSERT_EQ(Frequency.Shown.size(), 5U);
    EXPECT_EQ(Frequency.Shown[0], First);
    EXPECT_EQ(Frequency.Shown[1], First);
    EXPECT_EQ(Frequency.Shown[3], OfSine);
    EXPECT_EQ(Frequency.Shown[4], OfModulate);
}

TEST_F(GeneratorTest, AnAcceptedEntryIsRememberedAlsoWhenTheDiskIsFull) {
    Document(Samples(500, 1));
    Enter("77", "78");
    EXPECT_EQ(Refused(DrawSine), std::vector<std::int64_t>{1000});
    (void)Unchanged(DrawSine);
    EXPECT_EQ(Frequency.Shown.back(), (EntFrqEntry{"77", "78", true}));
}

TEST_F(GeneratorTest, WithoutAnAnswerNothingHappens) {
    Document(Samples(500, 1));
    for (const auto& Command : {DrawSine, Modulate})
        EXPECT_TRUE(Unchanged(Command).empty());
    EXPECT_EQ(Frequency.Shown.size(), 2U);
    SetEntFrqDialog(nullptr);
    EXPECT_TRUE(Unchanged(DrawSine).empty());
}

// ---- Noise

TEST_F(GeneratorTest, NoiseIsTheSameWalkInBothChannels) {
    const Samples L = Noise(70000, 1);
    const Samples R = Noise(70000, 2);
    Document(L, R, 16, 9001);
    Select(501, 60500);
    const Samples Made = Walk(60000);
    ExpectNoise(With(L, 500, Made), With(R, 500, Made));
    EXPECT_EQ(Progress.Values.back(), 1.0F);
}

TEST_F(GeneratorTest, NoiseOfEightBitsKeepsToItsChannel) {
    const Samples L = Noise(4000, 1, 8);
    const Samples R = Noise(4000, 2, 8);
    Document(L, R, 8);
    SelBoth = false;
    ExpectNoise(Walk(4000, 8), R);
    SelSingle = 2;
    ExpectNoise(L, Walk(4000, 8));
}

TEST_F(GeneratorTest, NoiseOfOneSampleIsOneStepOfTheWalk) {
    Document({1, 2, 3});
    Select(2, 2);
    ScriptedSelConf Question(3); // the point as a range
    ExpectNoise({1, Walk(1)[0], 3}, {});
}

TEST_F(GeneratorTest, NoiseGoesOnWhereTheRandomNumbersOfTheProcessStand) {
    Document(Samples(100, 1));
    RandomSeed(5);
    DrawNoise();
    const Samples First = Left();
    DrawNoise();
    EXPECT_NE(Left(), First);
    RandomSeed(5);
    DrawNoise();
    EXPECT_EQ(Left(), First);
}

TEST_F(GeneratorTest, NoiseThatFailsSaysNothingOfNoise) {
    Document(Samples(500000, 1));
    Progress.FailAt = 0.3F;
    EXPECT_EQ(Unchanged(DrawNoise), std::vector<std::string>{"Generate Noise Error|Disk full"});
}

// ---- Modulate

TEST_F(GeneratorTest, ModulateMultipliesBothChannelsByOneTone) {
    const Samples L = Noise(150000, 1);
    const Samples R = Noise(150000, 2);
    Document(L, R, 16, 40009);
    Select(501, 140500);
    const Samples Tone = LiteralSine(140000, 15000, 3, 480, 1000);
    Enter("3", "480");
    ExpectStep(Modulate, "Modulate", With(L, 500, LiteralModulate(Part(L, 500, 140000), Tone, 16)),
               With(R, 500, LiteralModulate(Part(R, 500, 140000), Tone, 16)));
    EXPECT_EQ(Progress.Values.back(), 1.0F);
}

TEST_F(GeneratorTest, ModulateKeepsToTheLeftChannelAndToEightBits) {
    const Samples L = Noise(3000, 1, 8);
    const Samples R = Noise(3000, 2, 8);
    Document(L, R, 8, 700);
    SelBoth = false;
    Enter("7", "7");
    ExpectStep(Modulate, "Modulate", LiteralModulate(L, LiteralSine(3000, 15000, 7, 7, 1000), 8),
               R);
}

TEST_F(GeneratorTest, TwoHertzAreATremoloThroughZeroThatTurnsThePhase) {
    Document(Samples(2000, 10000)); // two seconds
    Enter("2", "2", false);
    Modulate();
    const Samples Made = Left();
    for (std::size_t i = 0; i < Made.size(); ++i)
        ASSERT_NEAR(Made[i],
                    10000 * std::sin(2 * 3.14159265358979 * 2 * static_cast<double>(i) / 1000), 1.5)
            << i;
    EXPECT_EQ(Made[125], 10000);
    EXPECT_EQ(Made[375], -10000);
}

TEST_F(GeneratorTest, TheRightChannelAloneStaysAsItIsUnderAnUndoStep) {
    const Samples L = Noise(3000, 1);
    const Samples R = Noise(3000, 2);
    Document(L, R);
    Select(100, 200);
    SelBoth = false;
    SelSingle = 2;
    Enter("7", "7");
    ExpectStep(Modulate, "Modulate", L, R);
}

TEST_F(GeneratorTest, ModulateOfTwoSamplesIsSilence) {
    Document({5, 6, 7, 8});
    Select(2, 3);
    Enter("200", "1000");
    ExpectStep(Modulate, "Modulate", {5, 0, 0, 8});
}

// ---- All of them

TEST_F(GeneratorTest, EachAsksTheDiskForItsSamples) {
    Document(Samples(1000, 1), Samples(1000, 1));
    Select(1, 10);
    for (const auto& Command : {DrawSine, DrawNoise, Modulate}) {
        Enter("200", "300");
        SelBoth = true;
        EXPECT_EQ(Refused(Command), std::vector<std::int64_t>{40});
        Enter("200", "300");
        SelBoth = false;
        EXPECT_EQ(Refused(Command), std::vector<std::int64_t>{20});
    }
}

TEST_F(GeneratorTest, AFailureInTheMiddleIsToldUnderTheCommandsTitle) {
    Document(Samples(500000, 1), Samples(500000, 2));
    Progress.FailAt = 0.3F;
    Enter("200", "300");
    EXPECT_EQ(Unchanged(DrawSine), std::vector<std::string>{"Generate Sine Error|Disk full"});
    Enter("200", "300");
    EXPECT_EQ(Unchanged(Modulate), std::vector<std::string>{"Modulate Error|Disk full"});
}

} // namespace
} // namespace quoril::test
