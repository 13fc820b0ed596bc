// A stroke of the tool Draw: its points, and what they make of the document.
#include "view/DrawStroke.h"

#include "effects/EffectFixture.h"
#include "view/LiteralStroke.h"

#include <random>

namespace quoril::test {
namespace {

std::vector<LiteralPoint> PointsOf(const DrawStroke& Stroke) {
    std::vector<LiteralPoint> Points;
    for (std::size_t i = 1; i < Stroke.DrawPos.size(); ++i)
        Points.push_back({Stroke.DrawPos[i], Stroke.DrawVal[i]});
    EXPECT_EQ(Stroke.DrawCount, std::ssize(Points));
    return Points;
}
bool Same(const std::vector<LiteralPoint>& A, const std::vector<LiteralPoint>& B) {
    return std::equal(A.begin(), A.end(), B.begin(), B.end(),
                      [](const LiteralPoint& One, const LiteralPoint& Other) {
                          return One.Pos == Other.Pos && One.Val == Other.Val;
                      });
}

class DrawStrokeTest : public EffectTest {
  protected:
    std::int32_t Number(std::int32_t From, std::int32_t To) {
        return std::uniform_int_distribution<std::int32_t>(From, To)(Random);
    }

    std::mt19937 Random{33};
    DrawStroke Stroke;
};

TEST_F(DrawStrokeTest, RandomStrokesHaveTheirPointsAndTheirSamples) {
    for (int Case = 0; Case < 2000; ++Case) {
        const std::int32_t Total = Number(1, 400);
        const std::int32_t Rate = Number(1, 900);
        const std::int32_t Bits = Number(0, 1) == 0 ? 8 : 16;
        const std::int32_t High = Number(0, 4) == 0 ? 2147483647 : Bits == 8 ? 200 : 50000;
        LiteralStroke Literal;
        const auto Place = [&] { return std::pair(Number(1, Total), Number(-High, High)); };
        const auto [Pos, Val] = Place();
        Stroke.Begin(Pos, Val);
        Literal.Down(Pos, Val);
        for (int Move = Number(0, 12); Move > 0; --Move) {
            const auto [P, V] = Place();
            const std::size_t Before = Literal.Points.size();
            EXPECT_EQ(Stroke.Move(P, V, Rate), std::ssize(Literal.Points) + 1);
            Literal.Move(P, V, Rate);
            EXPECT_EQ(Stroke.DrawPos.size() - 1 > Before, Literal.Points.size() > Before);
        }
        ASSERT_TRUE(Same(PointsOf(Stroke), Literal.Points)) << "case " << Case;
        const std::int32_t ViewFrom = Number(1, Total);
        const std::int32_t ViewTotal = Number(1, Total);
        std::vector<std::int16_t> Expected(static_cast<std::size_t>(Total), 7);
        Literal.Up(Expected, ViewFrom, ViewTotal, Bits);
        std::vector<std::int16_t> Made(static_cast<std::size_t>(Total), 7);
        const DrawnStretch Drawn =
            Stroke.Drawn(ViewFrom, std::min(ViewFrom + ViewTotal, Total), Bits);
        std::copy(Drawn.Samples.begin(), Drawn.Samples.end(),
                  Made.begin() + std::max(Drawn.Lo - 1, 0));
        ASSERT_EQ(Made, Expected) << "case " << Case;
    }
}

TEST_F(DrawStrokeTest, AClickIsOnePoint) {
    Stroke.Begin(17, -300);
    const DrawnStretch Drawn = Stroke.Drawn(1, 100, 16);
    EXPECT_EQ(Drawn.Lo, 17);
    EXPECT_EQ(Drawn.Samples, std::vector<std::int16_t>{-300});
}

TEST_F(DrawStrokeTest, TheBottomOfSixteenBitsIsOneAboveTheLowestSample) {
    Stroke.Begin(1, -40000);
    EXPECT_EQ(Stroke.Move(2, 40000, 10), 2);
    EXPECT_EQ(Stroke.Drawn(1, 2, 16).Samples, (std::vector<std::int16_t>{-32767, 32767}));
    EXPECT_EQ(Stroke.Drawn(1, 2, 8).Samples, (std::vector<std::int16_t>{-128, 127}));
}

TEST_F(DrawStrokeTest, TheLastStrokeOverAPlaceCounts) {
    Stroke.Begin(1, 100);
    EXPECT_EQ(Stroke.Move(5, 100, 100), 2);
    EXPECT_EQ(Stroke.Move(3, 50, 100), 7);
    EXPECT_EQ(Stroke.Drawn(1, 5, 16).Samples, (std::vector<std::int16_t>{100, 100, 50, 75, 100}));
}

TEST_F(DrawStrokeTest, PointsOutOfViewAreLeftOut) {
    Stroke.Begin(1, 10);
    EXPECT_EQ(Stroke.Move(9, 90, 100), 2);
    const DrawnStretch Drawn = Stroke.Drawn(3, 5, 16);
    EXPECT_EQ(Drawn.Lo, 3);
    EXPECT_EQ(Drawn.Samples, (std::vector<std::int16_t>{30, 40, 50}));
    EXPECT_FALSE(Stroke.DrawSkip[3 + 1]); // position 3 is the third point of the second run
    EXPECT_TRUE(Stroke.DrawSkip[1]);
    EXPECT_TRUE(Stroke.Drawn(10, 20, 16).Samples.empty());
}

TEST_F(DrawStrokeTest, AStrokeTakesNoMorePointsThanASecondHas) {
    Stroke.Begin(1, 0);
    EXPECT_EQ(Stroke.Move(100, 0, 100), 2); // 101 points
    EXPECT_EQ(Stroke.DrawCount, 101);
    EXPECT_EQ(Stroke.Move(50, 9, 100), 102);
    EXPECT_EQ(Stroke.DrawCount, 101);
    EXPECT_EQ(Stroke.DrawLastPos, 100);
}

TEST_F(DrawStrokeTest, IsOneStepOfItsChannelWhicheverIsSelected) {
    Document(Samples(9, 1), Samples(9, 2), 16, 4);
    SelBoth = false;
    SelSingle = 1;
    DrawnStretchPut(2, {4, {10, 0, -10}});
    EXPECT_EQ(Left(), Samples(9, 1));
    EXPECT_EQ(Right(), (Samples{2, 2, 2, 10, 0, -10, 2, 2, 2}));
    EXPECT_EQ(WaveStore->UndoMenu().Caption, "Undo [Draw - with mouse]");
    EXPECT_EQ(BusyDepth, 0);
    EXPECT_EQ(BusyCalls, 2);
    DrawnStretchPut(1, {9, {77}});
    EXPECT_EQ(Left(), (Samples{1, 1, 1, 1, 1, 1, 1, 1, 77}));
    WaveStore->Undo();
    EXPECT_EQ(Left(), Samples(9, 1));
    WaveStore->Undo();
    EXPECT_EQ(Right(), Samples(9, 2));
    EXPECT_EQ(WaveStore->UndoCount(), 0);
}

} // namespace
} // namespace quoril::test
