#include "shell/EqlizFrm.h"

#include "base/Arithmetic.h"
#include "base/CommandFailure.h"
#include "base/ModalWindow.h"
#include "base/OkCancelRow.h"
#include "base/QtText.h"
#include "platform/Text.h"
#include "settings/UserGuideMod.h"
#include "shell/BandDraw.h"
#include "shell/BandPanel.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

namespace quoril {

namespace {

constexpr int TipMs = 10000;
constexpr int LargeStep = 10; ///< of Page Up and Page Down
// Pixels of the window system. The frame of the band that is heard stands on that of the chosen
// one.
constexpr int ThinFrame = 2;
constexpr int WideFrame = 4;

constexpr const char* ChangeWords = " Click on this picture to change the Eq volume of each band.";
constexpr const char* PlayWords =
    " Click on this picture to play preview of each band for 2 seconds.";
constexpr const char* WaitWords = " Processing bands. Please wait...";

struct ShapeItem {
    const char* Caption;
    BandShape Shape;
};
constexpr std::array ShapeItems = {
    ShapeItem{"\"V\" - Middle", BandShape::MiddleLow},
    ShapeItem{"\"A\" - Middle", BandShape::MiddleHigh},
    ShapeItem{"Increasing Straight", BandShape::Increasing},
    ShapeItem{"Decreasing Straight", BandShape::Decreasing},
};

QLabel* NewLabel(const char* Name, QWidget* Parent) {
    auto* Label = new QLabel(Parent);
    Label->setObjectName(QLatin1String(Name));
    return Label;
}

} // namespace

EqlizFrm::EqlizFrm(QWidget* Parent) : QDialog(Parent), ToolTipTimer(new QTimer(this)) {
    setObjectName(QStringLiteral("EqlizFrm"));
    auto* Column = new QVBoxLayout(this);
    Column->setContentsMargins(14, 12, 14, 12);
    BuildPictures(*Column);
    BuildCountRow(*Column);
    AddOkCancelRow(*this, *Column, OkClicked);
    findChild<QWidget*>(QStringLiteral("OkBtn"))->setObjectName(QStringLiteral("OK_Btn"));
    findChild<QWidget*>(QStringLiteral("CancelBtn"))->setObjectName(QStringLiteral("Cancel_Btn"));
    ConnectPictures();
    ToolTipTimer->setObjectName(QStringLiteral("ToolTipTimer"));
    ToolTipTimer->setInterval(TipMs);
    ToolTipTimer->setSingleShot(true);
    connect(ToolTipTimer, &QTimer::timeout, this, [this] {
        if (Equalizes())
            UserGuide("Right mouse click on the white/gray bands to see a popup menu. There are "
                      "few additional commands to quickly set the Eq values.");
    });
    connect(this, &QDialog::finished, ToolTipTimer, &QTimer::stop);
    constexpr QSize Usual(680, 520);
    resize(Usual);
}

void EqlizFrm::BuildPictures(QVBoxLayout& Column) {
    const auto Add = [&](const char* Name, const char* Accessible, QAccessible::Role Role,
                         QSize Least, int Stretch) {
        auto* Panel = new BandPanel(QLatin1String(Name), QLatin1String(Accessible), Role, this);
        Panel->setMinimumSize(Least);
        Column.addWidget(Panel, Stretch);
        return Panel;
    };
    constexpr QSize LeastChooser(400, 160);
    constexpr QSize LeastPlay(400, 90);
    BndPasLbl = NewLabel("BndPasLbl", this);
    BndPasLbl->setText(
        QStringLiteral("Band Pass or Stop: (Checked is stop. Click on this picture to toggle)"));
    Column.addWidget(BndPasLbl);
    EqalizPic = Add("EqalizPic", "Volume of each band", QAccessible::Slider, LeastChooser, 3);
    BandPassPic = Add("BandPassPic", "Stop this band", QAccessible::CheckBox, LeastChooser, 3);
    BandPlayPic = Add("BandPlayPic", "Listen to this band", QAccessible::Button, LeastPlay, 1);
}

void EqlizFrm::BuildCountRow(QVBoxLayout& Column) {
    auto* Row = new QHBoxLayout;
    auto* Caption = new QLabel(QStringLiteral("&Number of bands:"), this);
    NoofBand_Txt = new QLineEdit(this);
    NoofBand_Txt->setObjectName(QStringLiteral("NoofBand_Txt"));
    NoofBand_Txt->setAccessibleName(QStringLiteral("Number of bands"));
    NoofBand_Txt->setMaxLength(3);
    NoofBand_Txt->setMaximumWidth(60);
    NoofBand_Txt->installEventFilter(this);
    connect(NoofBand_Txt, &QLineEdit::editingFinished, this, [this] { TakeCount(); });
    Caption->setBuddy(NoofBand_Txt);
    Row->addWidget(Caption);
    Row->addWidget(NoofBand_Txt);
    auto* Steps = new QVBoxLayout;
    Steps->setSpacing(0);
    for (const int Index : {0, 1})
        AddStep(*Steps, Index);
    Row->addLayout(Steps);
    Row->addStretch();
    DisplayLbl_0 = NewLabel("DisplayLbl_0", this);
    DisplayLbl_1 = NewLabel("DisplayLbl_1", this);
    QSizePolicy Kept = DisplayLbl_1->sizePolicy();
    Kept.setRetainSizeWhenHidden(true);
    DisplayLbl_1->setSizePolicy(Kept);
    for (QLabel* Label : {DisplayLbl_0, DisplayLbl_1}) {
        Label->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("00000 Hz ")));
        Row->addWidget(Label);
    }
    Column.addLayout(Row);
}

