// The dialog that asks for one or two frequencies.
#pragma once

#include "effects/GeneratorCommands.h"
#include "shell/TwoValues.h"

#include <QDialog>

#include <optional>

namespace quoril {

class EntFrqFrm final : public QDialog {
  public:
    /// Comes up with the given texts.
    explicit EntFrqFrm(const EntFrqEntry& Shown, QWidget* Parent = nullptr);

    bool OkClicked = false;
    [[nodiscard]] EntFrqEntry Entry() const;

  private:
    std::optional<TwoValues> EnterFrqTxt;
};

/// Shows `EntFrqFrm` for the commands while it lives.
class EntFrqAsker final : public EntFrqDialog {
  public:
    EntFrqAsker() { SetEntFrqDialog(this); }
    ~EntFrqAsker() override { SetEntFrqDialog(nullptr); }
    EntFrqAsker(const EntFrqAsker&) = delete;
    EntFrqAsker& operator=(const EntFrqAsker&) = delete;
    EntFrqAnswer ShowEntFrq(const EntFrqEntry& Shown) override;
};

} // namespace quoril
