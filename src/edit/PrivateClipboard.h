// The private clipboard: copied sound stays in the files that it lies in. The desktop's clipboard
// gets one line of text, and two small files tell other processes which blocks make up the clip.
#pragma once

#include "storage/BlockCarrBuffClass.h"

#include <cstdint>
#include <memory>

namespace quoril {

/// The clip that this process holds; null without one. A clip of one channel is always left.
extern std::unique_ptr<BlockCarrBuffClass> ClipCarrL;
extern std::unique_ptr<BlockCarrBuffClass> ClipCarrR;
/// The random number of that clip; 0 for none.
extern std::int32_t ClipPointer;

/// Copies what the carriers hold. `WorkChn`: 0 both, 1 left, 2 right; `Bits` and `Freq` of the
/// source. The carriers stay the caller's. False when that failed: then the user has been told
/// why, and no clip is held; or when the user finds the disk too full, and all is as before.
bool PutClipboard(std::int32_t WorkChn, std::int32_t Bits, std::int32_t Freq,
                  const BlockCarrBuffClass* CarrL, const BlockCarrBuffClass* CarrR);

/// Gives new carriers with the clip for a paste into the document's channels `WorkChn`, in the
/// document's bits. A channel that is not wanted has none. False when there is no clip or it cannot
/// be had, which the user has been told.
bool GetClipboard(std::unique_ptr<BlockCarrBuffClass>& CarrL,
                  std::unique_ptr<BlockCarrBuffClass>& CarrR, std::int32_t WorkChn);

/// For the end of the program: the clip goes, and with it the line that leads other processes to
/// it, if it is still there.
void ClearClipboard();

} // namespace quoril