void EqlizFrm::AddStep(QVBoxLayout& Column, int Index) {
    constexpr QSize Small(22, 14);
    const bool Up = Index == 0;
    auto* Arrow = new QToolButton(this);
    Arrow->setObjectName(QStringLiteral("BandChgAroScrol_%1").arg(Index));
    Arrow->setAccessibleName(Up ? QStringLiteral("One band more")
                                : QStringLiteral("One band less"));
    Arrow->setArrowType(Up ? Qt::UpArrow : Qt::DownArrow);
    Arrow->setAutoRepeat(true);
    Arrow->setFocusPolicy(Qt::NoFocus); // the field takes the same steps by keys
    Arrow->setFixedSize(Small);
    connect(Arrow, &QToolButton::clicked, this, [this, Up] { ChangeCount(Up ? 1 : -1); });
    Column.addWidget(Arrow);
}

void EqlizFrm::ConnectPictures() {
    EqalizPic->Pressed = [this](const QPoint& Pixel) {
        const BandPicture Place = EqalizPic->Geometry(Choice.NoOfBands());
        ChooseBand(Place.BandAt(Pixel.x()));
        SetValue(Chosen, Place.ValueAt(Pixel.y()));
    };
    EqalizPic->Moved = [this](const QPoint& Pixel) {
        StatusGuide("Click to set volume value of each band. Right mouse click for menu.");
        const BandPicture Place = EqalizPic->Geometry(Choice.NoOfBands());
        ShowGainAt(Place.BandAt(Pixel.x()), Place.ValueAt(Pixel.y()));
    };
    EqalizPic->MenuWanted = [this](const QPoint& GlobalPos) { ShowPopUp(GlobalPos); };
    EqalizPic->KeyPressed = [this](int Key) { EqalizKey(Key); };
    EqalizPic->ValueWanted = [this](int Percent) { SetValue(Chosen, BandValueOfPercent(Percent)); };
    BandPassPic->Pressed = [this](const QPoint& Pixel) {
        ChooseBand(BandUnder(*BandPassPic, Pixel));
        Toggle(Chosen);
    };
    BandPassPic->Moved = [this](const QPoint& Pixel) {
        StatusGuide("Click to stop/pass the band.");
        ShowStop(BandUnder(*BandPassPic, Pixel));
    };
    BandPassPic->KeyPressed = [this](int Key) { BandPassKey(Key); };
    BandPlayPic->Pressed = [this](const QPoint& Pixel) {
        ChooseBand(BandUnder(*BandPlayPic, Pixel));
        Audition(Chosen);
    };
    BandPlayPic->KeyPressed = [this](int Key) {
        if (!ChooseByKey(Key) && Key == Qt::Key_Space)
            Audition(Chosen);
    };
    for (BandPanel* Panel : {EqalizPic, BandPassPic})
        Panel->Redraw = [this] { DrawChooser(); };
    BandPlayPic->Redraw = [this] { DrawPlay(); };
}

void EqlizFrm::SetWorkingMode(std::int32_t WorkingMode) {
    Choice = BandChoice::Read(WorkingMode);
    setWindowTitle(Equalizes() ? QStringLiteral(" Equalizer")
                               : QStringLiteral(" Band Pass Filter"));
    EqalizPic->setVisible(Equalizes());
    BandPassPic->setVisible(!Equalizes());
    BndPasLbl->setVisible(!Equalizes());
    DisplayLbl_1->setVisible(!Equalizes());
    Chooser().setFocus();
    ToolTipTimer->start();
    BandFreq = ShownFrequencies(Choice.NoOfBands());
    NoofBand_Txt->setText(QString::number(Choice.NoOfBands()));
    ShowBand(Chosen);
    DrawAll();
    (void)Preview.Collect();
}

void EqlizFrm::accept() {
    TakeCount(); // the key of the button does not leave the field
    Choice.Accept();
    QDialog::accept();
}

// ---- What the user does

