// A clip inserted a number of times at once.
#include "edit/CopyPasteFixture.h"

#include <chrono>

namespace quoril::test {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using MultiInsert = CopyPasteFixture;

TEST_F(MultiInsert, MultiInsertAsksHowOftenAndIsOneUndoStep) {
    Clip({10, 20});
    Document({1, 2});
    Messages.AnswerInput("3");
    PasteAt(PasteMultiInsert, 2);
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("Multi-Paste Insert|Enter no of times for Multi-paste.\nWave found in "
                            "clipboard is 00, 2 samples"));
    EXPECT_THAT(Left(), ElementsAre(1, 10, 20, 10, 20, 10, 20, 2));
    EXPECT_EQ(WaveStore->UndoRecords().back().UndoName, "Multi-Paste Insert");
    EXPECT_EQ(Commands.MultiPasteTimes, 3);
    WaveStore->Undo();
    EXPECT_THAT(Left(), ElementsAre(1, 2));
}

TEST_F(MultiInsert, MultiInsertTakes1To10000AndLeadingNumbers) {
    Clip({10});
    Document({1});
    for (const char* Text : {"0", "10001", "-3", "abc"}) {
        Messages.AnswerInput(Text);
        PasteAt(PasteMultiInsert, 1);
        EXPECT_EQ(Messages.TakeTexts().back(),
                  "No of times not valid|Invalid entry Enter between 1 to 10000")
            << Text;
        EXPECT_EQ(Left().size(), 1U);
    }
    Messages.AnswerInput("3x");
    PasteAt(PasteMultiInsert, 1);
    EXPECT_EQ(Left().size(), 4U);
    Messages.AnswerInput("10000");
    PasteAt(PasteMultiInsert, 1);
    EXPECT_EQ(Left().size(), 10004U);
}

TEST_F(MultiInsert, ACancelledMultiInsertLeavesEverything) {
    Clip({10});
    Document({1});
    Commands.MultiPasteTimes = 7;
    PasteAt(PasteMultiInsert, 1);
    EXPECT_THAT(Left(), ElementsAre(1));
    EXPECT_EQ(Commands.MultiPasteTimes, 7);
    Messages.AnswerInput("");
    PasteAt(PasteMultiInsert, 1);
    EXPECT_THAT(Left(), ElementsAre(1));
}

TEST_F(MultiInsert, TenThousandInsertionsAndTheirUndoTakeLessThanTwoSecondsEach) {
    Clip({10, 20, 30}, {40, 50, 60});
    Document({1, 2}, {3, 4});
    Messages.AnswerInput("10000");
    const auto Start = std::chrono::steady_clock::now();
    PasteAt(PasteMultiInsert, 2);
    const auto Middle = std::chrono::steady_clock::now();
    EXPECT_EQ(WaveStore->WavWaveINos, 30002);
    WaveStore->Undo();
    const auto End = std::chrono::steady_clock::now();
    EXPECT_LT(Middle - Start, std::chrono::seconds(2));
    EXPECT_LT(End - Middle, std::chrono::seconds(2));
    EXPECT_THAT(Left(), ElementsAre(1, 2));
    EXPECT_THAT(Right(), ElementsAre(3, 4));
}

TEST_F(MultiInsert, MultiInsertOffers5AndThenTheLastNumber) {
    Clip({10, 20});
    Document({1});
    PasteAt(PasteMultiInsert, 1);
    EXPECT_EQ(Messages.LastProposed(), "5");
    Messages.AnswerInput("7");
    PasteAt(PasteMultiInsert, 1);
    Messages.AnswerInput("10001"); // refused, and not kept
    PasteAt(PasteMultiInsert, 1);
    EXPECT_EQ(Messages.LastProposed(), "7");
    PasteAt(PasteMultiInsert, 1);
    EXPECT_EQ(Messages.LastProposed(), "7");
}

