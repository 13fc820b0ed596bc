// The pictures of the time scale and of the overview bar.
#pragma once

#include "view/TimeScale.h"

#include <QFont>
#include <QImage>

namespace quoril {

/// The play selection and the ticks over a cleared time scale. Sizes in `View` are pixels of the
/// screen; a label's width and its distances are multiplied by `PixelRatio`.
void DrawPlayScale(QImage& Picture, const ScaleView& View, double PixelRatio, const QFont& Font);
/// View, selection and play selection over a cleared overview bar.
void DrawScrollScale(QImage& Picture, const ScrollScale& What, double PixelRatio);

} // namespace quoril
