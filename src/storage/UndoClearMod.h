// Dropping undo data by the user's choice, the oldest steps first.
#pragma once

#include "storage/FileMemoClass.h"

#include <cstdint>
#include <string>
#include <vector>

namespace quoril {

/// Results of the dialog: 0 closed, otherwise the index of the button.
enum UndoClearResults : std::int32_t {
    UndoClearClosed = 0,
    UndoClearFirst = 1,
    UndoClearUpToSelected = 2,
    UndoClearAll = 3
};

struct UndoClearAnswer {
    std::int32_t Result = UndoClearClosed;
    std::size_t Selected = 0; ///< index in the list, from 0; meant only for UndoClearUpToSelected
};

/// Implemented by `UndoClearFrm`, and by tests.
class UndoClearDialog {
  public:
    virtual ~UndoClearDialog() = default;
    /// Shows the names of the steps, the oldest first, and waits for an answer. Never asked with an
    /// empty list.
    virtual UndoClearAnswer ShowUndoClear(const std::vector<std::string>& Names) = 0;
    /// No further question follows.
    virtual void UndoClearDone() = 0;
};

/// Names who asks from now on; the object must outlive its use. With null the question counts as
/// closed.
void SetUndoClearDialog(UndoClearDialog* Receiver) noexcept;

/// Asks what to drop, and drops it, until the user closes the dialog or nothing is left.
void UndoClearFiles_UserAssisted(FileMemoClass& Store);

// ---- Words of the dialog

inline constexpr const char* UndoClearSelectFirst =
    "Please select an item in the list and\nclick \"Clear up to selected item\"";

} // namespace quoril
