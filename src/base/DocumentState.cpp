#include "base/DocumentState.h"

#include <algorithm>

namespace quoril {

WaveFormat CurrentFormat;
bool WaveChanged = false;
bool BookmarkChanged = false;
bool UndoOptionON = true;

std::int32_t CustomRate() noexcept {
    const bool Listed = std::ranges::find(MenuRates, CurrentFormat.Freq) != MenuRates.end();
    return Listed ? 0 : CurrentFormat.Freq;
}

} // namespace quoril
