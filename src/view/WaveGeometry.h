// Where things lie on the wave panels: heights, scales, visited samples, selection and bookmarks.
// Pure functions; the window only draws what they give. Pixels are those of the panel, x to the
// right and y downward, from 0.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace quoril {

// ---- Layout

/// Heights in whole pixels. For a mono document panel 2 is hidden and without height.
struct WaveLayout {
    std::int32_t ScaleTop = 0;
    std::int32_t Top1 = 0;
    std::int32_t Height1 = 0;
    std::int32_t Top2 = 0;
    std::int32_t Height2 = 0;
    bool Visible2 = false;
};
/// The strip of tools ends at `TopFrameBottom`, the overview bar begins at `HScrollTop`. Mono:
/// scale, panel. Stereo: panel 1, scale, panel 2, which takes an odd pixel. No height is negative.
[[nodiscard]] WaveLayout WaveLayoutOf(std::int32_t TopFrameBottom, std::int32_t HScrollTop,
                                      std::int32_t ScaleHeight, bool Stereo) noexcept;

// ---- Scales

/// (`Width` - 1) / `ViewTotal`. A panel of one pixel counts as two, an empty view as one sample, so
/// that a division by it is always possible.
[[nodiscard]] double PixelsPerSampleOf(std::int32_t Width, std::int32_t ViewTotal) noexcept;
/// (`Height` - 1) / 65536, or / 256 at 8 bits; never below 0.000001.
[[nodiscard]] double PixelsPerUnitOf(std::int32_t Height, std::int32_t Bits) noexcept;
/// `Height` / 2, not rounded.
[[nodiscard]] double ZeroLineYOf(std::int32_t Height) noexcept;

/// From samples to pixels and back for one panel.
struct WaveScale {
    std::int32_t ViewFrom = 1;
    double PixelsPerSample = 1.0;
    double PixelsPerUnit = 0.000001;
    double ZeroLineY = 0.0;

    [[nodiscard]] double XOf(std::int32_t Position) const noexcept {
        return (static_cast<double>(Position) - ViewFrom) * PixelsPerSample;
    }
    [[nodiscard]] double YOf(std::int32_t Value) const noexcept {
        return ZeroLineY - Value * PixelsPerUnit;
    }
    /// The sample under a pixel, limited to 1 and `Total`; 0 for an empty document.
    [[nodiscard]] std::int32_t PositionAt(double X, std::int32_t Total) const noexcept;
    /// The value under a pixel, limited to 32 bits.
    [[nodiscard]] std::int32_t ValueAt(double Y) const noexcept;
};
/// The scale of a panel of `Width` x `Height` pixels for the view in base/ViewState.h.
[[nodiscard]] WaveScale WaveScaleOf(std::int32_t Width, std::int32_t Height,
                                    std::int32_t Bits) noexcept;

// ---- Which samples are drawn, and how

/// 0.85 of the samples that fall on a pixel, at least 1, rounded.
[[nodiscard]] std::int32_t StepOf(double PixelsPerSample) noexcept;
/// The positions that the loops visit: from `ViewFrom` (at least 1) in steps, up to `ViewEnd`.
[[nodiscard]] std::vector<std::int32_t> VisitedPositions(std::int32_t ViewFrom,
                                                         std::int32_t ViewEnd, std::int32_t Step);

/// What a drawing style of 1 to 5 draws.
[[nodiscard]] bool StyleHasBars(std::int32_t Style) noexcept;
[[nodiscard]] bool StyleHasLines(std::int32_t Style) noexcept;
/// Bars are mirrored about the zero line, instead of standing on it.
[[nodiscard]] bool StyleIsUniform(std::int32_t Style) noexcept;
/// Samples are marked by dots: the line graph, when more than a pixel falls on a sample.
[[nodiscard]] bool StyleHasDots(std::int32_t Style, double PixelsPerSample) noexcept;

// ---- Selection and bookmarks

enum class MarkKind : std::uint8_t { None, Point, Box };
/// A point is a dashed line from y 2 to height - 2 at X1; a box is filled from (X1, -1) to
/// (X2, height), X1 <= X2.
struct SelectionMark {
    MarkKind Kind = MarkKind::None;
    double X1 = 0;
    double X2 = 0;
};
/// The selection on panel 1 or 2 (`Panel`), for the working channels `WorkChn` (0 both).
[[nodiscard]] SelectionMark SelectionMarkOf(std::int32_t Panel, std::int32_t WorkChn,
                                            const WaveScale& Scale, std::int32_t ViewEnd) noexcept;

struct WaveLine {
    double X1 = 0;
    double Y1 = 0;
    double X2 = 0;
    double Y2 = 0;
};
/// The dotted lines of a bookmark and the origin of its name.
struct BookmarkShape {
    double TextX = 0;
    double TextY = 0;
    std::vector<WaveLine> Lines;
};
/// A bookmark from `From` to `To`; a `To` that is not beyond `From` makes a flag. Not limited to
/// the view: the panel clips.
[[nodiscard]] BookmarkShape BookmarkShapeOf(std::int32_t From, std::int32_t To,
                                            const WaveScale& Scale, std::int32_t Height);

} // namespace quoril
