// Rearranging samples: what comes out, what the user reads, and undo.
#include "effects/TransformCommands.h"

#include "effects/EffectFixture.h"

#include <algorithm>
#include <random>

namespace quoril::test {

namespace {

class TransformTest : public EffectTest {
  protected:
    static Samples Noise(std::size_t Count) {
        std::mt19937 Random(3);
        Samples Made(Count);
        for (std::int16_t& Value : Made)
            Value = static_cast<std::int16_t>(Random());
        return Made;
    }
    void MoveBy(const std::string& Distance) {
        Duration.Answer = {true, Distance};
        WaveMoveForwardBack();
    }
    const std::string AskHeight = "Enter Height percentage to move up or down.\n(-100 to 100)";
    const std::string InvalidHeight = "Move Up/Down Failed|Invalid Entry";
    const std::string Beyond = "Failed to move|Unable to move beyond the current wave size.\n"
                               "Add space by inserting silence and try again.";
};

TEST_F(TransformTest, ReversePutsTheLastSampleFirstAcrossBordersOfBlocks) {
    const Samples In = Noise(200001);
    Samples Turned = In;
    std::reverse(Turned.begin(), Turned.end());
    Document(In, Turned, 16, 30011);
    ExpectStep(WaveReverse, "Reverse", Turned, In);
    WaveReverse();
    WaveReverse();
    EXPECT_EQ(Left(), In);
    EXPECT_EQ(Right(), Turned);
}

TEST_F(TransformTest, ReverseKeepsToTheRangeAndTheChannel) {
    Document({1, 2, 3, 4, 5}, {6, 7, 8, 9, 10}, 16, 2);
    Select(2, 4);
    ExpectStep(WaveReverse, "Reverse", {1, 4, 3, 2, 5}, {6, 9, 8, 7, 10});
    SelBoth = false;
    SelSingle = 2;
    ExpectStep(WaveReverse, "Reverse", {1, 2, 3, 4, 5}, {6, 9, 8, 7, 10});
}

TEST_F(TransformTest, InvertHasItsOneAsymmetryAtTheLowestValue) {
    Samples In;
    Samples Out;
    for (std::int32_t Value = -32768; Value <= 32767; ++Value) {
        In.push_back(static_cast<std::int16_t>(Value));
        Out.push_back(static_cast<std::int16_t>(Value == -32768 ? 32767 : -Value));
    }
    Document(In);
    ExpectStep(WaveInvert, "Invert", Out);
    WaveInvert();
    WaveInvert();
    EXPECT_EQ(Left().front(), -32767);
    EXPECT_TRUE(std::equal(In.begin() + 1, In.end(), Left().begin() + 1));
    Document({-128, 127, 0, 5}, {}, 8);
    ExpectStep(WaveInvert, "Invert", {127, -127, 0, -5});
}

TEST_F(TransformTest, MoveUpAddsAPartOfTheHeightAndClips) {
    Document({-32768, -1, 0, 1, 32767});
    Messages.AnswerInput("100");
    WaveMoveUpDown();
    EXPECT_EQ(Messages.TakeTexts(), std::vector<std::string>{AskHeight});
    EXPECT_EQ(Left(), (Samples{-1, 32766, 32767, 32767, 32767}));
    EXPECT_EQ(WaveStore->UndoRecords().back().UndoName, "Move Up");
    WaveStore->Undo();
    // -50 % is -16383.5, to even -16384
    Messages.AnswerInput("-50");
    WaveMoveUpDown();
    EXPECT_EQ(Left(), (Samples{-32768, -16385, -16384, -16383, 16383}));
    EXPECT_EQ(WaveStore->UndoRecords().back().UndoName, "Move Down");
    WaveStore->Undo();
    EXPECT_EQ(Left(), (Samples{-32768, -1, 0, 1, 32767}));
    // 20 % of 127 is 25.4
    Document({-128, 0, 120}, {}, 8);
    Messages.AnswerInput("20");
    WaveMoveUpDown();
    EXPECT_EQ(Left(), (Samples{-103, 25, 127}));
}

TEST_F(TransformTest, AHeightOutOfRangeOrNoNumberIsInvalid) {
    Document({1, 2});
    for (const char* Text : {"0", "-0", "100.01", "-101", "abc", "1e999", "nan", " ", "5 5", "20%"})
        EXPECT_EQ(Unchanged([&] {
                      Messages.AnswerInput(Text);
                      WaveMoveUpDown();
                  }),
                  (std::vector<std::string>{AskHeight, InvalidHeight}))
            << Text;
    EXPECT_EQ(Messages.LastProposed(), "20");
    EXPECT_EQ(Unchanged([&] {
                  Messages.AnswerInput("");
                  WaveMoveUpDown();
              }),
              std::vector<std::string>{AskHeight});
    EXPECT_EQ(Unchanged(WaveMoveUpDown), std::vector<std::string>{AskHeight});
    Messages.AnswerInput("-3.5");
    WaveMoveUpDown();
    WaveMoveUpDown();
    EXPECT_EQ(Messages.LastProposed(), "-3.5");
}

TEST_F(TransformTest, AMovedRangeLeavesSilenceAndOverwritesWhatItMeets) {
    Document({1, 2, 3, 4, 5, 6, 7, 8}, {11, 12, 13, 14, 15, 16, 17, 18}, 16, 3);
    Select(2, 4);
    ExpectStep([this] { MoveBy("3"); }, "Move Forward", {1, 0, 0, 0, 2, 3, 4, 8},
               {11, 0, 0, 0, 12, 13, 14, 18});
    ExpectStep([this] { MoveBy("1"); }, "Move Forward", {1, 0, 2, 3, 4, 6, 7, 8},
               {11, 0, 12, 13, 14, 16, 17, 18});
    ExpectStep([this] { MoveBy("-1"); }, "Move Back", {2, 3, 4, 0, 5, 6, 7, 8},
               {12, 13, 14, 0, 15, 16, 17, 18});
    SelBoth = false;
    ExpectStep([this] { MoveBy("-1"); }, "Move Back", {2, 3, 4, 0, 5, 6, 7, 8},
               {11, 12, 13, 14, 15, 16, 17, 18});
}

TEST_F(TransformTest, ARangeCanBeMovedToTheLastSampleAndThenMakesTheDocumentLonger) {
    Document({1, 2, 3, 4, 5});
    Select(1, 3);
    ExpectStep([this] { MoveBy("4"); }, "Move Forward", {0, 0, 0, 4, 1, 2, 3});
    // In one channel, the other one is filled up with silence.
    Document({1, 2, 3, 4, 5}, {6, 7, 8, 9, 10});
    Select(1, 3);
    SelBoth = false;
    ExpectStep([this] { MoveBy("4"); }, "Move Forward", {0, 0, 0, 4, 1, 2, 3},
               {6, 7, 8, 9, 10, 0, 0});
}

TEST_F(TransformTest, ARangeCanNotBeMovedOutOfTheDocument) {
    Document({1, 2, 3, 4, 5});
    Select(2, 3);
    for (const char* Distance : {"4", "-2", "2147483647", "-2147483648"})
        EXPECT_EQ(Unchanged([&] { MoveBy(Distance); }), std::vector<std::string>{Beyond})
            << Distance;
    EXPECT_EQ(Unchanged([&] { MoveBy("99999999999"); }),
              std::vector<std::string>{"Move Forward/Back Error|Overflow"});
    for (const char* Nothing : {"0", "", "abc", "0.4"})
        EXPECT_TRUE(Unchanged([&] { MoveBy(Nothing); }).empty()) << Nothing;
    Duration.Answer = {false, "1"};
    EXPECT_TRUE(Unchanged(WaveMoveForwardBack).empty());
}

TEST_F(TransformTest, TheDistanceIsAskedForWithTheDocumentAndTheLastOne) {
    Document(Samples(3000, 1));
    Select(2, 3);
    Duration.Answer = {true, "1500"};
    WaveMoveForwardBack();
    WaveMoveForwardBack();
    const EntDurRequest& First = Duration.Requests.at(0);
    EXPECT_EQ(First.Caption, " Enter distance to move");
    EXPECT_EQ(First.Prompt, "(+ to move right, - to move left)");
    EXPECT_EQ(First.CurSizeSmp, "3000");
    EXPECT_EQ(First.EnterSmp, "0");
    EXPECT_EQ(Duration.Requests.at(1).EnterSmp, "1500");
}

TEST_F(TransformTest, InterchangeSwapsTheChannels) {
    Document({1, 2, 3}, {4, 5, 6});
    ExpectStep(InterchangeChannels, "Interchange Left-Right", {4, 5, 6}, {1, 2, 3});
    Select(2, 2);
    Select(2, 3);
    ExpectStep(InterchangeChannels, "Interchange Left-Right", {1, 5, 6}, {4, 2, 3});
}

TEST_F(TransformTest, InterchangeOfOneChannelTakesTheEmptyCarrierOfTheOther) {
    Document({1, 2, 3}, {4, 5, 6});
    SelBoth = false;
    InterchangeChannels();
    EXPECT_TRUE(Messages.Texts().empty());
    EXPECT_EQ(Left(), (Samples{1, 2, 3}));
    EXPECT_EQ(Right(), (Samples{4, 5, 6}));
    ExpectQuiet();
}

TEST_F(TransformTest, InterchangeDoesNothingInAMonoDocument) {
    Document({1, 2, 3});
    EXPECT_TRUE(Unchanged(InterchangeChannels).empty());
    EXPECT_EQ(View.Redraws, 0);
}

TEST_F(TransformTest, EachCommandAsksTheDiskForWhatItNeeds) {
    Document(Samples(1000, 1), Samples(1000, 1));
    Duration.Answer = {true, "1"};
    EXPECT_EQ(Refused(WaveReverse), std::vector<std::int64_t>{4000});
    EXPECT_EQ(Refused(WaveInvert), std::vector<std::int64_t>{4000});
    EXPECT_EQ(Refused(WaveMoveUpDown), std::vector<std::int64_t>{4000});
    EXPECT_EQ(Refused(InterchangeChannels), std::vector<std::int64_t>{0});
    Select(1, 10);
    EXPECT_EQ(Refused(WaveMoveForwardBack), std::vector<std::int64_t>{80});
}

TEST_F(TransformTest, AFailureInTheMiddleLeavesTheDocumentAsItWas) {
    Document(Noise(100000), Noise(100000), 16, 30000);
    Progress.FailAt = 0.6F;
    EXPECT_EQ(Unchanged(WaveReverse), std::vector<std::string>{"Reverse Error|Disk full"});
    Progress.BarColor = 0;
    EXPECT_EQ(Unchanged(WaveInvert), std::vector<std::string>{"Invert Error|Disk full"});
    Progress.BarColor = 0;
    Messages.AnswerInput("5");
    EXPECT_EQ(Unchanged(WaveMoveUpDown).back(), "Move Up Error|Disk full");
}

} // namespace

} // namespace quoril::test
