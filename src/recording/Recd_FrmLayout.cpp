// What the recording window consists of.
#include "recording/MeterPic.h"
#include "recording/Recd_Frm.h"

#include "base/QtText.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSocketNotifier>
#include <QTimer>
#include <QVBoxLayout>

namespace quoril {

namespace {

constexpr int MeterTop = 8;
constexpr int MeterWidth = 26;
constexpr int MeterHeight = 150;
constexpr int ArrowWidth = 12;
constexpr int ArrowHeight = 12;
constexpr int ArrowLeft = 4;
constexpr int Gap = 6;

/// A triangle that points to the meter.
QPixmap ArrowPicture(const QWidget& On) {
    const qreal Scale = On.devicePixelRatioF();
    QPixmap Picture(QSize(ArrowWidth, ArrowHeight) * Scale);
    Picture.setDevicePixelRatio(Scale);
    Picture.fill(Qt::transparent);
    QPainter Painter(&Picture);
    Painter.setRenderHint(QPainter::Antialiasing);
    Painter.setPen(Qt::NoPen);
    Painter.setBrush(On.palette().windowText());
    Painter.drawPolygon(
        QPolygonF({{0, 0}, {ArrowWidth - 1.0, ArrowHeight / 2.0}, {0, double{ArrowHeight}}}));
    return Picture;
}

} // namespace

/// A row of the frame with the check boxes.
struct Recd_Frm::TimeRow {
    const char* Chk;
    const char* Caption;
    const char* ChkHint;
    const char* Txt;
    const char* AccessibleName;
    const char* TxtHint;
    bool RecordChoices::*On;
    float RecordChoices::*Time;
    float Most;
};

Recd_Frm::Recd_Frm(RecordSession& Shown) : Session(Shown) {
    setObjectName(QStringLiteral("Recd_Frm"));
    setWindowTitle(QStringLiteral("Record"));
    auto* Column = new QVBoxLayout(this);
    Column->setContentsMargins(12, 10, 12, 8);
    Column->setSpacing(8);
    Column->setSizeConstraint(QLayout::SetFixedSize);
    auto* Upper = new QHBoxLayout;
    auto* Right = new QVBoxLayout;
    Right->addWidget(BuildPlace());
    Right->addWidget(BuildCapture());
    Right->addWidget(BuildSource());
    Upper->addWidget(BuildLevel());
    Upper->addLayout(Right, 1);
    Column->addLayout(Upper);
    Column->addWidget(BuildAutomatic());
    Column->addWidget(BuildClocks());
    Column->addWidget(BuildButtons());
    StatusLbl = AddLabel("StatusLbl", "Description of the control pointed at");
    StatusLbl->setFrameStyle(static_cast<int>(QFrame::StyledPanel) | QFrame::Sunken);
    StatusLbl->setMargin(2);
    // The longest description fits on two lines at any size of letters.
    StatusLbl->setWordWrap(true);
    StatusLbl->setMinimumHeight(2 * StatusLbl->fontMetrics().lineSpacing() + 8);
    Column->addWidget(StatusLbl);
    MakeTimers();
    ShowChoices();
    ShowDevices();
    ShowState();
}

QLabel* Recd_Frm::AddLabel(const char* Name, const char* AccessibleName) {
    auto* Label = new QLabel(this);
    Label->setObjectName(QLatin1String(Name));
    Label->setAccessibleName(QLatin1String(AccessibleName));
    return Label;
}

void Recd_Frm::AddHint(QWidget* Control, const char* Hint) {
    Control->setStatusTip(QLatin1String(Hint));
    Control->setAccessibleDescription(QLatin1String(Hint));
    Control->installEventFilter(this);
}

QPushButton* Recd_Frm::AddButton(QWidget* Parent, const QString& Name, const QString& Caption,
                                 const char* Hint, void (Recd_Frm::*Clicked)()) {
    auto* Button = new QPushButton(Caption, Parent);
    Button->setObjectName(Name);
    // Return in a field must not press a button that nobody has chosen.
    Button->setAutoDefault(false);
    AddHint(Button, Hint);
    connect(Button, &QPushButton::clicked, this, Clicked);
    return Button;
}

QGroupBox* Recd_Frm::BuildPlace() {
    auto* Frame = new QGroupBox(QStringLiteral("Recording to"), this);
    auto* Rows = new QVBoxLayout(Frame);
    QLabel* Fmt_Lbl = AddLabel("Fmt_Lbl", "Format of the recording");
    Fmt_Lbl->setText(ShownText(Fmt_LblText(Session.Format)));
    QLabel* InsertLbl = AddLabel("InsertLbl", "Where the recording is inserted");
    InsertLbl->setText(ShownText(InsertLblText(Session.InsertPos, Session.Format.RecFreq)));
    Rows->addWidget(Fmt_Lbl);
    Rows->addWidget(InsertLbl);
    return Frame;
}

QGroupBox* Recd_Frm::BuildCapture() {
    CaptureFrame = new QGroupBox(QStringLiteral("Capture"), this);
    CaptureFrame->setObjectName(QStringLiteral("CaptureFrame"));
    auto* Rows = new QGridLayout(CaptureFrame);
    Dx7OrApiOpn = new QButtonGroup(this);
    const std::array<const char*, 2> Captions = {"Sound server (Direct&X 7)",
                                                 "Plain sound (&Win API)"};
    for (int Option = 0; Option < 2; ++Option) {
        auto* Button = new QRadioButton(QLatin1String(Captions[std::size_t(Option)]), CaptureFrame);
        Button->setObjectName(QStringLiteral("Dx7OrApiOpn_%1").arg(Option));
        AddHint(Button, "The sound system that the recording comes from.");
        Dx7OrApiOpn->addButton(Button, Option);
        // Also when it is chosen already: a device that was lost is tried again.
        connect(Button, &QRadioButton::clicked, this, [this, Option] { EngineChosen(Option); });
        Rows->addWidget(Button, 0, Option);
    }
    DxDivLstCmb = new QComboBox(CaptureFrame);
    DxDivLstCmb->setObjectName(QStringLiteral("DxDivLstCmb"));
    DxDivLstCmb->setAccessibleName(QStringLiteral("Recording device"));
    DxDivLstCmb->setMinimumContentsLength(36);
    DxDivLstCmb->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    AddHint(DxDivLstCmb, "The device that the recording comes from.");
    connect(DxDivLstCmb, &QComboBox::activated, this, &Recd_Frm::DeviceChosen);
    Rows->addWidget(DxDivLstCmb, 1, 0, 1, 2);
    FmtSup_Lbl = AddLabel("FmtSup_Lbl", "Whether the device takes the format");
    ShowFmtBtn = AddButton(CaptureFrame, QStringLiteral("ShowFmtBtn"),
                           QStringLiteral("Available &formats..."),
                           "Shows the formats that the device takes.", &Recd_Frm::ShowFmtBtn_Click);
    Rows->addWidget(FmtSup_Lbl, 2, 0);
    Rows->addWidget(ShowFmtBtn, 2, 1);
    return CaptureFrame;
}

QGroupBox* Recd_Frm::BuildSource() {
    SrcFrame = new QGroupBox(QStringLiteral("Source and volume"), this);
    SrcFrame->setObjectName(QStringLiteral("SrcFrame"));
    auto* Row = new QHBoxLayout(SrcFrame);
    Row->addWidget(AddButton(SrcFrame, QStringLiteral("RecSrcBtn"),
                             QStringLiteral("Recordin&g source..."),
                             "Opens the volume control of the system at the recording source.",
                             &Recd_Frm::RecSrcBtn_Click));
    Row->addWidget(AddButton(SrcFrame, QStringLiteral("PlayVolBtn"),
                             QStringLiteral("Play &volume..."),
                             "Opens the volume control of the system at the playing output.",
                             &Recd_Frm::PlayVolBtn_Click));
    return SrcFrame;
}

QGroupBox* Recd_Frm::BuildLevel() {
    auto* Frame = new QGroupBox(QStringLiteral("Level"), this);
    auto* Rows = new QVBoxLayout(Frame);
    LevelPanel = new QWidget(Frame);
    int Left = ArrowLeft + ArrowWidth + 2;
    SilenArrowImg = new QLabel(LevelPanel);
    SilenArrowImg->setObjectName(QStringLiteral("SilenArrowImg"));
    SilenArrowImg->setAccessibleName(QStringLiteral("Mark of the silence limit"));
    SilenArrowImg->setPixmap(ArrowPicture(*this));
    SilenArrowImg->setGeometry(ArrowLeft, 0, ArrowWidth, ArrowHeight);
    const auto AddMeter = [&](const char* Name, const char* AccessibleName) {
        auto* Meter = new MeterPic(LevelPanel);
        Meter->setObjectName(QLatin1String(Name));
        Meter->setAccessibleName(QLatin1String(AccessibleName));
        Meter->setGeometry(Left, MeterTop, MeterWidth, MeterHeight);
        Left += MeterWidth + Gap;
        return Meter;
    };
    RecShowLPic = AddMeter("RecShowLPic", "Level of the left channel");
    RecShowRPic = AddMeter("RecShowRPic", "Level of the right channel");
    RecShowRPic->setVisible(Session.Format.RecChannels == 2);
    SilenthresSlider = new QSlider(Qt::Vertical, LevelPanel);
    SilenthresSlider->setObjectName(QStringLiteral("SilenthresSlider"));
    SilenthresSlider->setAccessibleName(QStringLiteral("Silence limit in percent"));
    SilenthresSlider->setRange(1, 100);
    SilenthresSlider->setPageStep(10);
    AddHint(SilenthresSlider, "What is softer than this is silence.");
    const int SliderWidth = SilenthresSlider->sizeHint().width();
    SilenthresSlider->setGeometry(Left, 0, SliderWidth, MeterHeight + 2 * MeterTop);
    LevelPanel->setFixedSize(Left + SliderWidth, MeterHeight + 2 * MeterTop);
    connect(SilenthresSlider, &QSlider::valueChanged, this, &Recd_Frm::ThresholdMoved);
    SilenthresLbl = AddLabel("SilenthresLbl", "Silence limit in percent of full scale");
    Rows->addStretch();
    Rows->addWidget(LevelPanel, 0, Qt::AlignHCenter);
    Rows->addWidget(SilenthresLbl, 0, Qt::AlignHCenter);
    Rows->addStretch();
    return Frame;
}

QGroupBox* Recd_Frm::BuildAutomatic() {
    static constexpr std::array<TimeRow, 3> Rows = {
        {{"StopAftRecChk", "Stop &after recording for", "Stops the recording after the time.",
          "StopAftRecTxt", "Time after which the recording stops",
          "Record stop time. Enter the time in seconds or Hours:Minutes:Seconds.",
          &RecordChoices::StopAftRec, &RecordChoices::RecordTime, MostRecordTime},
         {"StopIfSilenChk", "Stop &if silent for", "Stops the recording after so much silence.",
          "StopIfSilenTxt", "Length of silence that stops the recording",
          "Silence stop time. Enter the time in seconds or Hours:Minutes:Seconds.",
          &RecordChoices::StopIfSilen, &RecordChoices::StopTime, MostSilenceTime},
         {"PauseIfSilenChk", "Pa&use if silent for", "Pauses the recording after so much silence.",
          "PauseIfSilenTxt", "Length of silence that pauses the recording",
          "Silence pause time. Enter the time in seconds or Hours:Minutes:Seconds.",
          &RecordChoices::PauseIfSilen, &RecordChoices::PauseTime, MostSilenceTime}}};
    auto* Frame = new QGroupBox(QStringLiteral("Automatic"), this);
    auto* Grid = new QGridLayout(Frame);
    for (const TimeRow& Each : Rows) {
        auto* Chk = new QCheckBox(QLatin1String(Each.Caption), Frame);
        Chk->setObjectName(QLatin1String(Each.Chk));
        AddHint(Chk, Each.ChkHint);
        auto* Txt = new QLineEdit(Frame);
        Txt->setObjectName(QLatin1String(Each.Txt));
        Txt->setAccessibleName(QLatin1String(Each.AccessibleName));
        Txt->setMaxLength(40);
        AddHint(Txt, Each.TxtHint);
        const int Line = static_cast<int>(Times.size());
        Grid->addWidget(Chk, Line, 0);
        Grid->addWidget(Txt, Line, 1);
        Times.push_back({Chk, Txt, Each.On, Each.Time, Each.Most});
        const TimeField Field = Times.back();
        connect(Chk, &QCheckBox::toggled, this,
                [this, Field](bool On) { Session.Machine.Choices.*Field.On = On; });
        connect(Txt, &QLineEdit::editingFinished, this, [this, Field] { TimeLeft(Field); });
    }
    ContnIfNoSilenChk = new QCheckBox(QStringLiteral("Continue when &not silent"), Frame);
    ContnIfNoSilenChk->setObjectName(QStringLiteral("ContnIfNoSilenChk"));
    AddHint(ContnIfNoSilenChk, "Sound ends a pause, whoever made it.");
    connect(ContnIfNoSilenChk, &QCheckBox::toggled, this,
            [this](bool On) { Session.Machine.Choices.ContnIfNoSilen = On; });
    Grid->addWidget(ContnIfNoSilenChk, 2, 2);
    Grid->setColumnStretch(2, 1);
    Grid->setHorizontalSpacing(12);
    return Frame;
}

QWidget* Recd_Frm::BuildClocks() {
    auto* Frame = new QWidget(this);
    auto* Grid = new QGridLayout(Frame);
    Grid->setContentsMargins(4, 0, 4, 0);
    const std::array<const char*, 2> Captions = {"Recorded:", "Time passed:"};
    const std::array<const char*, 2> Hints = {
        "Actual recorded duration.",
        "Total time passed after the recording was started. (pause time is also counted)"};
    for (int Index = 0; Index < 2; ++Index) {
        const auto At = static_cast<std::size_t>(Index);
        QLabel* Label = AddLabel("", Captions[At]);
        Label->setObjectName(QStringLiteral("Dur_Lbl_%1").arg(Index));
        QFont Large = Label->font();
        Large.setPointSizeF(Large.pointSizeF() * 1.4);
        Large.setBold(true);
        Label->setFont(Large);
        Label->setMinimumWidth(Label->fontMetrics().horizontalAdvance("00:00:00.00 [P] "));
        AddHint(Label, Hints[At]);
        Grid->addWidget(new QLabel(QLatin1String(Captions[At]), Frame), 0, 2 * Index);
        Grid->addWidget(Label, 0, 2 * Index + 1);
        Dur_Lbl[At] = Label;
    }
    Rec_Stat_Lbl = AddLabel("Rec_Stat_Lbl", "State of the recording");
    LossLbl = AddLabel("LossLbl", "Lost sound");
    Grid->addWidget(Rec_Stat_Lbl, 1, 0, 1, 2);
    Grid->addWidget(LossLbl, 1, 2, 1, 2);
    Grid->setColumnStretch(4, 1);
    return Frame;
}

QWidget* Recd_Frm::BuildButtons() {
    auto* Frame = new QWidget(this);
    auto* Row = new QHBoxLayout(Frame);
    Row->setContentsMargins(0, 0, 0, 0);
    struct ButtonRow {
        const char* Hint;
        void (Recd_Frm::*Clicked)();
    };
    const std::array<ButtonRow, 3> Rows = {
        {{"Starts fresh recording.", &Recd_Frm::Start_Click},
         {"Pauses of Continues the recording.", &Recd_Frm::Pause_Click},
         {"Stops the recording.", &Recd_Frm::Stop_Click}}};
    for (std::size_t Index = 0; Index < Rows.size(); ++Index) {
        Start_Btn[Index] = AddButton(Frame, QStringLiteral("Start_Btn_%1").arg(Index), {},
                                     Rows[Index].Hint, Rows[Index].Clicked);
        Row->addWidget(Start_Btn[Index]);
    }
    Start_Btn[2]->setText(QStringLiteral("S&top"));
    Row->addStretch();
    Row->addWidget(BuildDoneFrame());
    return Frame;
}

QWidget* Recd_Frm::BuildDoneFrame() {
    DoneBtnFrame = new QWidget(this);
    DoneBtnFrame->setObjectName(QStringLiteral("DoneBtnFrame"));
    auto* Row = new QHBoxLayout(DoneBtnFrame);
    Row->setContentsMargins(0, 0, 0, 0);
    Done_Btn = AddButton(DoneBtnFrame, QStringLiteral("Done_Btn"), QStringLiteral("&Done"),
                         "Inserts recorded wave to main waveform, and closes the recording window.",
                         &Recd_Frm::Done_Click);
    Cancel_Btn = AddButton(DoneBtnFrame, QStringLiteral("Cancel_Btn"), QStringLiteral("Cance&l"),
                           "Close ignoring the recording.", &Recd_Frm::Cancel_Click);
    Row->addWidget(Done_Btn);
    Row->addWidget(Cancel_Btn);
    return DoneBtnFrame;
}

void Recd_Frm::MakeTimers() {
    const auto OneShot = [this](const char* Name, int MilliSeconds, void (Recd_Frm::*Fired)()) {
        auto* Timer = new QTimer(this);
        Timer->setObjectName(QLatin1String(Name));
        Timer->setSingleShot(true);
        Timer->setInterval(MilliSeconds);
        connect(Timer, &QTimer::timeout, this, Fired);
        return Timer;
    };
    RecDx7Timer = OneShot("RecDx7Timer", 10, &Recd_Frm::RecTimer_Timer);
    RecApiTimer = OneShot("RecApiTimer", 10, &Recd_Frm::RecTimer_Timer);
    DeviceChangeTimer = OneShot("DeviceChangeTimer", 500, &Recd_Frm::DeviceChangeTimer_Timer);
    // A window that was busy may find sound that waits.
    NoSoundTimer = OneShot("NoSoundTimer", 1000, &Recd_Frm::RecTimer_Timer);
    Blocks = new QSocketNotifier(Session.Driver.NoticeHandle(), QSocketNotifier::Read, this);
    connect(Blocks, &QSocketNotifier::activated, this, &Recd_Frm::BlocksHaveCome);
}

void Recd_Frm::MoveSilenArrow() {
    SilenArrowImg->move(ArrowLeft, SilenArrowTop(Session.Machine.Choices.Silenthreshold, MeterTop,
                                                 MeterHeight, ArrowHeight));
}

} // namespace quoril
