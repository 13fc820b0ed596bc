// Overlaps against values worked out elsewhere from the words of the formulas.
#include "edit/EditFixture.h"

namespace quoril::test {
namespace {

using SampleRow = std::vector<std::int16_t>;

struct LapRow {
    std::int32_t Bits;
    std::int32_t WorkChn;
    std::int32_t From;
    std::int32_t To;
    std::int32_t SelcOpn;
    std::int32_t TransOpn;
    SampleRow DocL, DocR, MadeL, MadeR;
};

/// Odd selections, one that begins a place before the document, single channels of stereo, which
/// are filled up with silence, and both ends of the samples' range.
const std::vector<LapRow>& LapRows() {
    static const std::vector<LapRow> Rows = {
        {16,
         1,
         2,
         8,
         LapSelectionBoth,
         LapSmooth,
         {-3, 32767, 3, 31362, 32767, -4, -32768, -32768},
         {},
         {-3, 32767, -2, -32767, -32768},
         {}},
        {16,
         1,
         2,
         8,
         LapSelectionBoth,
         LapSimple,
         {32767, 5, -6806, -4480, -32768, -10331, 32767, 7839},
         {},
         {32767, -32763, -17137, 28287, 7839},
         {}},
        {16,
         0,
         2,
         4,
         LapSelectionFirst,
         LapSmooth,
         {-32768, -1, -16207, -5, -32768, 32767, -3, 9057, -32768},
         {-32768, -4415, 19583, -32768, 32767, -32768, -4116, 24657, -7},
         {-32768, -10924, 16443, -3, 9057, -32768},
         {-32768, 7979, -15317, -4116, 24657, -7}},
        {16,
         0,
         2,
         4,
         LapSelectionFirst,
         LapSimple,
         {6, -16086, -11873, 24910, -6861, 5950, 21851, -6, -6227},
         {-10832, 8, -32768, -32768, -25125, -7340, -10191, -15930, 32767},
         {6, -22947, -5923, 32767, -6, -6227},
         {-10832, -25117, -32767, -32767, -15930, 32767}},
        {16,
         1,
         4,
         6,
         LapSelectionSecond,
         LapSmooth,
         {14396, 17387, -7, -32768, -32768, 9, 3323},
         {32767, -32768, 12109, 24783, -8064, -10245, 32767},
         {-1326, -16049, 9, 3323, 0, 0, 0},
         {32767, -32768, 12109, 24783, -8064, -10245, 32767}},
        {16,
         1,
         4,
         6,
         LapSelectionSecond,
         LapSimple,
         {32767, -32768, -28432, -32768, 12111, -18202, -32768},
         {32767, -10949, -26792, 32767, -31289, -16567, 32767},
         {-1, -20657, -32767, -32768, 0, 0, 0},
         {32767, -10949, -26792, 32767, -31289, -16567, 32767}},
        {16,
         2,
         3,
         5,
         LapSelectionSecond,
         LapSmooth,
         {-32768, -2, -30338, -4, 32767, -32768, -32768},
         {-6287, -4, -32768, 32767, 32767, 2, -2278},
         {-32768, -2, -30338, -4, 32767, -32768, -32768},
         {19749, 32767, 2, -2278, 0, 0, 0}},
        {16,
         2,
         3,
         5,
         LapSelectionSecond,
         LapSimple,
         {4, -10017, 32767, -2, 3, -23268, -32768},
         {-32768, 8544, -32768, -32768, 32767, 1360, 32767},
         {4, -10017, 32767, -2, 3, -23268, -32768},
         {-32767, 32767, 1360, 32767, 0, 0, 0}},
        {16,
         1,
         1,
         4,
         LapSelectionBoth,
         LapSmooth,
         {-32768, 32767, -32768, -9707},
         {},
         {-32767, -9707},
         {}},
        {16,
         1,
         1,
         4,
         LapSelectionBoth,
         LapSimple,
         {-23533, -17831, 22773, -32768},
         {},
         {-760, -32767},
         {}},
        {8,
         1,
         2,
         8,
         LapSelectionBoth,
         LapSmooth,
         {-128, 1, 0, -20, 6, -119, 1, -74},
         {},
         {-128, 3, -79, 1, -74},
         {}},
        {8,
         1,
         2,
         8,
         LapSelectionBoth,
         LapSimple,
         {-22, 1, -8, 127, -128, -128, 127, 18},
         {},
         {-22, -127, -127, 127, 18},
         {}},
        {8,
         0,
         2,
         4,
         LapSelectionFirst,
         LapSmooth,
         {30, 69, 27, -65, 114, 119, 101, 127, 127},
         {-128, -5, 3, -128, -128, 127, 127, -4, -31},
         {30, 84, 88, 101, 127, 127},
         {-128, -46, 86, 127, -4, -31}},
        {8,
         0,
         2,
         4,
         LapSelectionFirst,
         LapSimple,
         {-17, 43, 117, 1, 7, -4, 7, -9, -50},
         {-105, -4, 40, 127, -128, 4, 62, 4, -128},
         {-17, 50, 113, 8, -9, -50},
         {-105, -127, 44, 127, 4, -128}},
        {8,
         1,
         4,
         6,
         LapSelectionSecond,
         LapSmooth,
         {-126, -7, 127, 8, -56, 7, -128},
         {-128, -2, -128, 2, 127, -3, 127},
         {-81, -39, 7, -128, 0, 0, 0},
         {-128, -2, -128, 2, 127, -3, 127}},
        {8,
         1,
         4,
         6,
         LapSelectionSecond,
         LapSimple,
         {-16, -64, 19, -2, 127, -128, 127},
         {-4, 117, 5, -128, 127, -15, 127},
         {-18, 63, -109, 127, 0, 0, 0},
         {-4, 117, 5, -128, 127, -15, 127}},
        {8,
         2,
         3,
         5,
         LapSelectionSecond,
         LapSmooth,
         {-128, -49, 118, -104, -3, 75, -128},
         {-14, 127, -128, -84, -18, -35, 127},
         {-128, -49, 118, -104, -3, 75, -128},
         {-61, -18, -35, 127, 0, 0, 0}},
        {8,
         2,
         3,
         5,
         LapSelectionSecond,
         LapSimple,
         {-55, 119, 104, -128, 127, -128, -128},
         {-6, 127, -32, -128, 127, -128, 108},
         {-55, 119, 104, -128, 127, -128, -128},
         {-127, 127, -128, 108, 0, 0, 0}},
        {8, 1, 1, 4, LapSelectionBoth, LapSmooth, {52, 21, -128, -19}, {}, {-38, -19}, {}},
        {8, 1, 1, 4, LapSelectionBoth, LapSimple, {46, -128, -1, -128}, {}, {45, -127}, {}},
    };
    return Rows;
}

class LapValues : public EditTest {};

TEST_F(LapValues, AreThoseWorkedOutInAllStylesDepthsAndChannels) {
    for (const LapRow& Row : LapRows())
        for (const bool Undo : {true, false}) {
            SCOPED_TRACE(::testing::Message()
                         << Row.Bits << " bits, channel " << Row.WorkChn << ", " << Row.From
                         << " to " << Row.To << ", option " << Row.SelcOpn << ", style "
                         << Row.TransOpn << ", undo " << Undo);
            Fill(Row.DocL, Row.DocR, Row.Bits);
            SelBoth = Row.WorkChn == 0;
            SelSingle = Row.WorkChn == 2 ? 2 : 1;
            Select(Row.From, Row.To);
            Questions.Lap = {true, {Row.SelcOpn, Row.TransOpn}};
            if (Undo) {
                OneStep(EditLap, Row.TransOpn == LapSmooth ? "Lap - Smooth" : "Lap - Simple");
            } else {
                UndoOptionON = false;
                EditLap();
                UndoOptionON = true;
                MadeL = Left();
                MadeR = Right();
                EXPECT_EQ(WaveStore->UndoCount(), 0);
            }
            EXPECT_EQ(MadeL, Row.MadeL);
            EXPECT_EQ(MadeR, Row.MadeR);
        }
    EXPECT_THAT(Messages.Texts(), ::testing::IsEmpty());
}

} // namespace
} // namespace quoril::test
