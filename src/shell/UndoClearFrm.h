// The dialog that drops undo data.
#pragma once

#include "storage/UndoClearMod.h"

#include <QDialog>
#include <memory>

class QListWidget;

namespace quoril {

class UndoClearFrm final : public QDialog {
  public:
    explicit UndoClearFrm(QWidget* Parent);

    /// Fills `AvailList`; nothing is selected.
    void Fill(const std::vector<std::string>& Names);
    [[nodiscard]] const UndoClearAnswer& Answer() const noexcept { return Chosen; }

  private:
    void ButtonClicked(std::int32_t Index);

    QListWidget* AvailList;
    UndoClearAnswer Chosen;
};

/// Shows the dialog for the routines of storage/UndoClearMod.h, and names itself as who does while
/// it lives. One window serves all questions of a run, so that it stays where the user put it.
class UndoClearWindow final : public UndoClearDialog {
  public:
    UndoClearWindow() { SetUndoClearDialog(this); }
    ~UndoClearWindow() override { SetUndoClearDialog(nullptr); }
    UndoClearWindow(const UndoClearWindow&) = delete;
    UndoClearWindow& operator=(const UndoClearWindow&) = delete;

    UndoClearAnswer ShowUndoClear(const std::vector<std::string>& Names) override;
    void UndoClearDone() override { Window.reset(); }

  private:
    std::unique_ptr<UndoClearFrm> Window;
};

} // namespace quoril
