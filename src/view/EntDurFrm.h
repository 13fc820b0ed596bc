// The dialog that asks for a length or a position, as time or in samples.
#pragma once

#include "selection/DurationEntry.h"

#include <QDialog>

class QLabel;
class QLineEdit;

namespace quoril {

class EntDurFrm final : public QDialog {
  public:
    explicit EntDurFrm(QWidget* Parent = nullptr);

    bool OkClicked = false;
    /// While one of these is set, an edit of that box does not rewrite the other one.
    bool WaiteForUpdateDur = false;
    bool WaiteForUpdateSamp = false;

    /// Fills captions, labels and boxes.
    void Fill(const EntDurRequest& Request);
    [[nodiscard]] EntDurAnswer Answer() const;

  private:
    void DurationEdited();
    void SamplesEdited();
    QLabel* AddLabel(const char* Name, const char* Accessible);
    QLineEdit* AddBox(const char* Name, const char* Accessible);

    QLabel* PromptLbl;
    QLabel* RefSizeLbl;
    QLabel* CurSizeDurLbl;
    QLabel* CurSizeSmpLbl;
    QLineEdit* EnterDurTxt;
    QLineEdit* EnterSmpTxt;
    std::int32_t Freq = 22050;
};

/// Shows `EntDurFrm` for the routines of DurationEntry while it lives.
class EntDurAsker final : public EntDurDialog {
  public:
    EntDurAsker() { SetEntDurDialog(this); }
    ~EntDurAsker() override { SetEntDurDialog(nullptr); }
    EntDurAsker(const EntDurAsker&) = delete;
    EntDurAsker& operator=(const EntDurAsker&) = delete;
    EntDurAnswer ShowEntDur(const EntDurRequest& Request) override;
};

} // namespace quoril