/// Notes how the pointer is while it asks.
struct PointerSeen final : UserMessages {
    explicit PointerSeen(const int& UsedDepth) : Depth(UsedDepth) { SetUserMessages(this); }
    ~PointerSeen() override { SetUserMessages(nullptr); }
    PointerSeen(const PointerSeen&) = delete;
    PointerSeen& operator=(const PointerSeen&) = delete;
    MsgBoxAnswer MsgBox(const MsgBoxRequest& Request) override { return Request.Default; }
    InputBoxAnswer InputBox(const std::string&, const std::string&, const std::string&) override {
        Seen.push_back(Depth);
        return {true, "2"};
    }
    const int& Depth;
    std::vector<int> Seen;
};

TEST_F(MultiInsert, ThePointerIsNotBusyWhileMultiInsertAsks) {
    Clip({10});
    Document({1});
    PointerSeen Asked(BusyDepth);
    PasteAt(PasteMultiInsert, 1);
    EXPECT_THAT(Asked.Seen, ElementsAre(0));
    EXPECT_THAT(Left(), ElementsAre(10, 10, 1));
}

TEST_F(MultiInsert, MultiInsertRoundsToWholeTimes) {
    Clip({10});
    const std::pair<const char*, std::size_t> Rows[] = {
        {"0.6", 1}, {"2.5", 2}, {"3.5", 4}, {"1e1", 10}, {" 2", 2}, {"2,9", 2}, {"10000.4", 10000}};
    for (const auto& [Text, Times] : Rows) {
        Document({1});
        Messages.AnswerInput(Text);
        PasteAt(PasteMultiInsert, 1);
        EXPECT_EQ(Left().size(), 1 + Times) << Text;
    }
    for (const char* Text : {"0.5", "10000.6", "1e300", "NaN", " ", "99999999999999999999999999"}) {
        Document({1});
        Messages.AnswerInput(Text);
        PasteAt(PasteMultiInsert, 1);
        EXPECT_THAT(Left(), ElementsAre(1)) << Text;
        EXPECT_EQ(Messages.TakeTexts().back(),
                  "No of times not valid|Invalid entry Enter between 1 to 10000")
            << Text;
    }
}

/// Silence costs no room, so that such lengths are quick.
TEST_F(MultiInsert, ASoundBeyond32BitsIsRefusedWithNothingChanged) {
    const auto Silence = [](std::int32_t Count) {
        auto Carrier = std::make_unique<BlockCarrBuffClass>();
        Carrier->ReDimSize(Count);
        return Carrier;
    };
    Document({1});
    const auto ClipOf = Silence(1000000);
    ASSERT_TRUE(PutClipboard(1, 16, 1000, ClipOf.get(), nullptr));
    const auto Long = Silence(1000000000);
    WaveStore->WaveDataInsert(2, 1, Long.get(), nullptr, "", true);
    WaveStore->UndoInfoReset();
    WaveChanged = false;
    for (const char* Times : {"1148", "2148", "4295", "10000"}) {
        Messages.AnswerInput(Times);
        PasteAt(PasteMultiInsert, 2);
        EXPECT_EQ(Messages.TakeTexts().back(), "Multi-Paste Insert|Overflow") << Times;
        EXPECT_EQ(WaveStore->WavWaveINos, 1000000001) << Times;
        EXPECT_EQ(BrokenRule(*WaveStore, {ClipCarrL.get(), ClipOf.get(), Long.get()}), "");
    }
    EXPECT_EQ(WaveStore->UndoCount(), 0);
    EXPECT_FALSE(WaveChanged);
    Messages.AnswerInput("1147");
    PasteAt(PasteMultiInsert, 2);
    EXPECT_EQ(WaveStore->WavWaveINos, 2147000001);
    (void)Messages.TakeTexts();
    PasteAt(PasteInsert, 2);
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Paste Insert|Overflow"));
    PasteAt(PasteReplace, 2147000001);
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Paste Replace|Overflow"));
    EXPECT_EQ(WaveStore->WavWaveINos, 2147000001);
    WaveStore->Undo();
    EXPECT_EQ(WaveStore->WavWaveINos, 1000000001);
    EXPECT_EQ(WaveStore->WaveL(1), 1);
    EXPECT_EQ(BrokenRule(*WaveStore, {ClipCarrL.get(), ClipOf.get(), Long.get()}), "");
}

} // namespace

} // namespace quoril::test
