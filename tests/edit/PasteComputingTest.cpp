// The pastes that compute, against values worked out elsewhere from the words of the formulas, and
// what they show and ask on the way.
#include "audiofile/WavMaker.h"
#include "edit/CopyPasteFixture.h"
#include "storage/DiskSpaceGuardMod.h"
#include "support/OrderLog.h"

#include <algorithm>

namespace quoril::test {

namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using Samples = std::vector<std::int16_t>;

struct PastedRow {
    std::int32_t Mode;
    std::int32_t Bits;
    std::int32_t WorkChn;
    std::int32_t Pos;
    Samples DocL, DocR, ClipL, ClipR, MadeL, MadeR;
};

/// Exact fractions, with the shares of a fade rounded to single precision. Clips end before, at and
/// behind the end of the document; both ends of the samples' range are in it many times.
const std::vector<PastedRow>& PastedRows() {
    static const std::vector<PastedRow> Rows = {
        {PasteMix,
         16,
         1,
         2,
         {32767, -17687, 8, 3924, -7704},
         {},
         {-32768, 1357, -32768, -6537, -22768, -20327, -18812},
         {},
         {32767, -32767, 1365, -28844, -14241, -22768, -20327, -18812},
         {}},
        {PasteMix,
         16,
         0,
         1,
         {-32768, -2, 20007, -28168, -32768, 31309},
         {0, -20733, -32675, 32767, 28346, 32767},
         {32767, -32768, 9},
         {21930, -19261, 32767},
         {-1, -32767, 20016, -28168, -32768, 31309},
         {21930, -32767, 92, 32767, 28346, 32767}},
        {PasteMix,
         16,
         1,
         4,
         {-32768, -32768, -6026, -11096},
         {31237, -7341, 32767, 6},
         {19714, -32768},
         {-32768, -32768},
         {-32768, -32768, -6026, 8618, -32768},
         {31237, -7341, 32767, 6, 0}},
        {PasteMix,
         16,
         2,
         3,
         {32767, 7, -32768, -32768, -13259},
         {-32768, -32768, -4, -8, -23391},
         {9498, 6, 32767},
         {},
         {32767, 7, -32768, -32768, -13259},
         {-32768, -32768, 9494, -2, 9376}},
        {PasteMix, 16, 0, 1, {-3}, {10579}, {-7692}, {}, {-7695}, {2887}},
        {PasteMix, 16, 1, 1, {13714, 1953}, {}, {32767, -32768}, {}, {32767, -30815}, {}},
        {PasteMix,
         8,
         1,
         2,
         {-128, 4, 76, 114, 3},
         {},
         {-9, 5, -128, 70, 127, 127, -104},
         {},
         {-128, -5, 81, -14, 73, 127, 127, -104},
         {}},
        {PasteMix,
         8,
         0,
         1,
         {47, -40, -128, -3, -6, -128},
         {55, -128, 127, -4, -19, 127},
         {127, 117, 82},
         {127, 17, 127},
         {127, 77, -46, -3, -6, -128},
         {127, -111, 127, -4, -19, 127}},
        {PasteMix,
         8,
         1,
         4,
         {-9, -128, -2, 121},
         {-69, -36, -128, -128},
         {-1, -82},
         {127, -128},
         {-9, -128, -2, 120, -82},
         {-69, -36, -128, -128, 0}},
        {PasteMix,
         8,
         2,
         3,
         {-128, 127, 127, 127, -128},
         {127, 74, 127, 110, -128},
         {-69, 87, 127},
         {},
         {-128, 127, 127, 127, -128},
         {127, 74, 58, 127, -1}},
        {PasteMix, 8, 0, 1, {1}, {93}, {127}, {}, {127}, {127}},
        {PasteMix, 8, 1, 1, {-23, 127}, {}, {55, -7}, {}, {32, 120}, {}},
        {PasteModulate,
         16,
         1,
         2,
         {-23371, 32767, 26833, 27132, 32767},
         {},
         {7, -32768, 24280, 8803, 23456, -29003, -6190},
         {},
         {-23371, 7, 25492, 19099, 8363, 23456, -29003, -6190},
         {}},
        {PasteModulate,
         16,
         0,
         1,
         {-16825, 32767, -3963, -28315, -32768, 3},
         {-31494, 15706, 4, -32768, -18652, 5844},
         {5, -5, 32767},
         {-15301, -8, 32767},
         {-2, 5, -3765, -28315, -32768, 3},
         {-13971, 4, 4, -32768, -18652, 5844}},
        {PasteModulate,
         16,
         1,
         4,
         {-32768, 32767, -32768, 29128},
         {-8, 8149, -6, -10048},
         {-32768, -32768},
         {-32768, 234},
         {-32768, 32767, -32768, 27672, -32768},
         {-8, 8149, -6, -10048, 0}},
        {PasteModulate,
         16,
         2,
         3,
         {7789, -32768, -32768, -32768, 32767},
         {24914, -32768, 32767, -32768, 32767},
         {6316, -28021, 9},
         {},
         {7789, -32768, -32768, -32768, 32767},
         {24914, -32768, 6000, -26621, 9}},
        {PasteModulate, 16, 0, 1, {-28257}, {-7675}, {-8}, {}, {-7}, {-2}},
        {PasteModulate, 16, 1, 1, {-4, -27200}, {}, {32767, -32768}, {}, {-4, -25841}, {}},
        {PasteModulate,
         8,
         1,
         2,
         {127, 3, -128, 108, -5},
         {},
         {6, -38, -64, -10, 9, 34, -9},
         {},
         {127, 0, -36, 52, 0, 9, 34, -9},
         {}},
        {PasteModulate,
         8,
         0,
         1,
         {-128, -37, 111, 2, 103, -9},
         {-1, -8, -100, -78, -128, -128},
         {-128, -128, 3},
         {-128, 95, 0},
         {-123, -35, 2, 2, 103, -9},
         {-1, -6, 0, -78, -128, -128}},
        {PasteModulate,
         8,
         1,
         4,
         {-128, -128, -97, 101},
         {-79, -13, 127, -70},
         {-14, -128},
         {-128, -34},
         {-128, -128, -97, 11, -128},
         {-79, -13, 127, -70, 0}},
        {PasteModulate,
         8,
         2,
         3,
         {-128, -46, 35, 127, 127},
         {-9, -5, 1, -128, -128},
         {-128, -29, -128},
         {},
         {-128, -46, 35, 127, 127},
         {-9, -5, 1, -28, -123}},
        {PasteModulate, 8, 0, 1, {-128}, {-128}, {-128}, {}, {-123}, {-123}},
        {PasteModulate, 8, 1, 1, {-128, 127}, {}, {64, -7}, {}, {-61, 7}, {}},
        {PasteCrossFade,
         16,
         1,
         2,
         {-13855, -32768, -29544, 2034, -32768},
         {},
         {32767, 20071, 26866, -31563, 32767, 2, 1},
         {},
         {-13855, 16383, -4736, 8242, -32767, 32767, 2, 1},
         {}},
        {PasteCrossFade,
         16,
         0,
         1,
         {32767, 2, -14443, -32376, 7, -32768},
         {5273, 16047, -6, 32767, -29216, -32768},
         {7249, -32768, -13217},
         {-32768, -32768, -16188},
         {15755, -10921, -14443, -32376, 7, -32768},
         {-20088, -225, -6, 32767, -29216, -32768}},
        {PasteCrossFade,
         16,
         1,
         4,
         {-21298, -9, 7, -32768},
         {32767, -32768, 32767, -5707},
         {1, 0},
         {1348, -2},
         {-21298, -9, 7, -32767, 0},
         {32767, -32768, 32767, -5707, 0}},
        {PasteCrossFade,
         16,
         2,
         3,
         {-28479, -32768, -13928, -32768, -32768},
         {-1, 32767, -21527, 9964, 13288},
         {-32768, -32768, -7},
         {},
         {-28479, -32768, -13928, -32768, -32768},
         {-1, 32767, -29021, -4280, 13288}},
        {PasteCrossFade, 16, 0, 1, {-9}, {32767}, {32767}, {}, {-9}, {32767}},
        {PasteCrossFade, 16, 1, 1, {-32768, 886}, {}, {-2, 32767}, {}, {-16385, 886}, {}},
        {PasteCrossFade,
         8,
         1,
         2,
         {127, -44, -128, -128, -56},
         {},
         {1, -128, -128, -37, -4, -128, 61},
         {},
         {127, -10, -127, -127, -56, -4, -128, 61},
         {}},
        {PasteCrossFade,
         8,
         0,
         1,
         {23, 70, -47, -128, 3, 8},
         {120, -6, -128, -128, 127, 3},
         {127, 127, -128},
         {123, 52, 127},
         {92, 89, -47, -128, 3, 8},
         {122, 13, -127, -128, 127, 3}},
        {PasteCrossFade,
         8,
         1,
         4,
         {-4, 127, 0, 2},
         {5, -128, 127, 9},
         {3, 117},
         {-1, 127},
         {-4, 127, 0, 2, 117},
         {5, -128, 127, 9, 0}},
        {PasteCrossFade,
         8,
         2,
         3,
         {101, -117, -108, -1, 127},
         {127, 127, -5, -128, -128},
         {127, 10, -128},
         {},
         {101, -117, -108, -1, 127},
         {127, 127, 83, -82, -127}},
        {PasteCrossFade, 8, 0, 1, {21}, {127}, {-9}, {}, {21}, {127}},
        {PasteCrossFade, 8, 1, 1, {127, -1}, {}, {127, 127}, {}, {127, -1}, {}},
    };
    return Rows;
}

class PasteComputing : public CopyPasteFixture {};

TEST_F(PasteComputing, GivesTheValuesWorkedOutInAllModesDepthsAndChannels) {
    for (const PastedRow& Row : PastedRows()) {
        SCOPED_TRACE(fmt::format("mode {}, {} bits, channel {}, {} samples at {} of {}", Row.Mode,
                                 Row.Bits, Row.WorkChn, Row.ClipL.size(), Row.Pos,
                                 Row.DocL.size()));
        Clip(Row.ClipL, Row.ClipR, Row.Bits);
        Document(Row.DocL, Row.DocR, Row.Bits);
        SelBoth = Row.WorkChn == 0;
        SelSingle = Row.WorkChn == 2 ? 2 : 1;
        PasteAt(Row.Mode, Row.Pos);
        EXPECT_EQ(Left(), Row.MadeL);
        EXPECT_EQ(Right(), Row.MadeR);
        WaveStore->Undo();
        EXPECT_EQ(Left(), Row.DocL);
        EXPECT_EQ(Right(), Row.DocR);
        EXPECT_EQ(WaveStore->UndoCount(), 0);
    }
    EXPECT_THAT(Messages.Texts(), ::testing::IsEmpty());
}

TEST_F(PasteComputing, GivesTheSameWithoutUndo) {
    for (const PastedRow& Row : PastedRows()) {
        UndoOptionON = true;
        Clip(Row.ClipL, Row.ClipR, Row.Bits);
        Document(Row.DocL, Row.DocR, Row.Bits);
        UndoOptionON = false;
        SelBoth = Row.WorkChn == 0;
        SelSingle = Row.WorkChn == 2 ? 2 : 1;
        PasteAt(Row.Mode, Row.Pos);
        EXPECT_EQ(Left(), Row.MadeL);
        EXPECT_EQ(Right(), Row.MadeR);
        EXPECT_EQ(WaveStore->UndoCount(), 0);
    }
    UndoOptionON = true;
}

/// The bar's moves between its colour and its end.
std::vector<std::string> MovesOfColor(const std::vector<std::string>& Lines,
                                      const std::string& Color) {
    const auto From = std::find(Lines.begin(), Lines.end(), "color " + Color);
    return {From, std::find(From, Lines.end(), "hide")};
}

TEST_F(PasteComputing, TellsEvery100000SamplesHowFarItHasCome) {
    constexpr std::size_t Count = 250000;
    const Samples Long(Count, 3);
    struct Row {
        std::int32_t Mode;
        bool Stereo;
        std::vector<std::string> Moves;
    };
    const Row Rows[] = {
        {PasteMix, false, {"0.400", "0.800"}},      {PasteMix, true, {"0.400", "0.800"}},
        {PasteCrossFade, true, {"0.400", "0.800"}}, {PasteModulate, false, {"0.400", "0.800"}},
        {PasteModulate, true, {"0.400", "0.800"}},
    };
    for (const Row& Each : Rows) {
        Clip(Long);
        Document(Long, Each.Stereo ? Long : Samples{});
        const OrderLog Log;
        PasteAt(Each.Mode, 1);
        std::vector<std::string> Expected = {"color 8421376", "0.000"};
        Expected.insert(Expected.end(), Each.Moves.begin(), Each.Moves.end());
        EXPECT_THAT(MovesOfColor(Log.Lines, "8421376"), ElementsAreArray(Expected)) << Each.Mode;
        EXPECT_EQ(Log.Lines.back(), "hide");
    }
}

struct DiskAsked final : ChkDskSpcDialog {
    DiskAsked() { SetChkDskSpcDialog(this); }
    ~DiskAsked() override { SetChkDskSpcDialog(nullptr); }
    DiskAsked(const DiskAsked&) = delete;
    DiskAsked& operator=(const DiskAsked&) = delete;
    std::int32_t ShowChkDskSpc(const DiskSpaceNumbers& Numbers, const FreeBytesRoutine&) override {
        Needs.push_back(Numbers.Needed2);
        return GoOn ? 1 : 0;
    }
    std::vector<std::int64_t> Needs;
    bool GoOn = false;
};

/// Where there is no such folder, no space is free.
TEST_F(PasteComputing, AsksTheDiskFor4BytesPerSampleAndChannelAndReplaceDoesNotAsk) {
    Clip({1, 2, 3});
    Document({10, 20, 30, 40}, {50, 60, 70, 80});
    DiskAsked Disk;
    TmpDir0 = Session.Path("nowhere");
    for (const std::int32_t Mode : {PasteMix, PasteModulate, PasteCrossFade}) {
        SelBoth = true;
        PasteAt(Mode, 1);
        SelBoth = false;
        PasteAt(Mode, 1);
    }
    EXPECT_THAT(Disk.Needs, ElementsAre(24, 12, 24, 12, 24, 12));
    EXPECT_THAT(Left(), ElementsAre(10, 20, 30, 40));
    EXPECT_EQ(WaveStore->UndoCount(), 0);
    Disk.GoOn = true;
    PasteAt(PasteMix, 1);
    EXPECT_THAT(Left(), ElementsAre(11, 22, 33, 40));
    Disk.Needs.clear();
    PasteAt(PasteReplace, 1);
    PasteAt(PasteInsert, 1);
    EXPECT_THAT(Left(), ElementsAre(1, 2, 3, 1, 2, 3, 40));
    EXPECT_THAT(Disk.Needs, ::testing::IsEmpty());
}

TEST_F(PasteComputing, MixLimitsAndPastesWhatRunsPastTheEndUnmixed) {
    Clip({32767, -32768, 100, 200, 300});
    Document({5, 32767, -32768, 1});
    PasteAt(PasteMix, 2);
    EXPECT_THAT(Left(), ElementsAre(5, 32767, -32767, 101, 200, 300));
    EXPECT_EQ(WaveStore->UndoRecords().back().UndoName, "Paste Mix");
    WaveStore->Undo();
    EXPECT_THAT(Left(), ElementsAre(5, 32767, -32768, 1));
}

TEST_F(PasteComputing, MixWorksOnBothChannels) {
    Clip({1, 2}, {3, 4});
    Document({10, 20, 30}, {40, 50, 60});
    PasteAt(PasteMix, 2);
    EXPECT_THAT(Left(), ElementsAre(10, 21, 32));
    EXPECT_THAT(Right(), ElementsAre(40, 53, 64));
}

TEST_F(PasteComputing, ASilentClipModulatesToSilence) {
    Clip({0, 0});
    Document({100, 200, 300});
    PasteAt(PasteModulate, 2);
    EXPECT_THAT(Left(), ElementsAre(100, 0, 0));
    EXPECT_EQ(WaveStore->UndoRecords().back().UndoName, "Paste Modulate");
}

TEST_F(PasteComputing, AFullScaleClipKeeps95Percent) {
    Clip({32767, -32767});
    Document({10000, -10000});
    PasteAt(PasteModulate, 1);
    EXPECT_THAT(Left(), ElementsAre(9500, -9500));
}

TEST_F(PasteComputing, CrossFadeOverOneSampleGivesTheDocuments) {
    Clip({1000});
    Document({7, 8, 9});
    PasteAt(PasteCrossFade, 2);
    EXPECT_THAT(Left(), ElementsAre(7, 8, 9));
}

TEST_F(PasteComputing, CrossFadeCountsOverTheWholeRange) {
    Clip({0, 0, 0, 0});
    Document({1000, 1000, 1000, 1000});
    PasteAt(PasteCrossFade, 1);
    EXPECT_THAT(Left(), ElementsAre(250, 500, 750, 1000));
    EXPECT_EQ(WaveStore->UndoRecords().back().UndoName, "Paste Cross Fade");
}

TEST_F(PasteComputing, AMixOverManyRunsAndBlocksIsRightEverywhere) {
    const auto ClipSamples = Noise(250001, 16, 1);
    const auto DocSamples = Noise(250001, 16, 2);
    Clip(ClipSamples);
    Document(DocSamples);
    PasteAt(PasteInsert, 77777); // borders of blocks within a run
    WaveStore->Undo();
    PasteAt(PasteMix, 1);
    const auto Got = Left();
    ASSERT_EQ(Got.size(), ClipSamples.size());
    for (std::size_t i = 0; i < Got.size(); ++i)
        ASSERT_EQ(Got[i], std::clamp(ClipSamples[i] + DocSamples[i], -32767, 32767)) << i;
}

} // namespace

} // namespace quoril::test
