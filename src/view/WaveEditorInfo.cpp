// The strip of values below the overview bar.
#include "view/BandDisplay.h"
#include "view/ElidedLabel.h"
#include "view/InfoStrip.h"
#include "view/PicturePanel.h"
#include "view/ToolIcon.h"
#include "view/ValueLabel.h"
#include "view/WaveEditor_Frm.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>

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
constexpr const char* LongestLevel = "-32768/-32768";
constexpr const char* LongestStatus = "Playing in reverse";
constexpr int LeastBandWidth = 40;
constexpr int MostBandWidth = 240;

/// A label that shows a value in the colours of the wave view.
ReadOutLabel* ReadOut(const QString& Name, const QString& Accessible, const QString& Hint,
                      QWidget* Parent, const char* Longest) {
    auto* Label = new ReadOutLabel(Name, Parent, QLatin1String(Longest));
    Label->setAccessibleName(Accessible);
    Label->setProperty("StatusHint", Hint);
    return Label;
}

/// Makes a label one of the window's own background.
QLabel* Plain(QLabel* Label, const QString& Name, const QString& Accessible, const QString& Hint) {
    Label->setObjectName(Name);
    Label->setAccessibleName(Accessible);
    Label->setProperty("StatusHint", Hint);
    return Label;
}

QLabel* Heading(const QString& Text, QWidget* Parent) {
    auto* Label = new QLabel(Text, Parent);
    Label->setForegroundRole(QPalette::WindowText);
    Label->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    Label->setMinimumHeight(InfoStrip::HeadIcon);
    return Label;
}

} // namespace

void WaveEditor_Frm::BuildInfoFrame() {
    InfoFrame = new InfoStrip(Client);
    InfoFrame->installEventFilter(this);
    BuildValueLabels(InfoFrame->AddGroup());
    BuildMouseReadOut(InfoFrame->AddFlatGroup());
    BuildPlayReadOut(InfoFrame->AddFlatGroup());
    BuildSpeedReadOut(InfoFrame->AddGroup());
    BuildBandDisplay(InfoFrame->AddGroup(1));
}

void WaveEditor_Frm::BuildBandDisplay(QGridLayout* Grid) {
    DispFrqVolPic = new PicturePanel(QStringLiteral("DispFrqVolPic"), Grid->parentWidget());
    DispFrqVolPic->setAccessibleName(QStringLiteral("Frequency bands around the mouse"));
    DispFrqVolPic->setProperty(
        "StatusHint",
        QStringLiteral("Graphical audio volume of different bands at mouse position."));
    DispFrqVolPic->setMinimumWidth(LeastBandWidth);
    DispFrqVolPic->setMaximumWidth(MostBandWidth);
    DispFrqVolPic->installEventFilter(this);
    Bands = new BandDisplay(DispFrqVolPic);
    Grid->addWidget(DispFrqVolPic, 0, 1, 3, 1);
    Grid->setColumnStretch(0, 1);
    Grid->setColumnStretch(1, 2);
}

void WaveEditor_Frm::BuildValueLabels(QGridLayout* Grid) {
    QWidget* Frame = Grid->parentWidget();
    Grid->addWidget(Heading(QStringLiteral("Selection"), Frame), 1, 0);
    Grid->addWidget(Heading(QStringLiteral("View"), Frame), 2, 0);
    const std::array<const char*, 3> Columns = {"Total", "From", "To"};
    for (int Column = 0; Column < 3; ++Column)
        Grid->addWidget(Heading(QLatin1String(Columns.at(std::size_t(Column))), Frame), 0,
                        Column + 1, Qt::AlignRight);
    for (int Index = 0; Index < 6; ++Index) {
        const ValueLabelText& Text = ValueLabels.at(std::size_t(Index));
        auto* Label = new ValueLabel(QLatin1String(Text.Name), Frame, QLatin1String(LongestValue));
        Label->setAccessibleName(QLatin1String(Text.Accessible));
        Label->setProperty("StatusHint", QLatin1String(Text.Hint));
        Label->installEventFilter(this);
        Label->Clicked = [this, Index] { AskValue(Index); };
        Label->MenuWanted = [this, Index](const QPoint& Where) { ShowPopMnu(Index, Where); };
        (Index < 3 ? SelectLbl : ViewLbl).at(std::size_t(Index % 3)) = Label;
        Grid->addWidget(Label, Index < 3 ? 1 : 2, Index % 3 + 1);
    }
}

