// The dialog that asks for one or two frequencies.
#pragma once

#include "effects/GeneratorCommands.h"

#include <QDialog>

#include <array>

class QCheckBox;
class QGridLayout;
class QLineEdit;

namespace quoril {

class EntFrqFrm final : public QDialog {
  public:
    /// Comes up with the given texts.
    explicit EntFrqFrm(const EntFrqEntry& Shown, QWidget* Parent = nullptr);

    bool OkClicked = false;
    [[nodiscard]] EntFrqEntry Entry() const;

  private:
    /// A row of a label and a box, number `Index` of each array.
    void AddEnd(QGridLayout& Rows, std::size_t Index, const char* Caption,
                const char* AccessibleName, const std::string& Text);
    /// Without two values the second box is locked and shows the first one's.
    void FollowStart();

    std::array<QLineEdit*, 3> EnterFrqTxt{}; ///< 1 start, 2 end; 0 is unused
    QCheckBox* UseTwoChk;
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
