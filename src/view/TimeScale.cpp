#include "view/TimeScale.h"

#include "base/Arithmetic.h"
#include "base/ViewState.h"
#include "selection/DurationText.h"

#include <algorithm>
#include <cmath>

namespace quoril {
namespace {

std::int64_t ViewPast(const ScaleView& View) noexcept {
    return static_cast<std::int64_t>(View.ViewFrom) + View.ViewTotal;
}

ScrollBox ScrollRange(std::int32_t From, std::int32_t To, double Total, double Width,
                      double Height) noexcept {
    if (From == 0)
        return {};
    const double X = From / Total * Width;
    if (From == To)
        return {MarkKind::Point, X, 0.0, X, Height};
    // The ends of the main selection can stand in reverse order.
    const double Other = X + (static_cast<double>(To) - From) / Total * Width;
    return {MarkKind::Box, std::min(X, Other), 2.0, std::max(X, Other), Height - 3.0};
}

} // namespace

const std::array<float, 36> ScaleSteps = {
    5400.0F, 3600.0F, 2400.0F, 1800.0F, 1200.0F, 900.0F, 600.0F, 480.0F, 300.0F,
    180.0F,  120.0F,  90.0F,   60.0F,   40.0F,   30.0F,  20.0F,  15.0F,  10.0F,
    8.0F,    5.0F,    3.0F,    2.0F,    1.5F,    1.0F,   0.75F,  0.5F,   0.3F,
    0.2F,    0.15F,   0.1F,    0.075F,  0.05F,   0.03F,  0.02F,  0.015F, 0.01F};

float ScaleStepOf(std::int32_t Samples, std::int32_t Freq, std::int32_t Width) noexcept {
    constexpr std::int32_t LabelWidth = 65;
    const double Span = static_cast<double>(Samples) / Freq;
    const double Want = Span / std::max(Width / LabelWidth, 1);
    float Step = ScaleSteps[0];
    for (std::size_t i = 1; i < ScaleSteps.size() && Want < static_cast<double>(ScaleSteps[i]); ++i)
        Step = ScaleSteps[i];
    return Step;
}

ScaleTicks ScaleTicksOf(const ScaleView& View) {
    ScaleTicks Result;
    if (View.Total < 1 || View.Freq < 1)
        return Result;
    Result.Step = ScaleStepOf(View.ViewTotal, View.Freq, View.Width);
    const double Step = static_cast<double>(Result.Step);
    const double Rate = View.Freq;
    const double Last = static_cast<double>(ViewPast(View)) / Rate;
    double Time = std::floor(View.ViewFrom / Rate / Step) * Step;
    do {
        const double X = (RoundEven(Time * Rate) - View.ViewFrom) * View.PixelsPerSample;
        if (X > -5.0 && X < View.Width - 30.0)
            Result.Ticks.push_back({X, FormatDuration(Single(Time))});
        Time += Step;
    } while (Time <= Last);
    if (Result.Ticks.empty())
        Result.StartText = FormatSamples(View.ViewFrom, View.Freq);
    return Result;
}

void PlaySelectionLimit(std::int32_t Total) noexcept {
    if (PlaySelStart > Total || PlaySelEnd > Total)
        PlaySelStart = PlaySelEnd = 0;
}

PlaySelectionShape PlaySelectionShapeOf(const ScaleView& View, std::int32_t Height) {
    PlaySelectionShape Shape;
    if (View.Total < 1 || PlaySelStart == 0)
        return Shape;
    const auto ViewEnd =
        static_cast<std::int32_t>(std::min<std::int64_t>(ViewPast(View), View.Total));
    const WaveScale Scale{View.ViewFrom, View.PixelsPerSample, 1.0, 0.0};
    const auto InView = [&](std::int32_t Position) {
        return View.ViewFrom <= Position && Position <= ViewEnd;
    };
    if (PlaySelStart == PlaySelEnd) {
        if (!InView(PlaySelStart))
            return Shape;
        Shape.Kind = MarkKind::Point;
        Shape.X1 = Shape.X2 = Scale.XOf(PlaySelStart);
        for (std::int32_t k = 0; k <= Height / 2; ++k)
            Shape.Lines.push_back({Shape.X1 + k, static_cast<double>(k), Shape.X1 + k,
                                   static_cast<double>(Height - k)});
        return Shape;
    }
    const bool Covers = PlaySelStart < View.ViewFrom && PlaySelEnd > ViewEnd;
    if (!InView(PlaySelStart) && !InView(PlaySelEnd) && !Covers)
        return Shape;
    Shape.Kind = MarkKind::Box;
    Shape.X1 = Scale.XOf(std::max(PlaySelStart, View.ViewFrom));
    Shape.X2 = Scale.XOf(std::min(PlaySelEnd, ViewEnd));
    if (Shape.X2 - Shape.X1 < 2.0)
        Shape.X2 = Shape.X1 + 1.0;
    return Shape;
}

ScrollScale ScrollScaleOf(const ScaleView& View, double InnerWidth, double InnerHeight) {
    ScrollScale Result;
    if (View.Total < 1)
        return Result;
    const double Width = RoundEven(InnerWidth - 1.0);
    const double Height = RoundEven(InnerHeight);
    const double Total = View.Total;
    const double X1 = View.ViewFrom / Total * Width;
    const double X2 = X1 + View.ViewTotal / Total * Width;
    Result.View = {MarkKind::Box, X1, 0.0, X2, Height - 1.0};
    Result.Edge1 = RoundToLong(X1);
    Result.Edge2 = RoundToLong(X2);
    Result.Selection = ScrollRange(SelStart, SelEnd, Total, Width, Height);
    Result.PlaySelection = ScrollRange(PlaySelStart, PlaySelEnd, Total, Width, Height);
    return Result;
}

} // namespace quoril
