// The commands that change the length of the document and compute no sound: whatever the lengths,
// no sample is read or written.
#pragma once

#include <cstdint>

namespace quoril {

/// The length of the last silence inserted, in samples; 0 before the first one.
extern std::int32_t LastSilenceLen;

// Each works on `WaveStore`, is one undo step, and redraws the view. A failure passes through.

/// `Edit_Trim_Mnu`: keeps the selection and drops what is before and behind it.
void EditTrim();
/// `Insert_Silence_Mnu`: as long as the selected range and before it, or of an asked length at the
/// selected point.
void InsertSilence();
/// `Format_Size_Mnu`: asks for the length that the document is to have; cuts its end, or adds
/// silence to it.
void ChangeSize();

} // namespace quoril
