// The row of buttons that closes a dialog with "OK" or "Cancel".
#pragma once

class QDialog;
class QVBoxLayout;

namespace quoril {

/// Adds `OkBtn`, the default button, which sets `OkClicked` and accepts, and `CancelBtn`, which
/// rejects, at the end of a column. `OkClicked` must live as long as the dialog.
void AddOkCancelRow(QDialog& Dialog, QVBoxLayout& Column, bool& OkClicked,
                    const char* OkCaption = "&OK");

} // namespace quoril
