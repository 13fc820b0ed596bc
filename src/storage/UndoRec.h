// One record of the undo journal.
#pragma once

#include "storage/WoroFileBlockMod.h"

#include <cstdint>
#include <string>

namespace quoril {

enum UndoKinds : std::int32_t { UndoInsert = 1, UndoDelete = 2, UndoPadding = 3, UndoFormat = 4 };

struct UndoRec {
    std::string UndoName; ///< the command's name; empty unless the last of its step
    std::int32_t UndoKind = 0;
    bool UndoIsLast = false; ///< the record ends a user step
    BlockSet BlocksL;        ///< kind 2: the removed blocks, placed relative to the cut
    BlockSet BlocksR;
    std::int32_t UndoPos = 0;      ///< position; kind 4: the old bits
    std::int32_t UndoChn = 0;      ///< 0 both, 1 left, 2 right; kind 4: the old channels
    std::int32_t UndoLen = 0;      ///< length; kind 4: the old rate
    std::int32_t UndoSelStart = 0; ///< selection and view when the record was made
    std::int32_t UndoSelEnd = 0;
    std::int32_t UndoViewFrom = 0;
    std::int32_t UndoViewTotal = 0;
};

} // namespace quoril
