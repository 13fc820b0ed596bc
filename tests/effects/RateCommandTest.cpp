// The sampling rate of the whole sound changed: samples, rate, what the user is asked and told.
#include "effects/FormatFixture.h"
#include "support/LargeFile.h"

#include <algorithm>
#include <random>

namespace quoril::test {

namespace {

constexpr std::int32_t Other = 10;

class RateCommandTest : public FormatTest {
  protected:
    using Texts = std::vector<std::string>;

    static std::string Title(std::int32_t Rate) { return std::to_string(Rate) + " Hz"; }
    std::function<void()> OtherRate(const std::string& Text) {
        return [this, Text] {
            Messages.AnswerInput(Text);
            FormatFrQ(Other);
        };
    }
    const std::string OtherQuestion = "Sampling rate|Enter other (not standard) sampling rate Hz";
    const std::string Invalid =
        "Change Sampling rate - failed|Invalid entry\n(Valid range - 1000 ~ 200000)";
};

// The first test: what is remembered lasts as long as the program.
TEST_F(RateCommandTest, TheQuestionForARateBeginsWithTheDocumentsAndThenWithTheLastEntry) {
    BeginNoise({2, 12345, 16}, 100);
    EXPECT_EQ(NoChange([] { FormatFrQ(Other); }), Texts{OtherQuestion});
    EXPECT_EQ(Messages.LastProposed(), "12345");
    EXPECT_EQ(NoChange(OtherRate("abc")), (Texts{OtherQuestion, "\"abc\" is not a number."}));
    EXPECT_EQ(NoChange(OtherRate("")), Texts{OtherQuestion});
    EXPECT_EQ(Messages.LastProposed(), "12345");
    ExpectChange(OtherRate("1500"), "1500 Hz", AtRate(Now(), 1500), {OtherQuestion});
    BeginNoise({1, 8000, 8}, 100);
    EXPECT_EQ(NoChange([] { FormatFrQ(Other); }), Texts{OtherQuestion});
    EXPECT_EQ(Messages.LastProposed(), "1500");
    // What was out of range was an entry as well.
    ExpectChange(OtherRate("500"), "500 Hz", AtRate(Now(), 500), {OtherQuestion, Invalid});
    FormatFrQ(Other);
    EXPECT_EQ(Messages.LastProposed(), "500");
}

TEST_F(RateCommandTest, EveryRateOfTheMenuComesOutOfEveryOther) {
    for (const std::int32_t Old : MenuRates)
        for (std::size_t Index = 0; Index < MenuRates.size(); ++Index) {
            const std::int32_t New = MenuRates.at(Index);
            if (New == Old)
                continue;
            BeginNoise({Index % 2 == 0 ? 2 : 1, Old, Index % 3 == 0 ? 8 : 16}, 2001, 601);
            ExpectChange([Index] { FormatFrQ(static_cast<std::int32_t>(Index)); }, Title(New),
                         AtRate(Now(), New), {RateQuestion});
            ASSERT_FALSE(HasFailure()) << Old << " to " << New;
        }
}

TEST_F(RateCommandTest, HalfTheRateHasHalfTheSamplesAndOneSilentOne) {
    BeginNoise({2, 44100, 16}, 1000);
    FormatFrQ(1);
    EXPECT_EQ(WaveStore->WavFmtFreq, 22050);
    EXPECT_EQ(WaveStore->WavWaveINos, 501);
    EXPECT_EQ(WaveStore->WaveNosR(), 501);
    EXPECT_EQ(Left().back(), 0);
    EXPECT_EQ(Right().back(), 0);
}

TEST_F(RateCommandTest, RandomRatesLengthsAndBlocksComeOutAsWrittenDown) {
    std::mt19937 Random(17);
    const auto Number = [&Random](std::int32_t From, std::int32_t To) {
        return std::uniform_int_distribution<std::int32_t>(From, To)(Random);
    };
    for (int Round = 0; Round < 300; ++Round) {
        const WaveFormat Format{Number(1, 2), Number(1000, 200000), Number(0, 1) == 0 ? 8 : 16};
        const std::int32_t Rate = Number(1000, 200000);
        BeginNoise(Format, Number(1, 3000), static_cast<std::size_t>(Number(7, 900)));
        if (Rate == Format.Freq)
            continue;
        ExpectChange(OtherRate(std::to_string(Rate)), Title(Rate), AtRate(Now(), Rate),
                     {OtherQuestion});
        ASSERT_FALSE(HasFailure()) << Format.Freq << " to " << Rate;
    }
}

TEST_F(RateCommandTest, FewSamplesComeOutAsWrittenDown) {
    for (std::int32_t Length = 1; Length <= 5; ++Length)
        for (const std::int32_t Rate : {500, 1000, 22050, 44101, 200000}) {
            BeginNoise({2, 44100, 16}, Length);
            PlainSound Expected = AtRate(Now(), Rate);
            OtherRate(std::to_string(Rate))();
            EXPECT_TRUE(Now() == Expected) << Length << " at " << Rate;
        }
    // None at all only take the rate.
    Begin({{2, 44100, 16}, {}});
    ExpectChange([] { FormatFrQ(0); }, "11025 Hz", {{2, 11025, 16}, {}}, {RateQuestion});
}

TEST_F(RateCommandTest, AnOpenedFileAndOneBeyondTheMemoryComeOutAsWrittenDown) {
    for (const std::int32_t Bits : {8, 16})
        for (const std::int32_t Channels : {1, 2}) {
            Open({Channels, 44100, Bits}, 70001);
            ExpectChange([] { FormatFrQ(8); }, "48000 Hz", AtRate(Now(), 48000), {RateQuestion});
            ExpectChange([] { FormatFrQ(3); }, "8000 Hz", AtRate(Now(), 8000), {RateQuestion});
        }
    MemoryBudget = 100000;
    BeginNoise({2, 22050, 16}, 200000, 30000);
    ExpectChange([] { FormatFrQ(2); }, "44100 Hz", AtRate(Now(), 44100), {RateQuestion});
}

TEST_F(RateCommandTest, ARateOutOfRangeIsToldAndTakenAllTheSame) {
    for (const std::int32_t Rate : {1, 500, 999, 200001, 300000}) {
        BeginNoise({2, 44100, 16}, 2000);
        ExpectChange(OtherRate(std::to_string(Rate)), Title(Rate), AtRate(Now(), Rate),
                     {OtherQuestion, Invalid});
    }
    for (const std::int32_t Rate : {1000, 200000}) {
        BeginNoise({2, 44100, 16}, 2000);
        ExpectChange(OtherRate(std::to_string(Rate)), Title(Rate), AtRate(Now(), Rate),
                     {OtherQuestion});
    }
    // A part of a hertz is rounded, and of a half the even side is taken.
    for (const auto& [Text, Rate] : {std::pair("999.5", 1000), std::pair("22050.5", 22050),
                                     std::pair(" 22051.5 ", 22052), std::pair("2.2e4", 22000)}) {
        BeginNoise({2, 44100, 16}, 2000);
        ExpectChange(OtherRate(Text), Title(Rate), AtRate(Now(), Rate), {OtherQuestion});
    }
}

TEST_F(RateCommandTest, WhatIsNoRateAtAllChangesNothing) {
    BeginNoise({2, 44100, 16}, 100);
    for (const auto& [Text, Told] :
         {std::pair<std::string, std::string>("0",
                                              "There is no sound with a sampling rate of 0 Hz."),
          {"0.4", "There is no sound with a sampling rate of 0 Hz."},
          {"-44100", "There is no sound with a sampling rate of -44100 Hz."},
          {"4e9", "Overflow"},
          {"1e300", "Overflow"}})
        EXPECT_EQ(NoChange(OtherRate(Text)), (Texts{OtherQuestion, Invalid, Told})) << Text;
    for (const char* Text : {"44100 Hz", "44,1", "x", "1e999"})
        EXPECT_EQ(NoChange(OtherRate(Text)),
                  (Texts{OtherQuestion, "\"" + std::string(Text) + "\" is not a number."}));
}

TEST_F(RateCommandTest, OnlyYesChangesTheRate) {
    BeginNoise({2, 44100, 16}, 100);
    Messages.Answer(MsgBoxAnswer::No);
    EXPECT_EQ(NoChange([] { FormatFrQ(1); }), Texts{RateQuestion});
    FormatFrQ(1);
    ASSERT_EQ(Messages.Requests.size(), 1U);
    EXPECT_EQ(Messages.Requests[0].Buttons, MsgBoxButtons::YesNo);
    EXPECT_EQ(WaveStore->WavFmtFreq, 22050);
}

TEST_F(RateCommandTest, TheRateInForceLeavesNoStepAndBringsTheMenuInLine) {
    BeginNoise({2, 44100, 16}, 100);
    const auto InLine = [this](const std::function<void()>& Command, const Texts& Questions) {
        Menu.Shown.clear();
        EXPECT_EQ(NoChange(Command), Questions);
        EXPECT_EQ(Menu.Shown.size(), 1U);
    };
    InLine([] { FormatFrQ(2); }, {}); // the entry is ticked: nothing is asked
    InLine(OtherRate("44100"), {OtherQuestion});
    CurrentFormat.Freq = 8000; // another entry is ticked than the document would have
    InLine([] { FormatFrQ(2); }, {RateQuestion});
    // The ticked one changes the document without a question.
    FormatFrQ(3);
    EXPECT_EQ(Messages.TakeTexts(), Texts{});
    EXPECT_EQ(WaveStore->WavFmtFreq, 8000);
}

TEST_F(RateCommandTest, TheCustomEntryStandsForTheRateThatHasNoOther) {
    BeginNoise({2, 44100, 16}, 100);
    Menu.Shown.clear();
    EXPECT_EQ(NoChange([] { FormatFrQ(9); }), Texts{});
    EXPECT_TRUE(Menu.Shown.empty()); // it stands for none
    OtherRate("5000")();
    EXPECT_EQ(CustomRate(), 5000);
    (void)Messages.TakeTexts();
    const std::int32_t Records = WaveStore->UndoCount();
    FormatFrQ(9);
    EXPECT_EQ(Messages.TakeTexts(), Texts{});
    EXPECT_EQ(WaveStore->UndoCount(), Records);
    WaveStore->Undo();
    EXPECT_EQ(CustomRate(), 0);
}

TEST_F(RateCommandTest, TheDiskIsAskedForTheNewSamples) {
    using Bytes = std::vector<std::int64_t>;
    BeginNoise({2, 44100, 16}, 1001);
    EXPECT_EQ(AskedOfTheDisk([] { FormatFrQ(1); }, {RateQuestion}), Bytes{2002});
    EXPECT_EQ(AskedOfTheDisk([] { FormatFrQ(8); }, {RateQuestion}), Bytes{4358}); // 4358.095
    BeginNoise({1, 44100, 8}, 1001);
    EXPECT_EQ(AskedOfTheDisk([] { FormatFrQ(1); }, {RateQuestion}), Bytes{1001});
    EXPECT_EQ(AskedOfTheDisk([] { FormatFrQ(3); }, {RateQuestion}), Bytes{363}); // 363.17
}

TEST_F(RateCommandTest, MoreSamplesThanThereCanBeAreRefusedBeforeTheWork) {
    Begin({{1, 1, 16}, {Samples{1}, {}}});
    const auto Long = SilentCarrier(20000000);
    WaveStore->WaveDataInsert(1, 1, Long.get(), nullptr, "Fill", true);
    WaveStore->UndoInfoReset();
    WaveChanged = false;
    Progress.BarColor = 0;
    for (const char* Text : {"200000", "2147483647"}) {
        Messages.AnswerInput(Text);
        FormatFrQ(Other);
        EXPECT_TRUE(Messages.TakeTexts().back().starts_with("The document and this command"));
        EXPECT_EQ(WaveStore->WavFmtFreq, 1);
        EXPECT_EQ(WaveStore->UndoCount(), 0);
        EXPECT_NE(Progress.BarColor, 0x808000U); // nothing was computed
    }
}

TEST_F(RateCommandTest, AFailureInTheMiddleLeavesSamplesAndRate) {
    BeginNoise({2, 44100, 16}, 100000, 30000);
    for (const float Where : {0.1F, 0.5F, 1.0F}) {
        Progress.FailAt = Where;
        Progress.BarColor = 0;
        EXPECT_EQ(NoChange([] { FormatFrQ(8); }), (Texts{RateQuestion, "Disk full"}));
    }
}

TEST_F(RateCommandTest, AFullDiskLeavesSamplesAndRate) {
    for (const bool WithUndo : {true, false}) {
        UndoOptionON = WithUndo;
        BeginNoise({2, 44100, 16}, 9000, 1000);
        EXPECT_GE(FailuresThatKeepTheFormat([] { FormatFrQ(8); }), 1);
        BeginNoise({1, 8000, 8}, 9000, 1000);
        EXPECT_GE(FailuresThatKeepTheFormat([] { FormatFrQ(8); }), 1);
    }
}

TEST_F(RateCommandTest, SelectionAndViewStayAtTheirSamplesAndUndoBringsThemBack) {
    BeginNoise({2, 44100, 16}, 1000);
    Select(600, 900);
    ViewFrom = 700;
    ViewTotal = 300;
    FormatFrQ(1);
    EXPECT_EQ(SelStart, 600);
    EXPECT_EQ(SelEnd, 900);
    EXPECT_EQ(ViewFrom, 700);
    // As the window does with what lies behind the end.
    Select(0, 0);
    ViewFrom = 1;
    ViewTotal = 501;
    WaveStore->Undo();
    EXPECT_EQ(SelStart, 600);
    EXPECT_EQ(SelEnd, 900);
    EXPECT_EQ(ViewFrom, 700);
    EXPECT_EQ(ViewTotal, 300);
}

TEST_F(RateCommandTest, TheBarMovesEvery10000SamplesOfTheOldSound) {
    for (const std::int32_t Channels : {1, 2}) {
        BeginNoise({Channels, 44100, 16}, 20000, 10000);
        Progress.Values.clear();
        FormatFrQ(1);
        EXPECT_EQ(Progress.Values, (std::vector<float>{0, 0.5F, 1, 1}));
    }
}

TEST_F(RateCommandTest, ALongFileIsReadOnceAndUndoReadsNothing) {
    constexpr std::int32_t Frames = 20000000;
    MemoryBudget = 100000000; // the result has 40 MB
    MakeLongWav(Session.Path("long.wav"), Frames);
    OpenAsDocument(Session.Path("long.wav"));
    Established({2, 44100, 16});
    std::int64_t Before = BytesReadSoFar();
    const std::int64_t Written = BytesWrittenSoFar();
    FormatFrQ(1);
    EXPECT_EQ(WaveStore->WavWaveINos, Frames / 2 + 1);
    EXPECT_LE(BytesReadSoFar() - Before, std::int64_t{Frames} * 4 * 102 / 100);
    EXPECT_LT(BytesWrittenSoFar() - Written, 4096);
    Before = BytesReadSoFar();
    WaveStore->Undo();
    EXPECT_LT(BytesReadSoFar() - Before, 4096);
    EXPECT_EQ(FormatNow(), (WaveFormat{2, 44100, 16}));
}

} // namespace

} // namespace quoril::test
