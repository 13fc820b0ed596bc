// The dialog that asks how much longer or faster the selection is to be.
#pragma once

#include "effects/StretchCommands.h"
#include "shell/TwoValues.h"

#include <QDialog>

#include <optional>

class QCheckBox;

namespace quoril {

class EntStrchFrm final : public QDialog {
  public:
    /// For the stretch (index 0) or the tempo (1), beginning with `Shown`.
    EntStrchFrm(std::int32_t Index, const StretchEntry& Shown, QWidget* Parent = nullptr);

    bool OkClicked = false;
    [[nodiscard]] StretchEntry Entry() const;

  private:
    std::optional<TwoValues> EnterValTxt;
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
