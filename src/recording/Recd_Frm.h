// The recording window.
#pragma once

#include "recording/RecordSession.h"

#include <QDialog>
#include <QPointer>

#include <array>
#include <functional>
#include <vector>

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSlider;
class QSocketNotifier;
class QTimer;

namespace quoril {

class MeterPic;

/// Takes the place of the main window while sound is recorded. Shows a session; what the buttons do
/// is the session's.
class Recd_Frm final : public QDialog {
  public:
    /// The session must outlive the window, and its place and format be known.
    explicit Recd_Frm(RecordSession& Shown);
    ~Recd_Frm() override;
    Recd_Frm(const Recd_Frm&) = delete;
    Recd_Frm& operator=(const Recd_Frm&) = delete;

    /// The take is in the document.
    bool DoneClicked = false;
    /// Called when the user leaves the window, before it goes: shows the main window again.
    std::function<void()> Leaving;

    /// Opens the engine, and shows what came of it. A window that is not on the screen yet.
    void OpenEngine();
    /// Closes the device and keeps the choices; the take goes. Nothing happens a second time.
    void Unload();

    /// Esc is Cancel, and nothing while a recording runs.
    void reject() override;

  protected:
    bool event(QEvent* Event) override;
    bool eventFilter(QObject* Watched, QEvent* Event) override;
    void keyPressEvent(QKeyEvent* Event) override;
    void showEvent(QShowEvent* Event) override;
    void closeEvent(QCloseEvent* Event) override;

  private:
    /// A time beside a check box.
    struct TimeField {
        QCheckBox* Chk;
        QLineEdit* Txt;
        bool RecordChoices::*On;
        float RecordChoices::*Time;
        float Most;
    };
    struct TimeRow;

    // Layout
    QGroupBox* BuildPlace();
    QGroupBox* BuildCapture();
    QGroupBox* BuildSource();
    QGroupBox* BuildLevel();
    QGroupBox* BuildAutomatic();
    QWidget* BuildClocks();
    QWidget* BuildButtons();
    QWidget* BuildDoneFrame();
    void MakeTimers();
    QLabel* AddLabel(const char* Name, const char* AccessibleName);
    QPushButton* AddButton(QWidget* Parent, const QString& Name, const QString& Caption,
                           const char* Hint, void (Recd_Frm::*Clicked)());
    /// What the status line says while the control is pointed at or has the focus.
    void AddHint(QWidget* Control, const char* Hint);

    // What the user does
    void Start_Click();
    void Pause_Click();
    void Stop_Click();
    void Done_Click();
    void Cancel_Click();
    void Leave(int Result);
    void ShowFmtBtn_Click();
    void RecSrcBtn_Click();
    void PlayVolBtn_Click();
    void EngineChosen(int Option);
    void DeviceChosen(int Index);
    void ThresholdMoved(int Position);
    void TimeLeft(const TimeField& Field);
    void TakeTypedTimes();

    // Timers
    void BlocksHaveCome();
    void RecTimer_Timer();
    void WaitForSound();
    void DeviceChangeTimer_Timer();
    void BeginChange();
    void EndWaiting();

    void ShowChoices();
    void ShowState();
    void ShowLoss();
    void ShowEnabled(const RecordShown& Shown);
    void ShowDevices();
    void MoveSilenArrow();
    void TellTrouble();

    RecordSession& Session;
    bool Unloaded = false;
    bool Waiting = false;          ///< for DeviceChangeTimer
    QPointer<QWidget> FocusBefore; ///< what had the focus when that began

    QGroupBox* CaptureFrame = nullptr;
    QGroupBox* SrcFrame = nullptr;
    QWidget* DoneBtnFrame = nullptr;
    QButtonGroup* Dx7OrApiOpn = nullptr;
    QComboBox* DxDivLstCmb = nullptr;
    QLabel* FmtSup_Lbl = nullptr;
    QPushButton* ShowFmtBtn = nullptr;
    QWidget* LevelPanel = nullptr;
    MeterPic* RecShowLPic = nullptr;
    MeterPic* RecShowRPic = nullptr;
    QLabel* SilenArrowImg = nullptr;
    QSlider* SilenthresSlider = nullptr;
    QLabel* SilenthresLbl = nullptr;
    std::vector<TimeField> Times;
    QCheckBox* ContnIfNoSilenChk = nullptr;
    std::array<QLabel*, 2> Dur_Lbl{};
    QLabel* Rec_Stat_Lbl = nullptr;
    QLabel* LossLbl = nullptr;
    std::array<QPushButton*, 3> Start_Btn{};
    QPushButton* Done_Btn = nullptr;
    QPushButton* Cancel_Btn = nullptr;
    QLabel* StatusLbl = nullptr;
    QTimer* RecDx7Timer = nullptr;
    QTimer* RecApiTimer = nullptr;
    QTimer* DeviceChangeTimer = nullptr;
    QTimer* NoSoundTimer = nullptr;
    QSocketNotifier* Blocks = nullptr;
};

} // namespace quoril
