// The dialog that asks what becomes of two channels.
#pragma once

#include "effects/FormatCommands.h"

#include <QDialog>

class QButtonGroup;

namespace quoril {

class CompMonoFrm final : public QDialog {
  public:
    /// Comes up with both channels to be merged.
    explicit CompMonoFrm(QWidget* Parent = nullptr);

    bool OkClicked = false;
    /// The index of the chosen `MonoOpn`.
    [[nodiscard]] std::int32_t Choice() const;

  private:
    QButtonGroup* MonoOpn;
};

/// Shows `CompMonoFrm` for the command while it lives.
class CompMonoAsker final : public CompMonoDialog {
  public:
    CompMonoAsker() { SetCompMonoDialog(this); }
    ~CompMonoAsker() override { SetCompMonoDialog(nullptr); }
    CompMonoAsker(const CompMonoAsker&) = delete;
    CompMonoAsker& operator=(const CompMonoAsker&) = delete;
    CompMonoAnswer ShowCompMono() override;
};

} // namespace quoril
