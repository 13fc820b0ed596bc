// The dialog that asks how two stretches are to overlap.
#pragma once

#include "edit/LapMod.h"

#include <QDialog>

class QButtonGroup;

namespace quoril {

class LapFrm final : public QDialog {
  public:
    /// Comes up with the choice of the last time.
    explicit LapFrm(QWidget* Parent = nullptr);
    /// Keeps the choice for the next time, also after Cancel.
    ~LapFrm() override;
    LapFrm(const LapFrm&) = delete;
    LapFrm& operator=(const LapFrm&) = delete;

    bool OkClicked = false;
    [[nodiscard]] LapChoice Choice() const;

  private:
    QButtonGroup* SelcOpn;
    QButtonGroup* TransOpn;
};

/// Shows `LapFrm` for the command while it lives.
class LapAsker final : public LapDialog {
  public:
    LapAsker() { SetLapDialog(this); }
    ~LapAsker() override { SetLapDialog(nullptr); }
    LapAsker(const LapAsker&) = delete;
    LapAsker& operator=(const LapAsker&) = delete;
    LapAnswer ShowLap() override;
};

} // namespace quoril
