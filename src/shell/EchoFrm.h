// The dialog that asks for the echo.
#pragma once

#include "effects/EchoCommands.h"

#include <QDialog>
#include <array>

class QGridLayout;
class QLineEdit;

namespace quoril {

class EchoFrm final : public QDialog {
  public:
    /// Shows `Params`, and stores each value there when its field is left; one that makes no sense
    /// is put back. `Params` must live as long as the dialog.
    explicit EchoFrm(EchoParamsRec& Params, QWidget* Parent = nullptr);

    bool OkClicked = false;
    /// Leaves all fields, and with OK writes the setting.
    void done(int Result) override;

  private:
    void AddField(QGridLayout& Rows, std::size_t Field, const char* Caption,
                  const char* AccessibleName);
    void LeaveField(std::size_t Field);

    EchoParamsRec& Shown;
    std::array<QLineEdit*, EchoFields> EcoTxt{};
};

/// Shows `EchoFrm` for the command while it lives.
class EchoAsker final : public EchoDialog {
  public:
    EchoAsker() { SetEchoDialog(this); }
    ~EchoAsker() override { SetEchoDialog(nullptr); }
    EchoAsker(const EchoAsker&) = delete;
    EchoAsker& operator=(const EchoAsker&) = delete;
    bool ShowEcho(EchoParamsRec& Params) override;
};

} // namespace quoril
