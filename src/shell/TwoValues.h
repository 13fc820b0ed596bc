// The fields of a dialog for one value or for two, at the start and at the end of the selection.
#pragma once

#include <QString>

#include <string>

class QCheckBox;
class QDialog;
class QLineEdit;
class QVBoxLayout;

namespace quoril {

/// Their texts. Without `UseTwo` the end is what the start is.
struct TwoTexts {
    std::string Start;
    std::string End;
    bool UseTwo = false;
};

/// "Start:" and "End:" side by side, with the check box "Use Two Values" below. While that is clear
/// the second field is locked and follows the first. The dialog owns the controls.
class TwoValues {
  public:
    /// Adds them to a column, with the focus in the first field. The fields are named `Name` with
    /// "_1" and "_2"; a screen reader calls them `Quantity` "at the start" and "at the end", with
    /// the `Range` behind.
    TwoValues(QDialog& Dialog, QVBoxLayout& Column, const char* Name, const char* Quantity,
              const char* Range, const TwoTexts& Shown);

    [[nodiscard]] TwoTexts Texts() const;

  private:
    QLineEdit* Start;
    QLineEdit* End;
    QCheckBox* UseTwoChk;
};

} // namespace quoril
