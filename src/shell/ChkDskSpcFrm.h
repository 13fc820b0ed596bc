// The dialog that tells that the disk is too full for a command, and watches it meanwhile.
#pragma once

#include "storage/DiskSpaceGuardMod.h"

#include <QDialog>

class QLabel;
class QPushButton;
class QTimer;

namespace quoril {

class ChkDskSpcFrm final : public QDialog {
  public:
    explicit ChkDskSpcFrm(QWidget* Parent = nullptr);

    std::int32_t ButtonClicked = 0;      ///< 0 Cancel, 1 go on
    std::int64_t DiskSpaceNeeded1 = 0;   ///< bytes that the blocks would need in work files
    std::int64_t DiskSpaceNeeded2 = 0;   ///< bytes that the command asks for
    std::int64_t DiskSpaceNeeded0 = 0;   ///< the sum of the two
    std::int64_t DiskSpaceAvailable = 0; ///< free bytes now

    /// Fills the fields and the labels; `FreeBytes` is asked by the timer from then on.
    void Fill(const DiskSpaceNumbers& Numbers, const FreeBytesRoutine& FreeBytes);

  private:
    QLabel* AddNumber(const char* Name, const char* Accessible);
    void AddNumbers(QLayout& Column);
    void AddAdvice(QLayout& Column);
    void AddButtons(QLayout& Column);
    void ShowState(const DiskSpaceStateRec& State);
    void ChkTimer1_Timer();
    void ClearUndoDataBtn_Click();

    FreeBytesRoutine FreeNow;
    QLabel* DskSpcNeedLbl0;
    QLabel* DskSpcNeedLbl1;
    QLabel* DskSpcNeedLbl2;
    QLabel* DskSpcAvalLbl;
    QLabel* Msg1Lbl;
    QPushButton* TryAgainBtn;
    QTimer* ChkTimer1;
};

/// Shows `ChkDskSpcFrm` for DiskSpaceGuard while it lives.
class ChkDskSpcAsker final : public ChkDskSpcDialog {
  public:
    ChkDskSpcAsker() { SetChkDskSpcDialog(this); }
    ~ChkDskSpcAsker() override { SetChkDskSpcDialog(nullptr); }
    ChkDskSpcAsker(const ChkDskSpcAsker&) = delete;
    ChkDskSpcAsker& operator=(const ChkDskSpcAsker&) = delete;
    std::int32_t ShowChkDskSpc(const DiskSpaceNumbers& Numbers,
                               const FreeBytesRoutine& FreeBytes) override;
};

} // namespace quoril
