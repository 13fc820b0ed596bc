#include "base/ViewState.h"

namespace quoril {

std::int32_t SelStart = 0;
std::int32_t SelEnd = 0;
std::int32_t PlaySelStart = 0;
std::int32_t PlaySelEnd = 0;
std::int32_t ViewFrom = 1;
std::int32_t ViewTotal = 0;
bool ViewAll = true;
bool SelBoth = true;
std::int16_t SelSingle = 1;
std::int32_t MouseMode = 0;
std::int32_t ViewMouseMode = 0;
std::int32_t ZoomFrom = 0;
std::int32_t ZoomTo = 0;
double PixelsPerSample = 1.0;
std::int32_t ShowHhmmss = 1;

} // namespace quoril
