#include "view/MousePointer.h"

#include "view/WaveMouse.h"

#include <algorithm>
#include <array>

namespace quoril {

namespace {

struct PointerRow {
    bool OfView;
    std::int32_t Mode;
    PointerLook Look;
};
using enum PointerImage;
constexpr WaveColor First = WaveColor::LineCursorColor;
constexpr WaveColor Second = WaveColor::SecPtSelLineCursorColor;

constexpr std::array<PointerRow, 9> PointerTable = {{
    {true, ViewMouseModeZoomStart, {ZoomStartMouseImg, true, First}},
    {true, ViewMouseModeZoomEnd, {ZoomEndMouseImg, true, Second}},
    {true, ViewMouseModeZoomAt, {ZoomInMouseImg, true, First}},
    {true, ViewMouseModePan, {PanMouseImg, true, First}},
    {false, MouseModeStart, {SelStartMouseImg, true, First}},
    {false, MouseModeEnd, {SelEndMouseImg, true, Second}},
    {false, MouseModeDraw, {DrawMouseImg, false, First}},
    {false, MouseModeSecondPoint, {Normal, true, Second}},
    {false, MouseModeSelect, {Normal, true, First}},
}};

} // namespace

PointerLook PointerLookOf(std::int32_t Mode, std::int32_t ViewMode) noexcept {
    const bool OfView = ViewMode != ViewMouseModeNone;
    const std::int32_t Wanted = OfView ? ViewMode : Mode;
    const auto* Found =
        std::find_if(PointerTable.begin(), PointerTable.end(), [&](const PointerRow& Row) {
            return Row.OfView == OfView && Row.Mode == Wanted;
        });
    return Found == PointerTable.end() ? PointerLook{} : Found->Look;
}

} // namespace quoril
