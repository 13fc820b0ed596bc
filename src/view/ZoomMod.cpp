#include "view/ZoomMod.h"

#include "base/Arithmetic.h"
#include "base/MsgBoxMod.h"
#include "base/ViewState.h"
#include "selection/DocumentFacts.h"
#include "selection/ViewListener.h"

#include <algorithm>

namespace quoril {
namespace {

constexpr std::int32_t LeastZoomIn = 21;
constexpr std::int32_t LeastViewTotal = 10;

std::int64_t ViewPast() noexcept {
    return static_cast<std::int64_t>(ViewFrom) + ViewTotal;
}

/// Brings a zoomed view back into the document and takes it. The numbers may pass 32 bits on the
/// way: a long document can be zoomed out to its whole length.
void ZoomTake(double From, double Samples, std::int32_t Total) {
    From = std::max(RoundEven(From), 1.0);
    Samples = RoundEven(Samples);
    if (From + Samples > Total) {
        const double Back = From == 1.0 ? 0.0 : Total - Samples;
        if (Back < 1.0)
            Samples = Total;
        From = std::max(Back, 1.0);
    }
    const std::int32_t NewTotal = RoundToLong(Samples);
    ViewFrom = RoundToLong(From);
    ViewTotal = NewTotal;
}

void ZoomIn(std::int32_t Total) {
    if (ViewTotal >= LeastZoomIn)
        ZoomTake(ViewFrom + ViewTotal * 0.2, ViewTotal * 0.6, Total);
}

void ZoomOut(std::int32_t Total) {
    if (ViewTotal < Total)
        ZoomTake(ViewFrom - ViewTotal / 3.0, ViewTotal / 0.6, Total);
}

void ZoomOneToOne(std::int32_t Total, std::int32_t PanelWidth) {
    ViewTotal = PanelWidth;
    ViewFrom = std::max(std::min(ViewFrom, SubLong(Total, ViewTotal)), 1);
}

void ZoomSelected(std::int32_t Total) {
    if (SelStart == 0) {
        MsgBox("No selection found");
        return;
    }
    const std::int32_t End = SelStart == SelEnd ? Total : SelEnd;
    const std::int32_t NewTotal = SubLong(End, SelStart);
    ViewFrom = SelStart;
    ViewTotal = NewTotal;
}

} // namespace

void ZoomCommand(std::int16_t Code, std::int32_t PanelWidth) {
    if (Code < ZoomCodeIn || Code > ZoomCodeSelected)
        return;
    const std::int32_t Total = CurrentDocument().Total;
    ViewAll = false;
    if (Code == ZoomCodeIn)
        ZoomIn(Total);
    else if (Code == ZoomCodeOut)
        ZoomOut(Total);
    else if (Code == ZoomCodeOneToOne)
        ZoomOneToOne(Total, PanelWidth);
    else if (Code == ZoomCodeAll)
        ViewAll = ViewTotal < Total;
    else
        ZoomSelected(Total);
    Refresh_Wave_View();
}

void ViewTool(std::int32_t Mode) {
    ViewMouseMode = Mode;
    RefreshMousePointer();
}

void ZoomMenu(std::int32_t Index, std::int32_t PanelWidth) {
    switch (Index) {
    case 0:
        return ViewTool(ViewToolZoom);
    case 1:
        return ViewTool(ViewToolZoomAtMouse);
    case 2:
        return ZoomCommand(ZoomCodeIn, PanelWidth);
    case 3:
        return ZoomCommand(ZoomCodeOut, PanelWidth);
    case 4:
        return ZoomCommand(ZoomCodeOneToOne, PanelWidth);
    default:
        return;
    }
}

void ViewLimitsApply(std::int32_t Total) noexcept {
    if (Total < 1)
        return;
    if (ViewAll || ViewTotal >= Total) {
        ViewFrom = 1;
        ViewTotal = Total;
    } else if (ViewTotal < LeastViewTotal) {
        ViewTotal = LeastViewTotal;
    }
    if (ViewPast() > Total)
        ViewFrom = Total - ViewTotal + 1;
    ViewFrom = std::max(ViewFrom, 1);
    if (ViewTotal == Total && ViewFrom == 1)
        ViewAll = true;
}

std::int32_t ViewEndOf(std::int32_t Total) noexcept {
    return static_cast<std::int32_t>(
        std::clamp<std::int64_t>(ViewPast(), std::min(Total, 0), Total));
}

void DrawToolLimit(std::int32_t Freq) noexcept {
    constexpr std::int32_t DrawTool = 7;
    if (MouseMode == DrawTool && ViewTotal > Freq)
        MouseMode = 0;
}

} // namespace quoril
