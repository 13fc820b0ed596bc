#include "base/DocumentState.h"

namespace quoril {

WaveFormat CurrentFormat;
bool WaveChanged = false;
bool BookmarkChanged = false;
bool UndoOptionON = true;

} // namespace quoril