void EqlizFrm::ChooseBand(std::int32_t Band) {
    Chosen = std::clamp(Band, 1, Choice.NoOfBands());
    ShowBand(Chosen);
    DrawAll();
}

void EqlizFrm::SetValue(std::int32_t Band, std::int32_t Value) {
    if (!Choice.SetValue(Band, Value))
        return;
    ShowBand(Band);
    DrawChooser();
}

void EqlizFrm::Toggle(std::int32_t Band) {
    Choice.Toggle(Band);
    ShowBand(Band);
    DrawChooser();
}

void EqlizFrm::Audition(std::int32_t Band) {
    RunCommand(Equalizes() ? "Equalizier Error" : "Band Pass Filter Error", [&] {
        if (Preview.MustSplit()) {
            BandDraw(BandPlayPic->Picture(), BandPlayPic->PixelRatio(), font(),
                     BandPlayPic->Geometry(Choice.NoOfBands()))
                .Words(QLatin1String(WaitWords));
            BandPlayPic->repaint();
        }
        Preview.Audition(Band, Choice.NoOfBands());
        Heard = Band;
    });
    DrawPlay();
}

bool EqlizFrm::ChooseByKey(int Key) {
    switch (Key) {
    case Qt::Key_Left:
        ChooseBand(Chosen - 1);
        return true;
    case Qt::Key_Right:
        ChooseBand(Chosen + 1);
        return true;
    case Qt::Key_Home:
        ChooseBand(1);
        return true;
    case Qt::Key_End:
        ChooseBand(Choice.NoOfBands());
        return true;
    default:
        return false;
    }
}

void EqlizFrm::EqalizKey(int Key) {
    if (ChooseByKey(Key))
        return;
    int Step = 0;
    if (Key == Qt::Key_Up || Key == Qt::Key_PageUp)
        Step = Key == Qt::Key_Up ? 1 : LargeStep;
    else if (Key == Qt::Key_Down || Key == Qt::Key_PageDown)
        Step = Key == Qt::Key_Down ? -1 : -LargeStep;
    SetValue(Chosen, Choice.Value(Chosen) + Step);
}

void EqlizFrm::BandPassKey(int Key) {
    if (ChooseByKey(Key))
        return;
    // Up lets the band pass, down stops it.
    const bool Changes = Key == Qt::Key_Space || (Key == Qt::Key_Up && Choice.Stopped(Chosen)) ||
                         (Key == Qt::Key_Down && !Choice.Stopped(Chosen));
    if (Changes)
        Toggle(Chosen);
}

void EqlizFrm::TakeCount() {
    const double Entered = RoundEven(LeadingNumber(CoreText(NoofBand_Txt->text())));
    constexpr double Far = 1000;
    if (Choice.SetNoOfBands(static_cast<std::int32_t>(std::clamp(Entered, -Far, Far)))) {
        Preview.BandsChanged();
        Heard = 0;
        BandFreq = ShownFrequencies(Choice.NoOfBands());
        ChooseBand(Chosen);
    }
    NoofBand_Txt->setText(QString::number(Choice.NoOfBands()));
}

void EqlizFrm::ChangeCount(std::int32_t By) {
    const std::int32_t Count = NoofBand_Txt->text().toInt() + By;
    if (Count < FewestBands || Count > MostBands)
        return;
    NoofBand_Txt->setText(QString::number(Count));
    TakeCount();
}

