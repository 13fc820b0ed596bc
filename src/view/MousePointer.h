// How each tool looks: the pointer, and the line cursors that follow the mouse.
#pragma once

#include "view/ColorSettings.h"

#include <cstdint>

namespace quoril {

enum class PointerImage : std::uint8_t {
    Normal,
    ZoomStartMouseImg,
    ZoomEndMouseImg,
    ZoomInMouseImg,
    PanMouseImg,
    SelStartMouseImg,
    SelEndMouseImg,
    DrawMouseImg
};

struct PointerLook {
    PointerImage Image = PointerImage::Normal;
    bool LineOn = true; ///< the line cursors are shown
    WaveColor LineColor = WaveColor::LineCursorColor;
};

/// The look of the tool that these modes stand for; a tool of the view goes before the others.
[[nodiscard]] PointerLook PointerLookOf(std::int32_t Mode, std::int32_t ViewMode) noexcept;

} // namespace quoril
