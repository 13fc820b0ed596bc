// The panels, labels and status bar of the main window.
#include "base/ViewState.h"
#include "view/ArrowImage.h"
#include "view/ToolIcon.h"
#include "view/ValueLabel.h"
#include "view/WaveEditor_Frm.h"
#include "view/WavePanel.h"

#include <QEvent>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QStatusBar>

namespace quoril {

namespace {

/// A value label's name, accessible name and hint, by index: 0 to 2 selection, 3 to 5 view.
struct ValueLabelText {
    const char* Name;
    const char* Accessible;
    const char* Hint;
};
constexpr std::array<ValueLabelText, 6> ValueLabels = {{
    {"SelectLbl_0", "Selection total", "Selection Total. Click to edit. Right click for menu."},
    {"SelectLbl_1", "Selection from", "Selection From. Click to edit. Right click for menu."},
    {"SelectLbl_2", "Selection to", "Selection To. Click to edit. Right click for menu."},
    {"ViewLbl_0", "View total", "View Total. Click to edit. Right click for menu."},
    {"ViewLbl_1", "View from", "View From. Click to edit. Right click for menu."},
    {"ViewLbl_2", "View to", "View To. Click to edit. Right click for menu."},
}};

constexpr const char* LongestValue = "00:00:00.00";
constexpr const char* LongestPosition = "00:00:00.00/2147483647";

/// A label that shows a value in the colours of the wave view.
QLabel* ReadOut(const QString& Name, const QString& Accessible, const QString& Hint,
                QWidget* Parent, const char* Longest) {
    auto* Label = new QLabel(Parent);
    Label->setObjectName(Name);
    Label->setAccessibleName(Accessible);
    Label->setProperty("StatusHint", Hint);
    Label->setContentsMargins(6, 2, 6, 2);
    if (Longest != nullptr)
        Label->setMinimumWidth(Label->fontMetrics().horizontalAdvance(QLatin1String(Longest)) + 14);
    return Label;
}

QLabel* Heading(const QString& Text, QWidget* Parent) {
    auto* Label = new QLabel(Text, Parent);
    Label->setForegroundRole(QPalette::WindowText);
    return Label;
}

} // namespace

void WaveEditor_Frm::BuildPanels() {
    Client = new QWidget(this);
    Client->setObjectName(QStringLiteral("Client"));
    setCentralWidget(Client);
    Client->installEventFilter(this);

    TopFrame = new QWidget(Client);
    TopFrame->setObjectName(QStringLiteral("TopFrame"));
    TopFrame->setAccessibleName(QStringLiteral("Toolbars"));
    TopFrame->installEventFilter(this);

    for (const int Channel : {1, 2}) {
        auto* Panel = new WavePanel(Channel, Client);
        Panel->setAccessibleName(Channel == 1 ? QStringLiteral("Waveform, left channel")
                                              : QStringLiteral("Waveform, right channel"));
        Wave_Pic.at(std::size_t(Channel)) = Panel;
    }
    ScalePic = new PicturePanel(QStringLiteral("ScalePic"), Client);
    ScalePic->setAccessibleName(QStringLiteral("Time scale and play selection"));
    ScalePic->SetBackColor(0xE6E6E6);
    HScrollPic = new PicturePanel(QStringLiteral("HScrollPic"), Client);
    HScrollPic->setAccessibleName(QStringLiteral("Overview of the whole document"));
    for (const int Index : {0, 1})
        ArrowImg.at(std::size_t(Index)) = new ArrowImage(Index, HScrollPic);
    InfoFrame = BuildInfoFrame();
}

QWidget* WaveEditor_Frm::BuildInfoFrame() {
    auto* Frame = new QWidget(Client);
    Frame->setObjectName(QStringLiteral("InfoFrame"));
    auto* Grid = new QGridLayout(Frame);
    Grid->setContentsMargins(8, 5, 8, 5);
    Grid->setHorizontalSpacing(6);
    Grid->setVerticalSpacing(4);

    Grid->addWidget(Heading(QStringLiteral("Selection"), Frame), 1, 0);
    Grid->addWidget(Heading(QStringLiteral("View"), Frame), 2, 0);
    const std::array<const char*, 3> Columns = {"Total", "From", "To"};
    for (int Column = 0; Column < 3; ++Column) {
        QLabel* Head = Heading(QLatin1String(Columns.at(std::size_t(Column))), Frame);
        Grid->addWidget(Head, 0, Column + 1, Qt::AlignRight);
    }
    for (int Index = 0; Index < 6; ++Index) {
        const ValueLabelText& Text = ValueLabels.at(std::size_t(Index));
        auto* Label = new ValueLabel(QLatin1String(Text.Name), Frame);
        Label->setAccessibleName(QLatin1String(Text.Accessible));
        Label->setProperty("StatusHint", QLatin1String(Text.Hint));
        Label->setMinimumWidth(Label->fontMetrics().horizontalAdvance(QLatin1String(LongestValue)) +
                               14);
        Label->installEventFilter(this);
        Label->Clicked = [this, Index] { AskValue(Index); };
        Label->MenuWanted = [this, Index](const QPoint& Where) { ShowPopMnu(Index, Where); };
        (Index < 3 ? SelectLbl : ViewLbl).at(std::size_t(Index % 3)) = Label;
        Grid->addWidget(Label, Index < 3 ? 1 : 2, Index % 3 + 1);
    }

    const std::array<const char*, 3> PosNames = {"", "Position", "Level"};
    const std::array<const char*, 3> PosHints = {
        "", "Current X Position of mouse. hh.mm.ss.ss/Samlpes.",
        "Current Y Position of mouse (and sample height)"};
    Grid->setColumnMinimumWidth(4, 10);
    for (int Index = 1; Index <= 2; ++Index) {
        const QString Hint = QLatin1String(PosHints.at(std::size_t(Index)));
        const QString Word = QLatin1String(PosNames.at(std::size_t(Index)));
        QLabel* Caption =
            ReadOut(QStringLiteral("DisplayPos2Lbl_%1").arg(Index),
                    Word + QStringLiteral(" of the mouse, caption"), Hint, Frame, nullptr);
        Caption->setText(Word);
        QLabel* Value =
            ReadOut(QStringLiteral("DisplayPosLbl_%1").arg(Index),
                    Word + QStringLiteral(" of the mouse"), Hint, Frame, LongestPosition);
        Caption->installEventFilter(this);
        Value->installEventFilter(this);
        DisplayPos2Lbl.at(std::size_t(Index)) = Caption;
        DisplayPosLbl.at(std::size_t(Index)) = Value;
        auto* Pair = new QHBoxLayout;
        Pair->setSpacing(0);
        Pair->addWidget(Caption);
        Pair->addWidget(Value, 1);
        Grid->addLayout(Pair, Index, 5);
    }
    Grid->addWidget(Heading(QStringLiteral("Mouse"), Frame), 0, 5);

    Grid->setColumnMinimumWidth(6, 10);
    Grid->addWidget(Heading(QStringLiteral("Play"), Frame), 0, 7);
    PlayPosLbl =
        ReadOut(QStringLiteral("PlayPosLbl"), QStringLiteral("Play position"),
                QStringLiteral("Play position. hh.mm.ss.ss/Samples."), Frame, LongestPosition);
    PlayPosLbl->installEventFilter(this);
    PlayStatusLbl = ReadOut(QStringLiteral("PlayStatusLbl"), QStringLiteral("Play status"),
                            QStringLiteral("What the player is doing."), Frame, nullptr);
    PlayStatusLbl->installEventFilter(this);
    Grid->addWidget(PlayPosLbl, 1, 7);
    Grid->addWidget(PlayStatusLbl, 2, 7);

    Grid->setColumnMinimumWidth(8, 10);
    SpeedDispPic = ReadOut(QStringLiteral("SpeedDispPic"), QStringLiteral("Play speed"),
                           QStringLiteral("Play speed, forward and reverse. Click to change."),
                           Frame, nullptr);
    SpeedDispPic->setPixmap(ToolIcon(QStringLiteral("Speed")).pixmap(QSize(16, 16)));
    SpeedDispPic->setContentsMargins(0, 0, 0, 0);
    SpeedDispPic->installEventFilter(this);
    Grid->addWidget(SpeedDispPic, 0, 9, Qt::AlignHCenter);
    for (int Index = 1; Index <= 2; ++Index) {
        QLabel* Label = ReadOut(QStringLiteral("SpeedDispLbl_%1").arg(Index),
                                Index == 1 ? QStringLiteral("Play speed forward")
                                           : QStringLiteral("Play speed in reverse"),
                                QStringLiteral("Play speed, forward and reverse. Click to change."),
                                Frame, "200%");
        Label->setText(QStringLiteral("100%"));
        Label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        Label->installEventFilter(this);
        SpeedDispLbl.at(std::size_t(Index)) = Label;
        Grid->addWidget(Label, Index, 9);
    }

    Grid->setColumnMinimumWidth(10, 10);
    DispFrqVolPic = new PicturePanel(QStringLiteral("DispFrqVolPic"), Frame);
    DispFrqVolPic->setAccessibleName(QStringLiteral("Frequency bands around the mouse"));
    DispFrqVolPic->setProperty("StatusHint",
                               QStringLiteral("Frequency bands of the sound around the mouse."));
    DispFrqVolPic->setMinimumWidth(90);
    DispFrqVolPic->installEventFilter(this);
    Grid->addWidget(DispFrqVolPic, 0, 11, 3, 1);
    Grid->setColumnStretch(11, 1);
    return Frame;
}

void WaveEditor_Frm::BuildStatusBar() {
    QStatusBar* Bar = statusBar();
    Bar->setObjectName(QStringLiteral("StatusBar1"));
    Bar->installEventFilter(this);
    const std::array<std::pair<const char*, const char*>, 3> Panels = {
        {{"UserGuide", "Help line"}, {"Size", "Size of the document"}, {"Format", "Format"}}};
    for (const auto& [Name, Accessible] : Panels) {
        auto* Label = new QLabel(Bar);
        Label->setObjectName(QStringLiteral("StatusBar1_") + QLatin1String(Name));
        Label->setAccessibleName(QLatin1String(Accessible));
        Label->setContentsMargins(6, 0, 6, 0);
        const bool Guide = std::string(Name) == "UserGuide";
        if (Guide)
            Label->setMinimumWidth(1);
        Bar->addWidget(Label, Guide ? 1 : 0);
        StatusPanels[Name] = Label;
    }
}

} // namespace quoril
