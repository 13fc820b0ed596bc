// What the time scale and the overview bar show. Pure functions; the windows only draw.
#pragma once

#include "view/WaveGeometry.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace quoril {

/// The distances of ticks to choose from, in seconds, falling.
extern const std::array<float, 36> ScaleSteps;

/// A view on a document, as the strips see it.
struct ScaleView {
    std::int32_t ViewFrom = 1;
    std::int32_t ViewTotal = 0;
    std::int32_t Total = 0;
    std::int32_t Freq = 22050;
    std::int32_t Width = 0; ///< inner width of the first wave panel, pixels
    double PixelsPerSample = 1.0;
};

// ---- Time scale

/// A black line over the height of the strip at `X`, and `Text` with its origin at (X + 3, 0).
struct ScaleTick {
    double X = 0;
    std::string Text;
};
struct ScaleTicks {
    float Step = 0; ///< seconds between two ticks
    std::vector<ScaleTick> Ticks;
    std::string StartText; ///< printed at (3, 0) without a line when no tick is in the view
};
/// The smallest step of the table that gives a label more than about 65 pixels.
[[nodiscard]] float ScaleStepOf(std::int32_t ViewTotal, std::int32_t Freq,
                                std::int32_t Width) noexcept;
/// The ticks of a view; none for an empty document. A tick less than 30 pixels from the right edge
/// is left out.
[[nodiscard]] ScaleTicks ScaleTicksOf(const ScaleView& View);

/// A play selection beyond the end of the document is taken back to none.
void PlaySelectionLimit(std::int32_t Total) noexcept;

/// A box is filled in gray from (X1, 0) to (X2, height), then outlined in red to height - 1. A
/// point is a red triangle of `Lines` that points right.
struct PlaySelectionShape {
    MarkKind Kind = MarkKind::None;
    double X1 = 0;
    double X2 = 0;
    std::vector<WaveLine> Lines;
};
/// The play selection on a time scale of `Height` pixels.
[[nodiscard]] PlaySelectionShape PlaySelectionShapeOf(const ScaleView& View, std::int32_t Height);

// ---- Overview bar

/// X1 <= X2. A box can be narrower than a pixel; it still shows one.
struct ScrollBox {
    MarkKind Kind = MarkKind::None;
    double X1 = 0; ///< a point is a vertical line over the full height here
    double Y1 = 0;
    double X2 = 0;
    double Y2 = 0;
};
struct ScrollScale {
    ScrollBox View;         ///< filled
    std::int32_t Edge1 = 0; ///< `ScrollEdge`(1) and (2): edges of the view in pixels
    std::int32_t Edge2 = 0;
    ScrollBox Selection;     ///< filled box, or dotted line
    ScrollBox PlaySelection; ///< red outline, or red line
};
/// The overview bar of `InnerWidth` x `InnerHeight` pixels; all empty for an empty document.
[[nodiscard]] ScrollScale ScrollScaleOf(const ScaleView& View, double InnerWidth,
                                        double InnerHeight);

} // namespace quoril
