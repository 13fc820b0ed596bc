// What the recording window shows of its session.
#include "recording/MeterPic.h"
#include "recording/Recd_Frm.h"

#include "base/QtText.h"
#include "selection/DurationText.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QTimer>
#include <map>

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

/// Writes in a pure colour, made lighter where the ground is dark.
void Colour(QLabel* Label, const QColor& Pure) {
    constexpr int Lighter = 170; // percent
    const bool OnDark = Label->palette().color(QPalette::Window).lightness() < 128;
    const QColor Wanted = OnDark ? Pure.lighter(Lighter) : Pure;
    if (Label->palette().color(QPalette::WindowText) == Wanted)
        return;
    QPalette Colors;
    Colors.setColor(QPalette::WindowText, Wanted);
    Label->setPalette(Colors);
}

} // namespace

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
    Colour(FmtSup_Lbl, Driver.FormatSupported ? Qt::blue : Qt::red);
}

void Recd_Frm::ShowState() {
    const RecordShown& Shown = Session.Machine.Show();
    const std::int32_t Bits = Session.Format.RecBits;
    RecShowLPic->Show(Shown.PeakL, Bits, Shown.MetersRed);
    RecShowRPic->Show(Shown.PeakR, Bits, Shown.MetersRed);
    Rec_Stat_Lbl->setText(ShownText(Shown.Rec_Stat_Lbl));
    ShowLoss();
    Dur_Lbl[0]->setText(ShownText(Shown.Dur_Lbl0));
    Dur_Lbl[1]->setText(ShownText(Shown.Dur_Lbl1));
    SetTextIfOther(Start_Btn[0], WithKey(Shown.StartCaption));
    SetTextIfOther(Start_Btn[1], WithKey(Shown.PauseCaption));
    ShowEnabled(Shown);
}

/// What is missing now comes before what was lost.
void Recd_Frm::ShowLoss() {
    const bool NothingComes =
        Session.Driver.RecEngine != RecEngineNone && !NoSoundTimer->isActive();
    LossLbl->setText(NothingComes ? QStringLiteral("No sound comes from the device")
                                  : ShownText(Session.Machine.Show().LossLbl));
    Colour(LossLbl, Qt::red);
}

void Recd_Frm::ShowEnabled(const RecordShown& Shown) {
    struct ControlState {
        QWidget* Control;
        bool Enabled;
    };
    const std::array<ControlState, 8> States = {{{Start_Btn[0], Shown.StartEnabled},
                                                 {Start_Btn[1], Shown.PauseEnabled},
                                                 {Start_Btn[2], Shown.StopEnabled},
                                                 {Done_Btn, Shown.DoneEnabled},
                                                 {Cancel_Btn, Shown.CancelEnabled},
                                                 {CaptureFrame, Shown.DeviceEnabled && !Waiting},
                                                 {SrcFrame, !Waiting},
                                                 {DoneBtnFrame, !Waiting}}};
    QPushButton* Next = Shown.DoneEnabled ? Done_Btn : Cancel_Btn;
    if (Shown.StopEnabled)
        Next = Start_Btn[2];
    // Enabled before others are disabled, so that the focus has somewhere to go.
    for (const ControlState& Each : States)
        if (Each.Enabled)
            Each.Control->setEnabled(true);
    const QWidget* const Focus = focusWidget();
    for (const ControlState& Each : States)
        if (!Each.Enabled && (Each.Control == Focus || Each.Control->isAncestorOf(Focus)))
            Next->setFocus();
    for (const ControlState& Each : States)
        Each.Control->setEnabled(Each.Enabled);
}

} // namespace quoril
