#include "recording/Recd_Frm.h"

#include "base/MsgBoxMod.h"
#include "base/QtText.h"
#include "recording/MeterPic.h"
#include "recording/VolumePanel.h"
#include "selection/DurationText.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QSocketNotifier>
#include <QStatusTipEvent>
#include <QTimer>
#include <fmt/format.h>
#include <map>
#include <utility>

namespace quoril {

namespace {

/// A caption of the machine with its key.
QString WithKey(const std::string& Caption) {
    static const std::map<std::string, const char*> Keys = {{"Start", "&Start"},
                                                            {"Restart", "Re&start"},
                                                            {"Pause", "&Pause"},
                                                            {"Continue", "&Continue"}};
    return QLatin1String(Keys.at(Caption));
}

void SetTextIfOther(QPushButton* Button, const QString& Text) {
    if (Button->text() != Text)
        Button->setText(Text); // which would make a shortcut anew
}

} // namespace

Recd_Frm::~Recd_Frm() {
    hide(); // a field that loses the focus by it still finds the window
    Unload();
}

void Recd_Frm::OpenEngine() {
    (void)Session.Driver.InitilizeDriver(false);
    ShowDevices();
    ShowState();
    if (Start_Btn[0]->isEnabled())
        Start_Btn[0]->setFocus();
}

// ---- Closing

void Recd_Frm::Unload() {
    if (std::exchange(Unloaded, true))
        return;
    Blocks->setEnabled(false);
    for (QTimer* Each : {RecDx7Timer, RecApiTimer, DeviceChangeTimer})
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
    if (!std::exchange(Waiting, true))
        QApplication::setOverrideCursor(Qt::WaitCursor);
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
    EndWaiting();
    ShowDevices();
    ShowState();
}

// ---- Blocks

void Recd_Frm::BlocksHaveCome() {
    // Readable until they are taken.
    Blocks->setEnabled(false);
    (Session.Driver.RecEngine == RecEngineApi ? RecApiTimer : RecDx7Timer)->start();
}

void Recd_Frm::RecTimer_Timer() {
    Session.Deliver();
    Blocks->setEnabled(true);
    ShowState();
    TellTrouble();
}

void Recd_Frm::TellTrouble() {
    if (const std::string Trouble = Session.Machine.TakeTrouble(); !Trouble.empty())
        MsgBox(Trouble);
}

// ---- Showing

void Recd_Frm::ShowChoices() {
    const RecordChoices& Choices = Session.Machine.Choices;
    for (const TimeField& Field : Times) {
        Field.Chk->setChecked(Choices.*Field.On);
        Field.Txt->setText(ShownText(FormatDuration(Choices.*Field.Time)));
    }
    ContnIfNoSilenChk->setChecked(Choices.ContnIfNoSilen);
    SilenthresSlider->setValue(SilenthresPosition(Choices.Silenthreshold));
    ThresholdMoved(SilenthresSlider->value());
}

void Recd_Frm::ShowDevices() {
    const RecordDriver& Driver = Session.Driver;
    Dx7OrApiOpn->button(Driver.Dx7OrApiOpn)->setChecked(true);
    QStringList Names;
    for (const std::string& Each : Driver.DevicesShown)
        Names << ShownText(Each);
    QStringList Present;
    for (int Index = 0; Index < DxDivLstCmb->count(); ++Index)
        Present << DxDivLstCmb->itemText(Index);
    if (Names != Present) {
        DxDivLstCmb->clear();
        DxDivLstCmb->addItems(Names);
    }
    DxDivLstCmb->setCurrentIndex(Driver.DeviceIndex);
    FmtSup_Lbl->setText(ShownText(Driver.FmtSup_Lbl));
    QPalette Colors;
    Colors.setColor(QPalette::WindowText, Driver.FormatSupported ? Qt::blue : Qt::red);
    FmtSup_Lbl->setPalette(Colors);
}

void Recd_Frm::ShowState() {
    const RecordShown& Shown = Session.Machine.Show();
    const std::int32_t Bits = Session.Format.RecBits;
    RecShowLPic->Show(Shown.PeakL, Bits, Shown.MetersRed);
    RecShowRPic->Show(Shown.PeakR, Bits, Shown.MetersRed);
    Rec_Stat_Lbl->setText(ShownText(Shown.Rec_Stat_Lbl));
    LossLbl->setText(ShownText(Shown.LossLbl));
    Dur_Lbl[0]->setText(ShownText(Shown.Dur_Lbl0));
    Dur_Lbl[1]->setText(ShownText(Shown.Dur_Lbl1));
    SetTextIfOther(Start_Btn[0], WithKey(Shown.StartCaption));
    SetTextIfOther(Start_Btn[1], WithKey(Shown.PauseCaption));
    ShowButtons(Shown);
    CaptureFrame->setEnabled(Shown.DeviceEnabled && !Waiting);
    SrcFrame->setEnabled(!Waiting);
    DoneBtnFrame->setEnabled(!Waiting);
}

void Recd_Frm::ShowButtons(const RecordShown& Shown) {
    struct ButtonState {
        QPushButton* Button;
        bool Enabled;
    };
    const std::array<ButtonState, 5> States = {{{Start_Btn[0], Shown.StartEnabled},
                                                {Start_Btn[1], Shown.PauseEnabled},
                                                {Start_Btn[2], Shown.StopEnabled},
                                                {Done_Btn, Shown.DoneEnabled},
                                                {Cancel_Btn, Shown.CancelEnabled}}};
    QPushButton* Next = Shown.DoneEnabled ? Done_Btn : Cancel_Btn;
    if (Shown.StopEnabled)
        Next = Start_Btn[2];
    // Enabled before others are disabled, so that the focus has somewhere to go.
    for (const ButtonState& Each : States)
        if (Each.Enabled)
            Each.Button->setEnabled(true);
    for (const ButtonState& Each : States)
        if (!Each.Enabled && Each.Button->hasFocus())
            Next->setFocus();
    for (const ButtonState& Each : States)
        Each.Button->setEnabled(Each.Enabled);
}

} // namespace quoril
