// The dialog that asks how much longer or faster the selection is to be.
#pragma once

#include "effects/StretchCommands.h"

#include <QDialog>
#include <array>

class QCheckBox;
class QGridLayout;
class QLineEdit;

namespace quoril {

class EntStrchFrm final : public QDialog {
  public:
    /// For the stretch (index 0) or the tempo (1), beginning with `Shown`.
    EntStrchFrm(std::int32_t Index, const StretchEntry& Shown, QWidget* Parent = nullptr);

    bool OkClicked = false;
    [[nodiscard]] StretchEntry Entry() const;

  private:
    QLineEdit* AddValue(QGridLayout& Values, int Number, const char* Caption,
                        const char* AccessibleName);
    /// The second value can be entered, or is the first one.
    void UseTwo(bool Two);

    std::array<QLineEdit*, 3> EnterValTxt{}; ///< from index 1
    QCheckBox* UseTwoChk;
    QCheckBox* MoveAudioChk;
};

/// Shows `EntStrchFrm` for the commands while it lives.
class StretchAsker final : public StretchDialog {
  public:
    StretchAsker() { SetStretchDialog(this); }
    ~StretchAsker() override { SetStretchDialog(nullptr); }
    StretchAsker(const StretchAsker&) = delete;
    StretchAsker& operator=(const StretchAsker&) = delete;
    StretchAnswer ShowStretch(std::int32_t Index, const StretchEntry& Shown) override;
};

} // namespace quoril
