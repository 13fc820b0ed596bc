#include "view/ScaleMouse.h"

#include "base/Arithmetic.h"
#include "base/PlayState.h"
#include "base/ViewState.h"
#include "playback/PlayMod.h"

#include <algorithm>
#include <cstdlib>
#include <tuple>
#include <utility>

namespace quoril {

namespace {

std::int32_t PlayAgainCode() noexcept {
    return PlayDirection == -1 ? PlaySelectionRev : PlaySelection;
}

} // namespace

ScaleDeed ScaleAdjust(std::int32_t Position, std::int32_t Total) noexcept {
    if (PlaySelStart == 0) {
        PlaySelStart = Position;
        PlaySelEnd = Total;
    } else if (Distance(Position, PlaySelStart) < Distance(Position, PlaySelEnd)) {
        PlaySelStart = Position;
    } else {
        PlaySelEnd = Position;
    }
    if (PlaySelStart > PlaySelEnd)
        std::swap(PlaySelStart, PlaySelEnd);
    if (!QuickPlay)
        return {0, 0, ScaleAdjustTip};
    return {PlayAgainCode(), 0, {}};
}

void ScaleMouseClass::Press(std::int32_t Position) noexcept {
    ScaleDown = true;
    ScaleDragged = false;
    ScaleAnchor = Position;
}

/// True when the ends had to be swapped: the drag went to the left.
bool ScaleMouseClass::Select(std::int32_t Position, std::int32_t Total) noexcept {
    const std::int32_t Anchor = std::clamp(ScaleAnchor, 1, Total);
    const std::int32_t Here = std::clamp(Position, 1, Total);
    std::tie(PlaySelStart, PlaySelEnd) = std::minmax(Anchor, Here);
    return Here < Anchor;
}

bool ScaleMouseClass::Drag(std::int32_t Position, std::int32_t Total) noexcept {
    if (!ScaleDown || Total < 1)
        return false;
    ScaleDragged = true;
    Select(Position, Total);
    return true;
}

ScaleDeed ScaleMouseClass::Release(std::int32_t Position, std::int32_t Total) noexcept {
    const bool WasDown = ScaleDown;
    const bool WasDragged = ScaleDragged;
    Forget();
    if (!WasDown || Total < 1)
        return {};
    if (WasDragged) {
        const bool Reverse = Select(Position, Total);
        return QuickPlay ? ScaleDeed{Reverse ? PlaySelectionRev : PlaySelection, 0, {}}
                         : ScaleDeed{};
    }
    const bool Inside = PlaySelStart != 0 && PlaySelStart <= Position && Position <= PlaySelEnd;
    if (!Inside)
        PlaySelStart = PlaySelEnd = std::clamp(ScaleAnchor, 1, Total);
    if (!QuickPlay)
        return {0, 0, ScaleClickTip};
    if (!Inside)
        return {PlayAgainCode(), 0, {}};
    return {PlayDirection == -1 ? PlayFromRev : PlayFrom, Position - PlaySelStart, {}};
}

} // namespace quoril
