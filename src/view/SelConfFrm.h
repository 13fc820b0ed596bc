// The dialog that asks for a selection that fits a command.
#pragma once

#include "selection/SelectionMod.h"

#include <QDialog>

#include <vector>

class QButtonGroup;
class QLabel;
class QRadioButton;

namespace quoril {

class SelConfFrm final : public QDialog {
  public:
    explicit SelConfFrm(QWidget* Parent = nullptr);

    std::int32_t SelectNeed = 0;      ///< 1 one point, 2 two points, 3 one or two
    std::int32_t SelectAvailable = 0; ///< 0 nothing, 1 a point, 2 a range
    bool OkClicked = false;

    /// Shows the texts and the one frame of options that fit the two numbers, the option of index 0
    /// chosen.
    void UpdateForm();
    /// The index of the chosen option in the visible frame; -1 when there is none.
    [[nodiscard]] std::int32_t ChosenOption() const;

  private:
    QButtonGroup* FrameOf(const char* Name, QWidget* Parent);

    struct OptionFrame {
        const char* Name;
        QWidget* Frame;
        QButtonGroup* Options;
    };
    QLabel* NeedLbl;
    QLabel* AvailLbl;
    std::vector<OptionFrame> Frames;
    QButtonGroup* Visible = nullptr;
};

/// Shows `SelConfFrm` for the routines of SelectionMod while it lives.
class SelConfAsker final : public SelConfDialog {
  public:
    SelConfAsker() { SetSelConfDialog(this); }
    ~SelConfAsker() override { SetSelConfDialog(nullptr); }
    SelConfAsker(const SelConfAsker&) = delete;
    SelConfAsker& operator=(const SelConfAsker&) = delete;
    std::optional<std::int32_t> ShowSelConf(const SelConfRequest& Request) override;
};

} // namespace quoril
