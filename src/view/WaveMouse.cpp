#include "view/WaveMouse.h"

#include "base/Arithmetic.h"
#include "base/ViewState.h"
#include "selection/DocumentFacts.h"
#include "selection/DurationText.h"
#include "selection/SelectionMod.h"
#include "selection/ViewListener.h"
#include "settings/UserGuideMod.h"
#include "view/WaveGeometry.h"

#include <algorithm>
#include <cstdlib>
#include <fmt/format.h>

namespace quoril {

namespace {

constexpr double AdjustTipChance = 0.01;
constexpr std::int32_t LeastZoomAt = 20;
constexpr double ZoomFactor = 0.6;

void ToolIs(std::int32_t Mode, std::int32_t ViewMode) {
    MouseMode = Mode;
    ViewMouseMode = ViewMode;
    RefreshMousePointer();
}

} // namespace

std::int32_t WavePositionAt(double X) {
    WaveScale Scale;
    Scale.ViewFrom = ViewFrom;
    Scale.PixelsPerSample = PixelsPerSample;
    return Scale.PositionAt(X, CurrentDocument().Total);
}

double WavePlaceAt(double X) {
    return RoundEven(X / PixelsPerSample + ViewFrom);
}

BandColumns BandColumnsOf(std::int32_t From, std::int32_t To, std::int32_t Width) {
    const auto Column = [Width](std::int32_t Position) {
        const double X = RoundEven((static_cast<double>(Position) - ViewFrom) * PixelsPerSample);
        return static_cast<std::int32_t>(std::clamp(X, 0.0, static_cast<double>(Width)));
    };
    return {Column(From), Column(To)};
}

std::string MouseTimeText(std::int32_t Pos, std::int32_t Freq) {
    return FormatSamples(Pos, Freq) + "/" + std::to_string(Pos);
}

std::string MouseLevelText(const std::int16_t* Sample, std::int32_t Height) {
    const std::string Value = Sample == nullptr ? " * "
                              : *Sample < 0     ? fmt::format("-{:05}", -std::int32_t{*Sample})
                                                : fmt::format("{:05}", *Sample);
    return Value + "/" + std::to_string(Height);
}

WaveMouseClass::Ground WaveMouseClass::GroundNow() {
    return {SelStart, SelEnd, MouseMode, ViewMouseMode, CurrentDocument().Total};
}

// ---- Press

void WaveMouseClass::Press(std::int32_t Panel, double X, std::int32_t Button) {
    if (Held != MouseHold::None || (Button != MouseButtonLeft && Button != MouseButtonRight))
        return;
    if (CurrentDocument().Total < 1)
        return;
    Revise();
    LastButton = Button;
    TakePanel(Panel);
    const std::int32_t Pos = WavePositionAt(X);
    if (ViewMouseMode != ViewMouseModeNone)
        return PressWithViewTool(Pos, Button);
    switch (MouseMode) {
    case MouseModeSelect:
    case MouseModeSecondPoint:
        if (Button == MouseButtonLeft)
            PressLeft(Pos);
        else
            Adjust(Pos);
        break;
    case MouseModeStart:
        SelStart = Pos;
        if (SelEnd < SelStart)
            SelEnd = CurrentDocument().Total;
        ToolIs(MouseModeSelect, ViewMouseModeNone);
        Refresh_Wave_View();
        break;
    case MouseModeEnd:
        SelEnd = Pos;
        if (SelStart == 0 || SelStart > SelEnd)
            SelStart = 1;
        ToolIs(MouseModeSelect, ViewMouseModeNone);
        Refresh_Wave_View();
        break;
    case MouseModeDraw:
        Grab(MouseHold::Draw, Pos, MouseMode);
        break;
    default:
        break;
    }
}

void WaveMouseClass::TakePanel(std::int32_t Panel) {
    const auto Channel = static_cast<std::int16_t>(Panel == 2 ? 2 : 1);
    if (SelSingle == Channel)
        return;
    SelSingle = Channel;
    RefreshChannelSelector();
    if (!SelBoth)
        Refresh_Wave_View();
}

void WaveMouseClass::PressWithViewTool(std::int32_t Pos, std::int32_t Button) {
    switch (ViewMouseMode) {
    case ViewMouseModeZoomStart:
        ViewAll = false;
        ZoomFrom = Pos;
        ToolIs(MouseMode, ViewMouseModeZoomEnd);
        break;
    case ViewMouseModeZoomEnd:
        PressZoomEnd(Pos);
        break;
    case ViewMouseModeZoomAt:
        PressZoomAt(Pos, Button);
        break;
    case ViewMouseModePan:
        if (Button == MouseButtonLeft)
            Grab(MouseHold::Pan, Pos, MouseMode);
        break;
    default:
        break;
    }
}

void WaveMouseClass::PressZoomEnd(std::int32_t Pos) {
    ViewAll = false;
    ZoomTo = std::max(ZoomFrom, Pos);
    ZoomFrom = std::min(ZoomFrom, Pos);
    ViewTotal = SubLong(ZoomTo, ZoomFrom);
    ViewFrom = ZoomFrom;
    ToolIs(MouseMode, ViewMouseModeNone);
    Refresh_Wave_View();
}

void WaveMouseClass::PressZoomAt(std::int32_t Pos, std::int32_t Button) {
    const std::int32_t Total = CurrentDocument().Total;
    ViewAll = false;
    if (Button == MouseButtonLeft && ViewTotal > LeastZoomAt)
        ViewTotal = RoundToLong(ViewTotal * ZoomFactor);
    else if (Button == MouseButtonRight && ViewTotal < Total)
        // The refresh would limit it to that, too, but not every number before the limit has room.
        ViewTotal = RoundToLong(std::min(ViewTotal / ZoomFactor, static_cast<double>(Total)));
    ViewFrom = RoundToLong(Pos - ViewTotal / 2.0);
    Refresh_Wave_View();
}

void WaveMouseClass::PressLeft(std::int32_t Pos) {
    const std::int32_t Before = MouseMode;
    DragFrom = DragTo = Pos;
    if (Before == MouseModeSelect) {
        HadRange = SelStart < SelEnd;
        MouseMode = MouseModeSecondPoint;
    } else if (Pos != SelStart) {
        DragFrom = std::min(SelStart, Pos);
        DragTo = std::max(SelStart, Pos);
        MouseMode = MouseModeSelect;
    }
    Grab(MouseHold::Select, Pos, Before);
    RefreshMousePointer();
    RefreshDisplayLabels(true);
}

void WaveMouseClass::Adjust(std::int32_t Pos) {
    const bool SecondPoint = MouseMode == MouseModeSecondPoint;
    if (SelStart == 0) {
        SelStart = 1;
        SelEnd = Pos;
    } else if (Distance(SelStart, Pos) >= Distance(SelEnd, Pos)) {
        SelEnd = Pos;
    } else {
        SelStart = Pos;
    }
    if (SecondPoint)
        ToolIs(MouseModeSelect, ViewMouseModeNone);
    Refresh_Wave_View();
    if (SecondPoint && GuideChance(AdjustTipChance))
        UserGuide("A left click at two places, one after the other, selects what lies between. A "
                  "right click moves the nearer end of the selection.");
}

void WaveMouseClass::Grab(MouseHold Kind, std::int32_t Pos, std::int32_t ModeBefore) {
    Held = Kind;
    DragSeen = false;
    DownPos = Pos;
    MoveWait = true;
    ModeAtPress = ModeBefore;
    AtPress = GroundNow();
}

// ---- Move and release

bool WaveMouseClass::Move(double X) {
    if (Held == MouseHold::None || GroundLost() || Held == MouseHold::Draw)
        return false;
    const std::int32_t Pos = WavePositionAt(X);
    if (Held == MouseHold::Pan) {
        Pan(Pos);
        return false;
    }
    DragSeen = true;
    DragFrom = std::min(DownPos, Pos);
    DragTo = std::max(DownPos, Pos);
    RefreshDisplayLabels(true);
    return true;
}

void WaveMouseClass::Pan(std::int32_t Pos) {
    const std::int64_t Last = static_cast<std::int64_t>(CurrentDocument().Total) - ViewTotal + 1;
    const std::int64_t Wanted = static_cast<std::int64_t>(ViewFrom) + DownPos - Pos;
    const auto NewFrom = static_cast<std::int32_t>(
        std::clamp<std::int64_t>(Wanted, 1, std::max<std::int64_t>(Last, 1)));
    if (NewFrom == ViewFrom)
        return;
    ViewFrom = NewFrom;
    Refresh_Wave_View();
}

bool WaveMouseClass::Release(double X, std::int32_t Button) {
    if (Button != LastButton || Held == MouseHold::None || GroundLost())
        return false;
    const bool Selecting = Held == MouseHold::Select;
    const bool RangeBefore = HadRange;
    if (Selecting)
        Select(WavePositionAt(X));
    Clear();
    if (!Selecting)
        return true;
    RefreshMousePointer();
    Refresh_Wave_View();
    if (RangeBefore && SelStart == SelEnd)
        UserGuide("A left click clears the earlier selection and sets a new first point. A right "
                  "click adjusts a selection.");
    return true;
}

void WaveMouseClass::Select(std::int32_t Pos) {
    if (DragSeen && Pos != DownPos) {
        SelStart = std::min(DownPos, Pos);
        SelEnd = std::max(DownPos, Pos);
        MouseMode = MouseModeSelect;
        return;
    }
    SelStart = DragFrom;
    SelEnd = DragTo;
}

void WaveMouseClass::DoubleClick(std::int32_t Panel, double X, std::int32_t Button) {
    if (Held != MouseHold::None || CurrentDocument().Total < 1)
        return;
    const bool SelectsAll = Button == MouseButtonLeft && LastButton != MouseButtonRight &&
                            ViewMouseMode == ViewMouseModeNone && MouseMode != MouseModeDraw;
    if (!SelectsAll)
        return Press(Panel, X, Button);
    TakePanel(Panel);
    SelectAllSamples();
}

// ---- When something comes between

void WaveMouseClass::Clear() noexcept {
    Held = MouseHold::None;
    DragSeen = false;
    HadRange = false;
    MoveWait = false;
}

void WaveMouseClass::Abandon() {
    if (Held == MouseHold::None)
        return;
    const bool Panning = Held == MouseHold::Pan;
    Clear();
    if (Panning)
        return;
    if (MouseMode == AtPress.Mode)
        MouseMode = ModeAtPress;
    Revise();
    RefreshMousePointer();
    Refresh_Wave_View();
}

bool WaveMouseClass::GroundLost() {
    if (!Revise())
        return false;
    RefreshMousePointer();
    Refresh_Wave_View();
    return true;
}

bool WaveMouseClass::Revise() {
    bool Changed = false;
    if ((Held == MouseHold::Select || Held == MouseHold::Draw) && GroundNow() != AtPress) {
        Clear();
        if (MouseMode == AtPress.Mode && MouseMode == MouseModeSecondPoint)
            MouseMode = MouseModeSelect;
        Changed = true;
    }
    if (Held == MouseHold::Pan && ViewMouseMode != ViewMouseModePan) {
        Clear();
        Changed = true;
    }
    if (Held == MouseHold::None && MouseMode == MouseModeSecondPoint && SelStart == 0) {
        MouseMode = MouseModeSelect;
        Changed = true;
    }
    return Changed;
}

} // namespace quoril
