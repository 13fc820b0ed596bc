// The dialog of the equalizer and of the band filter.
#pragma once

#include "effects/BandChoice.h"
#include "effects/BandPreview.h"
#include "effects/EqualizerCommands.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QMenu;
class QTimer;
class QVBoxLayout;

namespace quoril {

class BandPanel;

class EqlizFrm final : public QDialog {
  public:
    explicit EqlizFrm(QWidget* Parent = nullptr);

    /// Sets the mode, shows its controls and the choice of the last time, and takes the samples for
    /// listening to a band. Fails when these cannot be taken.
    void SetWorkingMode(std::int32_t WorkingMode);

    void accept() override;
    bool OkClicked = false;

  protected:
    bool eventFilter(QObject* Watched, QEvent* Event) override;

  private:
    void BuildPictures(QVBoxLayout& Column);
    void BuildCountRow(QVBoxLayout& Column);
    void ConnectPictures();
    void AddStep(QVBoxLayout& Column, int Index);

    void ChooseBand(std::int32_t Band);
    void SetValue(std::int32_t Band, std::int32_t Value);
    void Toggle(std::int32_t Band);
    void Audition(std::int32_t Band);
    /// What Left, Right, Home and End do in all pictures; false for other keys.
    bool ChooseByKey(int Key);
    void EqalizKey(int Key);
    void BandPassKey(int Key);

    void TakeCount();
    void ChangeCount(std::int32_t By);
    void ShowPopUp(const QPoint& GlobalPos);
    void BuildPopUp();

    void DrawAll();
    void DrawChooser();
    void DrawPlay();
    void ShowBand(std::int32_t Band);
    void ShowGainAt(std::int32_t Band, std::int32_t Value);
    void ShowStop(std::int32_t Band);
    void Describe();
    [[nodiscard]] std::int32_t BandUnder(const BandPanel& Panel, const QPoint& Pixel) const;
    [[nodiscard]] bool Equalizes() const noexcept { return Choice.WorkingMode == EqualizerMode; }
    [[nodiscard]] BandPanel& Chooser() const { return Equalizes() ? *EqalizPic : *BandPassPic; }

    BandChoice Choice;
    BandPreview Preview;
    std::vector<std::int32_t> BandFreq;
    std::int32_t Chosen = 1; ///< the band that keys work on
    std::int32_t Heard = 0;  ///< the band that was listened to last; 0 for none

    BandPanel* EqalizPic = nullptr;
    BandPanel* BandPassPic = nullptr;
    BandPanel* BandPlayPic = nullptr;
    QLabel* BndPasLbl = nullptr;
    QLabel* DisplayLbl_0 = nullptr;
    QLabel* DisplayLbl_1 = nullptr;
    QLineEdit* NoofBand_Txt = nullptr;
    QMenu* EqalizPopUpMnu = nullptr;
    QTimer* ToolTipTimer;
};

/// Shows `EqlizFrm` for the command while it lives.
class EqlizAsker final : public EqlizDialog {
  public:
    EqlizAsker() { SetEqlizDialog(this); }
    ~EqlizAsker() override { SetEqlizDialog(nullptr); }
    EqlizAsker(const EqlizAsker&) = delete;
    EqlizAsker& operator=(const EqlizAsker&) = delete;
    void ShowEqliz(std::int32_t WorkingMode) override;
};

} // namespace quoril
