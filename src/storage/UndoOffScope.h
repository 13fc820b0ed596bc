// Edits of the document that the user cannot take back.
#pragma once

#include "storage/FileMemoClass.h"

namespace quoril {

/// While it lives, edits leave no record in the journal; also a failure ends that.
class UndoOffScope {
  public:
    explicit UndoOffScope(FileMemoClass& Document)
        : Store(Document), Before(Document.SwitchUndoOff) {
        Store.SwitchUndoOff = true;
    }
    ~UndoOffScope() { Store.SwitchUndoOff = Before; }
    UndoOffScope(const UndoOffScope&) = delete;
    UndoOffScope& operator=(const UndoOffScope&) = delete;

  private:
    FileMemoClass& Store;
    bool Before;
};

} // namespace quoril
