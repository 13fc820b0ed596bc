// The window of a guide tip.
#pragma once

#include "settings/UserGuideMod.h"

#include <QDialog>
#include <functional>

class QCheckBox;

namespace quoril {

class UserGuideFrm final : public QDialog {
  public:
    UserGuideFrm(const GuideTip& Tip, QWidget* Parent);

    [[nodiscard]] bool IKnow() const;

  protected:
    /// Help lines while the pointer is over a control.
    bool eventFilter(QObject* Watched, QEvent* Event) override;

  private:
    QCheckBox* IKnowChk;
};

/// Shows the tips of settings/UserGuideMod.h, and names itself as who does while it lives.
class UserGuideWindows final : public UserGuideWindow {
  public:
    /// `ShowStatus` sets the help line of the main window; it is not called while there is none.
    explicit UserGuideWindows(std::function<void(const std::string&)> ShowStatus);
    ~UserGuideWindows() override;
    UserGuideWindows(const UserGuideWindows&) = delete;
    UserGuideWindows& operator=(const UserGuideWindows&) = delete;

    bool ShowGuideTip(const GuideTip& Tip) override;
    void ShowStatusGuide(const std::string& Message) override;

  private:
    std::function<void(const std::string&)> SetStatus;
};

} // namespace quoril
