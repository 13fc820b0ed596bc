#include "view/WaveGeometry.h"

#include "base/Arithmetic.h"
#include "base/ViewState.h"

#include <algorithm>

namespace quoril {

WaveLayout WaveLayoutOf(std::int32_t TopFrameBottom, std::int32_t HScrollTop,
                        std::int32_t ScaleHeight, bool Stereo) noexcept {
    const std::int32_t Avail = std::max(HScrollTop - TopFrameBottom - ScaleHeight, 0);
    WaveLayout Layout;
    if (!Stereo) {
        Layout.ScaleTop = TopFrameBottom;
        Layout.Top1 = TopFrameBottom + ScaleHeight;
        Layout.Height1 = Avail;
        Layout.Top2 = Layout.Top1 + Avail;
        return Layout;
    }
    Layout.Top1 = TopFrameBottom;
    Layout.Height1 = Avail / 2;
    Layout.ScaleTop = Layout.Top1 + Layout.Height1;
    Layout.Top2 = Layout.ScaleTop + ScaleHeight;
    Layout.Height2 = Avail - Layout.Height1;
    Layout.Visible2 = true;
    return Layout;
}

double PixelsPerSampleOf(std::int32_t Width, std::int32_t Samples) noexcept {
    return (std::max(Width, 2) - 1) / static_cast<double>(std::max(Samples, 1));
}

double PixelsPerUnitOf(std::int32_t Height, std::int32_t Bits) noexcept {
    return std::max((Height - 1.0) / (Bits == 8 ? 256.0 : 65536.0), 0.000001);
}

double ZeroLineYOf(std::int32_t Height) noexcept {
    return Height / 2.0;
}

std::int32_t WaveScale::PositionAt(double X, std::int32_t Total) const noexcept {
    if (Total < 1)
        return 0;
    return static_cast<std::int32_t>(
        std::clamp(RoundEven(X / PixelsPerSample + ViewFrom), 1.0, static_cast<double>(Total)));
}

std::int32_t WaveScale::ValueAt(double Y) const noexcept {
    return static_cast<std::int32_t>(
        std::clamp(RoundEven((ZeroLineY - Y) / PixelsPerUnit), -2147483648.0, 2147483647.0));
}

WaveScale WaveScaleOf(std::int32_t Width, std::int32_t Height, std::int32_t Bits) noexcept {
    return {ViewFrom, PixelsPerSampleOf(Width, ViewTotal), PixelsPerUnitOf(Height, Bits),
            ZeroLineYOf(Height)};
}

std::int32_t StepOf(double SamplePixels) noexcept {
    return static_cast<std::int32_t>(
        std::clamp(RoundEven(std::max(0.85 / SamplePixels, 1.0)), 1.0, 2147483647.0));
}

std::vector<std::int32_t> VisitedPositions(std::int32_t From, std::int32_t ViewEnd,
                                           std::int32_t Step) {
    std::vector<std::int32_t> Positions;
    const std::int64_t First = std::max(From, 1);
    const std::int64_t Stride = std::max(Step, 1);
    if (First <= ViewEnd)
        Positions.reserve(static_cast<std::size_t>((ViewEnd - First) / Stride + 1));
    for (std::int64_t Position = First; Position <= ViewEnd; Position += Stride)
        Positions.push_back(static_cast<std::int32_t>(Position));
    return Positions;
}

bool StyleHasBars(std::int32_t Style) noexcept {
    return Style >= 2 && Style <= 5;
}
bool StyleHasLines(std::int32_t Style) noexcept {
    return Style == 1 || Style == 3 || Style == 5;
}
bool StyleIsUniform(std::int32_t Style) noexcept {
    return Style == 4 || Style == 5;
}
bool StyleHasDots(std::int32_t Style, double SamplePixels) noexcept {
    return Style == 1 && 1.0 / SamplePixels < 1.0;
}

SelectionMark SelectionMarkOf(std::int32_t Panel, std::int32_t WorkChn, const WaveScale& Scale,
                              std::int32_t ViewEnd) noexcept {
    if (SelStart == 0 || (WorkChn != 0 && WorkChn != Panel))
        return {};
    const auto InView = [&](std::int32_t Position) {
        return Scale.ViewFrom <= Position && Position <= ViewEnd;
    };
    if (SelStart == SelEnd) {
        if (!InView(SelStart))
            return {};
        return {MarkKind::Point, Scale.XOf(SelStart), Scale.XOf(SelStart)};
    }
    const bool Spans = SelStart < Scale.ViewFrom && SelEnd > ViewEnd;
    if (!InView(SelStart) && !InView(SelEnd) && !Spans)
        return {};
    // The ends can stand in reverse order; such a range is drawn between them all the same.
    const double A = Scale.XOf(std::max(SelStart, Scale.ViewFrom));
    const double B = Scale.XOf(std::min(SelEnd, ViewEnd));
    return {MarkKind::Box, std::min(A, B), std::max(A, B)};
}

BookmarkShape BookmarkShapeOf(std::int32_t From, std::int32_t To, const WaveScale& Scale,
                              std::int32_t Height) {
    const bool IsRange = To > From;
    const double X1 = Scale.XOf(From);
    const double X2 = IsRange ? Scale.XOf(To) : X1 + 10.0;
    const double Y1 = IsRange ? Height * 0.1 : 10.0;
    const double Y2 = IsRange ? Height * 0.9 : Height - 10.0;
    BookmarkShape Shape{X1 + 1.0, 8.0, {{X1, 0.0, X1, static_cast<double>(Height)}}};
    if (IsRange)
        Shape.Lines.push_back({X2, Y1, X2, Y2});
    Shape.Lines.push_back({X1, 0.0, X2, Y1});
    Shape.Lines.push_back({X1, static_cast<double>(Height), X2, Y2});
    return Shape;
}

} // namespace quoril