bool EqlizFrm::eventFilter(QObject* Watched, QEvent* Event) {
    if (Watched != NoofBand_Txt)
        return QDialog::eventFilter(Watched, Event);
    if (Event->type() == QEvent::Enter || Event->type() == QEvent::FocusIn)
        StatusGuide("Enter No of Equalizing band here");
    if (Event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(Watched, Event);
    switch (static_cast<QKeyEvent*>(Event)->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        TakeCount(); // and the dialog stays
        return true;
    case Qt::Key_Up:
        ChangeCount(1);
        return true;
    case Qt::Key_Down:
        ChangeCount(-1);
        return true;
    default:
        return QDialog::eventFilter(Watched, Event);
    }
}

// ---- The menu

void EqlizFrm::BuildPopUp() {
    const auto Run = [this](void (*Change)(BandSet&)) {
        return [this, Change] {
            Change(Choice.EqBands);
            ShowBand(Chosen);
            DrawChooser();
        };
    };
    const auto Add = [](QMenu& Menu, const QString& Name, const QString& Caption) {
        QAction* Entry = Menu.addAction(Caption);
        Entry->setObjectName(Name);
        return Entry;
    };
    EqalizPopUpMnu = new QMenu(this);
    EqalizPopUpMnu->setObjectName(QStringLiteral("EqalizPopUpMnu"));
    QMenu* Mother = EqalizPopUpMnu->addMenu(QStringLiteral("&Set From ..."));
    Mother->menuAction()->setObjectName(QStringLiteral("EqalizSetFromMotherMnu"));
    for (std::size_t Index = 0; Index < ShapeItems.size(); ++Index) {
        const ShapeItem& Item = ShapeItems.at(Index);
        connect(Add(*Mother, QStringLiteral("EqalizSetFromMnu_%1").arg(Index + 1),
                    QLatin1String(Item.Caption)),
                &QAction::triggered, this, [this, Shape = Item.Shape] {
                    BandSetShape(Choice.EqBands, Shape);
                    ShowBand(Chosen);
                    DrawChooser();
                });
    }
    struct Row {
        const char* Name;
        const char* Caption;
        void (*Change)(BandSet&);
    };
    for (const Row& Each : {Row{"EqalizReverseMnu", "&Reverse", BandSetReverse},
                            Row{"EqalizInvertMnu", "&Invert", BandSetInvert},
                            Row{"EqalizAllZeroMnu", "&All 100%", BandSetNeutral}})
        connect(Add(*EqalizPopUpMnu, QLatin1String(Each.Name), QLatin1String(Each.Caption)),
                &QAction::triggered, this, Run(Each.Change));
}

void EqlizFrm::ShowPopUp(const QPoint& GlobalPos) {
    if (EqalizPopUpMnu == nullptr)
        BuildPopUp();
    EqalizPopUpMnu->popup(GlobalPos);
}

// ---- What is shown

std::int32_t EqlizFrm::BandUnder(const BandPanel& Panel, const QPoint& Pixel) const {
    return Panel.Geometry(Choice.NoOfBands()).BandAt(Pixel.x());
}

void EqlizFrm::ShowBand(std::int32_t Band) {
    if (Equalizes())
        ShowGainAt(Band, Choice.Value(Band));
    else
        ShowStop(Band);
    Describe();
}

void EqlizFrm::ShowGainAt(std::int32_t Band, std::int32_t Value) {
    DisplayLbl_0->setText(QStringLiteral("%1 Hz").arg(BandFreq[static_cast<std::size_t>(Band)]));
    DisplayLbl_1->setText(QStringLiteral("%1%").arg(BandPercent(Value)));
    DisplayLbl_1->setVisible(Value == Choice.Value(Band));
}

void EqlizFrm::ShowStop(std::int32_t Band) {
    DisplayLbl_0->setText(QStringLiteral("%1 Hz").arg(BandFreq[static_cast<std::size_t>(Band)]));
    const bool Stopped = Choice.Stopped(Band);
    QPalette Colors = DisplayLbl_1->palette();
    Colors.setColor(QPalette::WindowText, ColorFromBgr(Stopped ? 255 : 0xFF0000));
    DisplayLbl_1->setPalette(Colors);
    DisplayLbl_1->setText(Stopped ? QStringLiteral("Stop") : QStringLiteral("Pass"));
}

void EqlizFrm::Describe() {
    const QString Band = QStringLiteral("Band %1 of %2, %3 Hz")
                             .arg(Chosen)
                             .arg(Choice.NoOfBands())
                             .arg(BandFreq[static_cast<std::size_t>(Chosen)]);
    EqalizPic->Tell(Band, BandPercent(Choice.Value(Chosen)));
    BandPassPic->Tell(Band, Choice.Stopped(Chosen) ? 1 : 0);
    BandPlayPic->Tell(Band, 0);
}

void EqlizFrm::DrawAll() {
    DrawChooser();
    DrawPlay();
}

void EqlizFrm::DrawChooser() {
    BandPanel& Panel = Chooser();
    BandDraw Art(Panel.Picture(), Panel.PixelRatio(), font(), Panel.Geometry(Choice.NoOfBands()));
    Art.Columns(BandFreq, Equalizes() ? QString(QLatin1String(ChangeWords)) : QString());
    if (Equalizes())
        Art.Values(Choice);
    else
        Art.Stops(Choice, BandFreq);
    if (Panel.hasFocus())
        Art.Frame(Chosen, palette().color(QPalette::Highlight), ThinFrame);
    Panel.update();
}

void EqlizFrm::DrawPlay() {
    BandDraw Art(BandPlayPic->Picture(), BandPlayPic->PixelRatio(), font(),
                 BandPlayPic->Geometry(Choice.NoOfBands()));
    Art.Columns(BandFreq, QLatin1String(PlayWords));
    if (BandPlayPic->hasFocus())
        Art.Frame(Chosen, palette().color(QPalette::Highlight), WideFrame);
    if (Heard > 0)
        Art.Frame(Heard, Qt::red, ThinFrame);
    BandPlayPic->update();
}

void EqlizAsker::ShowEqliz(std::int32_t WorkingMode) {
    EqlizFrm Dialog(WindowInUse());
    Dialog.SetWorkingMode(WorkingMode);
    RunModal(Dialog);
}

} // namespace quoril
