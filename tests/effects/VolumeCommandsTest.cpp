// Changing and optimising the volume: what comes out, what the user reads, and undo.
#include "effects/VolumeCommands.h"

#include "effects/EffectFixture.h"

#include <cmath>
#include <random>

namespace quoril::test {

namespace {

class VolumeTest : public EffectTest {
  protected:
    static Samples Noise(std::size_t Count, std::int32_t Bits = 16, unsigned Seed = 1) {
        std::mt19937 Random(Seed);
        Samples Made(Count);
        for (std::int16_t& Value : Made)
            Value = Bits == 8
                        ? static_cast<std::int16_t>(static_cast<std::int32_t>(Random() % 256) - 128)
                        : static_cast<std::int16_t>(Random());
        return Made;
    }
    static void Enter(ScriptedMessages& Messages, void (*Command)(std::int32_t),
                      const std::string& Text) {
        Messages.AnswerInput(Text);
        Command(0);
    }
    /// What the input box asks, as the recorder writes it down.
    static std::string Question(const char* Of) {
        return std::string("Enter new volume as percentage of ") + Of +
               " Volume.\n\nYou can enter two values (Start and End values) using ~ to seperate, "
               "(i.e.: 120~10)";
    }
    const std::string AskAdjust = Question("current");
    const std::string AskOptimize = Question("maximum");
    const std::string Invalid =
        "Adjust Volume Failed|Invalid Entry\nEnter values between 0 to 2000";
};

TEST_F(VolumeTest, DoublingClipsAtBothDepths) {
    Document({20000, -20000, 100, 16384, -16384});
    ExpectStep([] { AdjustVolume(11); }, "Chg. Vol. 200%", {32767, -32768, 200, 32767, -32768});
    Document({100, -100, 63, 64, -64}, {}, 8);
    ExpectStep([] { AdjustVolume(11); }, "Chg. Vol. 200%", {127, -128, 126, 127, -128});
}

TEST_F(VolumeTest, EveryPresetHasItsNameAndItsFactor) {
    // 10000 and 7 times the percentage, the halves to even: worked out by hand.
    struct Row {
        std::int32_t Mode;
        const char* Percent;
        Samples Out;
    };
    const std::vector<Row> Rows = {{11, "200", {20000, 14, -14}}, {12, "160", {16000, 11, -11}},
                                   {13, "120", {12000, 8, -8}},   {14, "85", {8500, 6, -6}},
                                   {15, "70", {7000, 5, -5}},     {16, "50", {5000, 4, -4}},
                                   {17, "25", {2500, 2, -2}}};
    for (const Row& Each : Rows) {
        Document({10000, 7, -7});
        ExpectStep([&Each] { AdjustVolume(Each.Mode); },
                   std::string("Chg. Vol. ") + Each.Percent + "%", Each.Out);
        // The peak of 10000 comes to the percentage of 32767 in place of 10000.
        const double Level = std::stod(Each.Percent) / 100 * 32767;
        const auto Peak = static_cast<std::int16_t>(std::min(std::nearbyint(Level), 32767.0));
        const auto Low = static_cast<std::int16_t>(std::nearbyint(7 * Level / 10000));
        ExpectStep([&Each] { OptimizeVolume(Each.Mode); },
                   std::string("Opti.Vol.") + Each.Percent + "%",
                   {Peak, Low, static_cast<std::int16_t>(-Low)});
    }
}

TEST_F(VolumeTest, AnUnknownModeDoesNothing) {
    Document({1, 2, 3});
    for (const std::int32_t Mode : {-1, 1, 2, 3, 6, 10, 18, 20, 22})
        EXPECT_TRUE(Unchanged([Mode] { AdjustVolume(Mode); }).empty());
    for (const std::int32_t Mode : {-1, 1, 2, 4, 5, 10, 18, 20, 22})
        EXPECT_TRUE(Unchanged([Mode] { OptimizeVolume(Mode); }).empty());
}

TEST_F(VolumeTest, AFadeCoversItsStartAndStopsAStepShortOfItsEnd) {
    // Four samples of 1000: factors 0, 1/4, 2/4, 3/4, and 1, 3/4, 2/4, 1/4.
    Document({1000, 1000, 1000, 1000});
    ExpectStep([] { AdjustVolume(5); }, "Fade In", {0, 250, 500, 750});
    ExpectStep([] { AdjustVolume(4); }, "Fade Out", {1000, 750, 500, 250});
}

TEST_F(VolumeTest, AFadeAcrossBordersOfBlocksIsExact) {
    // A length of 2^18: every factor is i / 2^18, and whole numbers tell the result.
    constexpr std::int64_t Length = 262144;
    const Samples In = Noise(Length);
    Document(In, {}, 16, 40013);
    Samples FadeIn;
    Samples FadeOut;
    const auto Part = [](std::int64_t Product) {
        std::int64_t Floor = Product >> 18;
        const std::int64_t Rest = Product - Floor * Length;
        if (Rest > Length / 2 || (Rest == Length / 2 && Floor % 2 != 0))
            ++Floor;
        return static_cast<std::int16_t>(Floor);
    };
    for (std::int64_t i = 0; i < Length; ++i) {
        const std::int64_t Sample = In[static_cast<std::size_t>(i)];
        FadeIn.push_back(Part(Sample * i));
        FadeOut.push_back(Part(Sample * (Length - i)));
    }
    ExpectStep([] { AdjustVolume(5); }, "Fade In", FadeIn);
    ExpectStep([] { AdjustVolume(4); }, "Fade Out", FadeOut);
}

TEST_F(VolumeTest, TwoEnteredValuesMakeARamp) {
    // 1.2 to 0.1 over 1000 samples: the step is -0.0011, the last factor 0.1011.
    Document(Samples(1000, 10000));
    Messages.AnswerInput("120~10");
    AdjustVolume(0);
    EXPECT_EQ(Messages.TakeTexts(), std::vector<std::string>{AskAdjust});
    const Samples Out = Left();
    EXPECT_EQ(Out.front(), 12000);
    EXPECT_EQ(Out[1], 11989);
    EXPECT_EQ(Out[500], 6500);
    EXPECT_EQ(Out.back(), 1011);
    EXPECT_EQ(
        WaveStore->UndoRecords().at(static_cast<std::size_t>(WaveStore->UndoCount())).UndoName,
        "Adj. Vol. Enter");
}

TEST_F(VolumeTest, TheFactorsAreSingleAndTheProductIsDouble) {
    // 110 % is 1.10000002384185791015625 in single precision. 30 x 1.1 then is above 33 and 15 x
    // 1.1 above 16.5, where exact tenths would give a tie to even: 16.
    Document({15, -15, 25, 5});
    Messages.AnswerInput("110");
    AdjustVolume(0);
    EXPECT_EQ(Left(), (Samples{17, -17, 28, 6}));
}

TEST_F(VolumeTest, SilenceMakesZerosAndCanBeUndone) {
    Document({1, -32768, 32767}, {5, 6, 7});
    ExpectStep([] { AdjustVolume(21); }, "Silence", {0, 0, 0}, {0, 0, 0});
}

TEST_F(VolumeTest, OnlyTheRangeAndTheChannelInWorkChange) {
    Document({100, 100, 100, 100}, {200, 200, 200, 200});
    Select(2, 3);
    ExpectStep([] { AdjustVolume(16); }, "Chg. Vol. 50%", {100, 50, 50, 100}, {200, 100, 100, 200});
    SelBoth = false;
    SelSingle = 2;
    ExpectStep([] { AdjustVolume(16); }, "Chg. Vol. 50%", {100, 100, 100, 100},
               {200, 100, 100, 200});
}

TEST_F(VolumeTest, MaximizeBringsEachChannelToTheTop) {
    Document({100, -200, 50}, {-400, 10, 0});
    // 200 -> 32767, so 100 -> 16383.5 -> 16384 (even); 400 -> 32767, so 10 -> 819.175.
    ExpectStep([] { OptimizeVolume(3); }, "Maximize", {16384, -32767, 8192}, {-32767, 819, 0});
    Document({10, -5}, {}, 8);
    // 10 -> 127; 12.7 is 12.69999980926513671875 in single precision, so -5 -> -63.499999
    ExpectStep([] { OptimizeVolume(21); }, "Opti.Vol.100%", {127, -63});
}

TEST_F(VolumeTest, OptimizeLeavesThePeakAtTheTop) {
    Document({-32768, 32767, 0});
    ExpectStep([] { OptimizeVolume(21); }, "Opti.Vol.100%", {-32767, 32766, 0});
}

TEST_F(VolumeTest, OptimizeAtHalfBrings16000ToHalfOfTheTop) {
    Document({16000, -16000, 8000});
    // The level is 16383.5. The factor 1.02396875 is 1.0239686965942383 in single precision, which
    // puts the product at 16383.49915.
    ExpectStep([] { OptimizeVolume(16); }, "Opti.Vol.50%", {16383, -16383, 8192});
}

TEST_F(VolumeTest, OptimizeKeepsSilenceSilent) {
    Document(Samples(10), {0, 0, 0, 1, 0, 0, 0, 0, 0, 0});
    ExpectStep([] { OptimizeVolume(3); }, "Maximize", Samples(10),
               {0, 0, 0, 32767, 0, 0, 0, 0, 0, 0});
}

TEST_F(VolumeTest, OptimizeWithTwoEnteredValuesIsARamp) {
    Document({100, 100, 100, 100});
    Messages.AnswerInput("100~0");
    OptimizeVolume(0);
    EXPECT_EQ(Messages.TakeTexts(), std::vector<std::string>{AskOptimize});
    // 32767 x 1, 3/4, 1/2, 1/4; 16383.5 comes from a single 327.67 and a double step
    EXPECT_EQ(Left()[0], 32767);
    EXPECT_EQ(Left()[1], 24575);
    EXPECT_NEAR(Left()[2], 16383.5, 0.5);
    EXPECT_EQ(Left()[3], 8192);
    WaveStore->Undo();
    EXPECT_EQ(Left(), (Samples{100, 100, 100, 100}));
}

TEST_F(VolumeTest, TheBorderOfTheAcceptedNumbersIs2000) {
    Document({1, -1});
    Enter(Messages, AdjustVolume, "2000");
    EXPECT_EQ(Left(), (Samples{20, -20}));
    WaveStore->Undo();
    WaveChanged = false;
    (void)Messages.TakeTexts();
    for (const char* Text : {"2001", "-1", "100~2001", "-0.01~5", "1e300", "2000.001"})
        EXPECT_EQ(Unchanged([&] { Enter(Messages, AdjustVolume, Text); }),
                  (std::vector<std::string>{AskAdjust, Invalid}))
            << Text;
    EXPECT_EQ(Unchanged([&] { Enter(Messages, OptimizeVolume, "2001"); }),
              (std::vector<std::string>{AskOptimize, Invalid}));
}

TEST_F(VolumeTest, TextThatIsNoNumberEndsWithTheReason) {
    Document({1, -1});
    const std::vector<std::pair<std::string, std::string>> Rows = {
        {"abc", "\"abc\" is not a number."},   {"120~", "\"\" is not a number."},
        {"~", "\"\" is not a number."},        {"~50", "\"\" is not a number."},
        {"12x", "\"12x\" is not a number."},   {"1e999", "\"1e999\" is not a number."},
        {"nan", "\"nan\" is not a number."},   {"inf", "\"inf\" is not a number."},
        {"0x10", "\"0x10\" is not a number."}, {"1,5", "\"1,5\" is not a number."},
        {"--1", "\"--1\" is not a number."},   {"10 20", "\"10 20\" is not a number."},
        {" ", "\" \" is not a number."},       {"\xC3\xA9", "\"\xC3\xA9\" is not a number."},
        {"%s%n", "\"%s%n\" is not a number."}};
    for (const auto& [Text, Reason] : Rows) {
        EXPECT_EQ(Unchanged([&, &Entry = Text] { Enter(Messages, AdjustVolume, Entry); }),
                  (std::vector<std::string>{AskAdjust, Reason}));
        EXPECT_EQ(Unchanged([&, &Entry = Text] { Enter(Messages, OptimizeVolume, Entry); }),
                  (std::vector<std::string>{AskOptimize, Reason}));
    }
    EXPECT_EQ(Unchanged([&] { Enter(Messages, AdjustVolume, std::string(1000000, 'x')); }),
              (std::vector<std::string>{AskAdjust, "The entry is not a number."}));
}

TEST_F(VolumeTest, ElementsAfterTheSecondAreNotLookedAt) {
    Document({100, 100});
    Enter(Messages, AdjustVolume, " 50 ~\t+50~abc~");
    EXPECT_EQ(Left(), (Samples{50, 50}));
}

TEST_F(VolumeTest, AnEmptyAnswerAndCancelEndTheCommand) {
    Document({1, -1});
    EXPECT_EQ(Unchanged([&] { Enter(Messages, AdjustVolume, ""); }),
              std::vector<std::string>{AskAdjust});
    EXPECT_EQ(Unchanged([] { OptimizeVolume(0); }), std::vector<std::string>{AskOptimize});
}

TEST_F(VolumeTest, EachBoxBeginsWithItsLastAcceptedText) {
    Document({100, 100});
    EXPECT_EQ(Messages.LastProposed(), "");
    AdjustVolume(0);
    EXPECT_EQ(Messages.LastProposed(), "100");
    Enter(Messages, AdjustVolume, "2001");
    AdjustVolume(0);
    EXPECT_EQ(Messages.LastProposed(), "100");
    Enter(Messages, AdjustVolume, "50~60");
    AdjustVolume(0);
    EXPECT_EQ(Messages.LastProposed(), "50~60");
    OptimizeVolume(0);
    EXPECT_EQ(Messages.LastProposed(), "100");
    Enter(Messages, OptimizeVolume, "70");
    OptimizeVolume(0);
    EXPECT_EQ(Messages.LastProposed(), "70");
}

TEST_F(VolumeTest, WithoutASelectionAndAnAnswerNothingHappens) {
    Document({1, 2, 3});
    Select(0, 0);
    EXPECT_TRUE(Unchanged([] { AdjustVolume(16); }).empty());
}

TEST_F(VolumeTest, WithoutDiskSpaceTheCommandEndsBeforeItsQuestion) {
    Document(Samples(1000, 1), Samples(1000, 1));
    EXPECT_EQ(Refused([] { AdjustVolume(0); }), std::vector<std::int64_t>{4000});
    Select(1, 10);
    SelBoth = false;
    EXPECT_EQ(Refused([] { OptimizeVolume(3); }), std::vector<std::int64_t>{20});
}

TEST_F(VolumeTest, AFailureInTheMiddleLeavesTheDocumentAsItWas) {
    Document(Noise(250000), Noise(250000, 16, 2), 16, 60000);
    for (const float Where : {0.1F, 0.5F, 0.9F}) {
        Progress.FailAt = Where;
        Progress.BarColor = 0;
        EXPECT_EQ(Unchanged([] { AdjustVolume(16); }), std::vector<std::string>{"Disk full"});
        Progress.BarColor = 0;
        EXPECT_EQ(Unchanged([] { OptimizeVolume(3); }), std::vector<std::string>{"Disk full"});
    }
}

TEST_F(VolumeTest, ARangeLargerThanMemoryComesOutTheSame) {
    MemoryBudget = 100000;
    const Samples In = Noise(500000);
    Document(In, {}, 16, 30000);
    Samples Half;
    for (const std::int16_t Value : In)
        Half.push_back(static_cast<std::int16_t>(std::nearbyint(Value / 2.0)));
    ExpectStep([] { AdjustVolume(16); }, "Chg. Vol. 50%", Half);
}

TEST_F(VolumeTest, TheBarMovesEvery100000SamplesThroughBothChannelsAtOnce) {
    Document(Samples(200000, 1), Samples(200000, 1));
    AdjustVolume(16);
    EXPECT_EQ(Progress.Values, (std::vector<float>{0, 0.5F, 1, 1}));
    Progress.Values.clear();
    Progress.BarColor = 0;
    OptimizeVolume(3);
    EXPECT_EQ(Progress.Values, (std::vector<float>{0, 0.25F, 0.5F, 0.5F, 0.75F, 1, 1}));
    SelBoth = false;
    Progress.Values.clear();
    Progress.BarColor = 0;
    OptimizeVolume(3);
    EXPECT_EQ(Progress.Values, (std::vector<float>{0, 2.5F, 5, 5, 7.5F, 10, 10}));
}

} // namespace

} // namespace quoril::test
