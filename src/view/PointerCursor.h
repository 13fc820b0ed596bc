// The pointers of the tools as the window system shows them.
#pragma once

#include "view/MousePointer.h"

#include <QCursor>

namespace quoril {

/// The pointer of an image, drawn for a screen of that scale. Dark lines with a light edge, so that
/// it can be seen over every colour.
[[nodiscard]] QCursor PointerCursor(PointerImage Image, double PixelRatio);

} // namespace quoril