void WaveEditor_Frm::BuildMouseReadOut(QBoxLayout* Parts) {
    QWidget* Frame = Parts->parentWidget();
    Parts->addWidget(Heading(QStringLiteral("Mouse"), Frame));
    const std::array<const char*, 3> Words = {"", "Time", "Level"};
    const std::array<const char*, 3> Hints = {"",
                                              "Current X Position of mouse. hh.mm.ss.ss/Samlpes.",
                                              "Current Y Position of mouse (and sample height)"};
    const std::array<const char*, 3> Longest = {"", LongestPosition, LongestLevel};
    int CaptionWidth = 0;
    for (int Index = 1; Index <= 2; ++Index) {
        const QString Hint = QLatin1String(Hints.at(std::size_t(Index)));
        const QString Word = QLatin1String(Words.at(std::size_t(Index)));
        ReadOutLabel* Caption =
            ReadOut(QStringLiteral("DisplayPos2Lbl_%1").arg(Index),
                    Word + QStringLiteral(" at the mouse, caption"), Hint, Frame, nullptr);
        Caption->setText(Word);
        CaptionWidth = std::max(CaptionWidth, Caption->sizeHint().width());
        ReadOutLabel* Value = ReadOut(QStringLiteral("DisplayPosLbl_%1").arg(Index),
                                      Word + QStringLiteral(" at the mouse"), Hint, Frame,
                                      Longest.at(std::size_t(Index)));
        Caption->installEventFilter(this);
        Value->installEventFilter(this);
        DisplayPos2Lbl.at(std::size_t(Index)) = Caption;
        DisplayPosLbl.at(std::size_t(Index)) = Value;
        auto* Pair = new QHBoxLayout;
        Pair->setSpacing(0);
        Pair->addWidget(Caption);
        Pair->addWidget(Value, 1);
        Parts->addLayout(Pair);
    }
    for (const std::size_t Index : {1U, 2U})
        DisplayPos2Lbl.at(Index)->setFixedWidth(CaptionWidth);
}

void WaveEditor_Frm::BuildPlayReadOut(QBoxLayout* Parts) {
    QWidget* Frame = Parts->parentWidget();
    Parts->addWidget(Heading(QStringLiteral("Play"), Frame));
    PlayPosLbl = ReadOut(QStringLiteral("PlayPosLbl"), QStringLiteral("Play position"),
                         QStringLiteral("Current position of playing. hh.mm.ss.ss/Samples."), Frame,
                         LongestPosition);
    PlayStatusLbl =
        Plain(new ElidedLabel(Frame), QStringLiteral("PlayStatusLbl"),
              QStringLiteral("Play status"), QStringLiteral("What the player is doing."));
    // Another text must not move what stands around it.
    PlayStatusLbl->setMinimumSize(
        PlayStatusLbl->fontMetrics().horizontalAdvance(QLatin1String(LongestStatus)),
        InfoFrame->ValueHeight());
    PlayStatusLbl->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    PlayPosLbl->installEventFilter(this);
    PlayStatusLbl->installEventFilter(this);
    Parts->addWidget(PlayPosLbl);
    Parts->addWidget(PlayStatusLbl);
}

void WaveEditor_Frm::BuildSpeedReadOut(QGridLayout* Grid) {
    QWidget* Frame = Grid->parentWidget();
    const QString Hint = QStringLiteral("Play speed, forward and reverse. Click to change.");
    const auto Clickable = [&](QLabel* Label) {
        Label->setProperty("ClickCommand", QStringLiteral("SoundTmpoMnu"));
        Label->setCursor(Qt::PointingHandCursor);
        Label->installEventFilter(this);
        return Label;
    };
    SpeedDispPic = Clickable(Plain(new QLabel(Frame), QStringLiteral("SpeedDispPic"),
                                   QStringLiteral("Play speed"), Hint));
    SpeedDispPic->setPixmap(
        ToolIcon(QStringLiteral("Speed"))
            .pixmap(QSize(InfoStrip::HeadIcon, InfoStrip::HeadIcon), devicePixelRatioF()));
    Grid->addWidget(SpeedDispPic, 0, 1, Qt::AlignRight);
    const std::array<const char*, 3> Icons = {"", "Play", "PlayRev"};
    const std::array<const char*, 3> Names = {"", "Play speed forward", "Play speed in reverse"};
    for (int Index = 1; Index <= 2; ++Index) {
        auto* Arrow = new QLabel(Frame);
        Arrow->setPixmap(ToolIcon(QLatin1String(Icons.at(std::size_t(Index))))
                             .pixmap(QSize(12, 12), devicePixelRatioF()));
        Grid->addWidget(Arrow, Index, 0);
        QLabel* Label =
            Clickable(Plain(new QLabel(Frame), QStringLiteral("SpeedDispLbl_%1").arg(Index),
                            QLatin1String(Names.at(std::size_t(Index))), Hint));
        Label->setText(QStringLiteral("100%"));
        Label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        Label->setMinimumWidth(Label->fontMetrics().horizontalAdvance(QLatin1String("200%")));
        SpeedDispLbl.at(std::size_t(Index)) = Label;
        Grid->addWidget(Label, Index, 1);
    }
}

} // namespace quoril
