// The options window.
#pragma once

#include "shell/OptionsMod.h"

#include <QDialog>

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTabWidget;

namespace quoril {

/// Holds its own copy of all choices until OK.
class OptionsFrm final : public QDialog {
  public:
    OptionsFrm(OptionsEffects Wanted, QWidget* Parent);

    void accept() override;

  private:
    QWidget* AddPage(int Index, const char* Caption);
    void BuildColors(QWidget* Page);
    void BuildPlay(QWidget* Page);
    void BuildGuide(QWidget* Page);
    void BuildDisk(QWidget* Page);
    void BuildSound(QWidget* Page);
    QDoubleSpinBox* TempoField(int Index, const char* Accessible, double Percent);

    void ShowColors();
    void ChangeColor();
    void UsePreset(int Index);
    void BrowseTempPath();
    void SwitchSound(bool On);
    void ShowSoundState();
    [[nodiscard]] std::size_t ChosenColor() const;

    OptionsEffects Effects;
    OptionsChoice Choice;
    QTabWidget* TabStrip1;
    QListWidget* ColorNmLst = nullptr;
    QPushButton* ColorBtn = nullptr;
    QComboBox* DispStylCmb = nullptr;
    QCheckBox* LoopPlay_Chk = nullptr;
    QCheckBox* QuickPlay_Chk = nullptr;
    QDoubleSpinBox* TempoForTxt = nullptr;
    QDoubleSpinBox* TempoRevTxt = nullptr;
    QButtonGroup* Guide_Option = nullptr;
    QLineEdit* TempPathTxt = nullptr;
    QWidget* DSoundOnImg = nullptr;
};

/// Shows the window until it is closed.
void ShowOptions(const OptionsEffects& Effects);

} // namespace quoril
