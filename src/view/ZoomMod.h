// What the user sees: the zoom commands, the tools of the view, and the limits of the view.
#pragma once

#include <cstdint>

namespace quoril {

/// Codes of ZoomCommand.
inline constexpr std::int16_t ZoomCodeIn = 1;
inline constexpr std::int16_t ZoomCodeOut = 2;
inline constexpr std::int16_t ZoomCodeOneToOne = 3;
inline constexpr std::int16_t ZoomCodeAll = 4;
inline constexpr std::int16_t ZoomCodeSelected = 5;

/// Runs a zoom command and refreshes the view; another code does nothing. `PanelWidth` is the inner
/// width of the first wave panel in pixels, used by Zoom 1:1.
/// Throws Failure when a number leaves 32 bits; the numbers stay as they stood at that moment.
void ZoomCommand(std::int16_t Code, std::int32_t PanelWidth);

/// The tools of the view: 4 zoom by two clicks, 6 zoom in and out at the mouse, 8 pan.
inline constexpr std::int32_t ViewToolZoom = 4;
inline constexpr std::int32_t ViewToolZoomAtMouse = 6;
inline constexpr std::int32_t ViewToolPan = 8;
/// Takes one of the tools.
void ViewTool(std::int32_t Mode);
/// `Zoom_Mnu`: index 0 Zoom with mouse, 1 Zoom in at mouse, 2 in, 3 out, 4 1:1. Another index does
/// nothing.
void ZoomMenu(std::int32_t Index, std::int32_t PanelWidth);

/// The limits that a refresh applies to the view of a document of `Total` samples, in their order.
/// Never fails, whatever the numbers were. An empty document changes nothing.
void ViewLimitsApply(std::int32_t Total) noexcept;

/// The last position that a refresh visits: `ViewFrom` + `ViewTotal`, at most `Total`.
[[nodiscard]] std::int32_t ViewEndOf(std::int32_t Total) noexcept;

/// Drops the Draw tool when the view spans more than a second.
void DrawToolLimit(std::int32_t Freq) noexcept;

/// Views wider than this are drawn under the hourglass: three minutes at 44100 Hz.
inline constexpr std::int32_t HourglassViewTotal = 7938000;

} // namespace quoril
