// The dialog of the shortening of silence.
#pragma once

#include "effects/DeleteSilenceCommand.h"

#include <QDialog>

#include <array>

class QButtonGroup;
class QLabel;
class QLineEdit;
class QVBoxLayout;

namespace quoril {

class DelSilenFrm final : public QDialog {
  public:
    /// Comes up with the given values.
    explicit DelSilenFrm(const DelSilenChoice& Shown, QWidget* Parent = nullptr);

    bool OkClicked = false;
    [[nodiscard]] DelSilenChoice Choice() const;

    /// Closes the dialog when its choice can be run with; otherwise says why it can not.
    void accept() override;

  protected:
    bool eventFilter(QObject* Watched, QEvent* Event) override;

  private:
    QLabel* AddLabel(const QString& Name, const QString& Text, QLineEdit* Buddy);
    // Of the row `Index` of DelSilenFields: its text field, with its value of `Shown`, and the
    // label that tells of a wrong number.
    QLineEdit* AddField(std::size_t Index, const char* AccessibleName, const DelSilenChoice& Shown);
    QLabel* AddErrorLabel(std::size_t Index);
    void AddThresholds(QVBoxLayout& Column, const DelSilenChoice& Shown);
    void AddBalance(QVBoxLayout& Column, const DelSilenChoice& Shown);

    [[nodiscard]] double NumberIn(std::size_t Index) const;
    [[nodiscard]] std::int16_t Style() const;
    [[nodiscard]] bool LeftWrong(std::size_t Index) const;
    void ShowStyle();
    void ShowErrors();
    /// The user goes from a field; a wrong number calls him back.
    void Leave(std::size_t Index);
    void CallBack(std::size_t Index);

    std::array<QLineEdit*, 6> Fields{}; ///< in the order of DelSilenFields
    QButtonGroup* DetStylOpn = nullptr;
    QLabel* BalDesLbl = nullptr;
    QLabel* BalUnitLbl = nullptr;
    std::array<QLabel*, 3> MinMaxLbl{};
    bool CalledBack = false; ///< a click that has left a wrong number does nothing else
};

/// Shows `DelSilenFrm` for the command while it lives.
class DelSilenAsker final : public DelSilenDialog {
  public:
    DelSilenAsker() { SetDelSilenDialog(this); }
    ~DelSilenAsker() override { SetDelSilenDialog(nullptr); }
    DelSilenAsker(const DelSilenAsker&) = delete;
    DelSilenAsker& operator=(const DelSilenAsker&) = delete;
    DelSilenAnswer ShowDelSilen(const DelSilenChoice& Shown) override;
};

} // namespace quoril
