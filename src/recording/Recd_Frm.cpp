#include "recording/Recd_Frm.h"

#include "base/MsgBoxMod.h"
#include "base/QtText.h"
#include "recording/VolumePanel.h"
#include "selection/DurationText.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCloseEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSocketNotifier>
#include <QStatusTipEvent>
#include <QTimer>
#include <utility>

namespace quoril {

Recd_Frm::~Recd_Frm() {
    hide(); // a field that loses the focus by it still finds the window
    Unload();
}

void Recd_Frm::OpenEngine() {
    (void)Session.Driver.InitilizeDriver(false);
    WaitForSound();
    ShowDevices();
    ShowState();
    QAbstractButton* const First =
        Start_Btn[0]->isEnabled() ? Start_Btn[0] : Dx7OrApiOpn->checkedButton();
    First->setFocus();
}

void Recd_Frm::showEvent(QShowEvent* Event) {
    QDialog::showEvent(Event);
    // The ring is there from the start: Return presses what has it.
    setAttribute(Qt::WA_KeyboardFocusChange);
}

// ---- Closing

void Recd_Frm::Unload() {
    if (std::exchange(Unloaded, true))
        return;
    Blocks->setEnabled(false);
    for (QTimer* Each : {RecDx7Timer, RecApiTimer, DeviceChangeTimer, NoSoundTimer})
        Each->stop();
    EndWaiting();
    TakeTypedTimes();
    Session.StoreSettings();
    Session.End();
}

void Recd_Frm::Leave(int Result) {
    Unload();
    // Before this window goes: without any window the program would end.
    if (Leaving)
        Leaving();
    done(Result);
}

void Recd_Frm::closeEvent(QCloseEvent* Event) {
    Event->accept();
    Leave(Rejected);
}

void Recd_Frm::reject() {
    if (Cancel_Btn->isEnabled())
        Cancel_Click();
}

void Recd_Frm::Cancel_Click() {
    Leave(Rejected);
}

void Recd_Frm::Done_Click() {
    if (!Session.Done())
        return;
    DoneClicked = true;
    Leave(Accepted);
}

// ---- Buttons and fields

void Recd_Frm::Start_Click() {
    TakeTypedTimes();
    Session.Start();
    ShowState();
    TellTrouble();
}

void Recd_Frm::Pause_Click() {
    Session.Pause();
    ShowState();
}

void Recd_Frm::Stop_Click() {
    Session.Stop();
    ShowState();
    TellTrouble();
}

void Recd_Frm::ShowFmtBtn_Click() {
    MsgBox(Session.Driver.SupportedFormatsText());
}

void Recd_Frm::RecSrcBtn_Click() {
    OpenVolumePanel(VolumePanelFolders(), VolumePage::Recording);
}

void Recd_Frm::PlayVolBtn_Click() {
    OpenVolumePanel(VolumePanelFolders(), VolumePage::Playing);
}

void Recd_Frm::ThresholdMoved(int Position) {
    Session.Machine.Choices.Silenthreshold = static_cast<float>(Position) / 100;
    SilenthresLbl->setText(QStringLiteral("Silence: %1 %").arg(Position));
    MoveSilenArrow();
}

void Recd_Frm::TimeLeft(const TimeField& Field) {
    float& Time = Session.Machine.Choices.*Field.Time;
    Time = RecordTimeTyped(CoreText(Field.Txt->text()), Field.Most);
    Field.Txt->setText(ShownText(FormatDuration(Time)));
}

/// The key of a button leaves the focus in a field.
void Recd_Frm::TakeTypedTimes() {
    for (const TimeField& Field : Times)
        if (Field.Txt->isModified())
            TimeLeft(Field);
}

void Recd_Frm::keyPressEvent(QKeyEvent* Event) {
    const bool Return = Event->key() == Qt::Key_Return || Event->key() == Qt::Key_Enter;
    if (!Return) {
        QDialog::keyPressEvent(Event);
        return;
    }
    if (auto* Button = qobject_cast<QAbstractButton*>(focusWidget()))
        Button->click();
}

bool Recd_Frm::event(QEvent* Event) {
    if (Event->type() == QEvent::StatusTip) {
        StatusLbl->setText(static_cast<QStatusTipEvent*>(Event)->tip());
        return true;
    }
    return QDialog::event(Event);
}

bool Recd_Frm::eventFilter(QObject* Watched, QEvent* Event) {
    auto* Control = static_cast<QWidget*>(Watched);
    const bool In = Event->type() == QEvent::FocusIn;
    if (In)
        StatusLbl->setText(Control->statusTip());
    if ((In || Event->type() == QEvent::FocusOut) && qobject_cast<QLineEdit*>(Watched) != nullptr) {
        QPalette Colors;
        if (In) {
            Colors.setColor(QPalette::Base, palette().color(QPalette::Highlight));
            Colors.setColor(QPalette::Text, palette().color(QPalette::HighlightedText));
        }
        Control->setPalette(Colors);
    }
    return QDialog::eventFilter(Watched, Event);
}

// ---- Engine and device

void Recd_Frm::EngineChosen(int Option) {
    Session.Driver.ChangeEngine(Option);
    BeginChange();
}

void Recd_Frm::DeviceChosen(int Index) {
    Session.Driver.ChangeDevice(Index);
    BeginChange();
}

void Recd_Frm::BeginChange() {
    if (!std::exchange(Waiting, true)) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        FocusBefore = focusWidget();
    }
    ShowDevices();
    ShowState();
    DeviceChangeTimer->start();
}

void Recd_Frm::EndWaiting() {
    if (std::exchange(Waiting, false))
        QApplication::restoreOverrideCursor();
}

void Recd_Frm::DeviceChangeTimer_Timer() {
    (void)Session.Driver.InitilizeDriver(true);
    WaitForSound();
    EndWaiting();
    ShowDevices();
    ShowState();
    if (FocusBefore != nullptr)
        FocusBefore->setFocus();
}

// ---- Blocks

void Recd_Frm::BlocksHaveCome() {
    // Readable until they are taken.
    Blocks->setEnabled(false);
    (Session.Driver.RecEngine == RecEngineApi ? RecApiTimer : RecDx7Timer)->start();
}

void Recd_Frm::RecTimer_Timer() {
    if (Session.Deliver())
        NoSoundTimer->start();
    Blocks->setEnabled(true);
    ShowState();
    TellTrouble();
}

void Recd_Frm::WaitForSound() {
    if (Session.Driver.RecEngine != RecEngineNone)
        NoSoundTimer->start();
}

void Recd_Frm::TellTrouble() {
    if (const std::string Trouble = Session.Machine.TakeTrouble(); !Trouble.empty())
        MsgBox(Trouble);
}

} // namespace quoril
