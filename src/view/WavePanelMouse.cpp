#include "view/WavePanelMouse.h"

#include "base/CommandFailure.h"
#include "base/Failure.h"
#include "base/ProgressReport.h"
#include "base/QtText.h"
#include "base/ViewState.h"
#include "selection/SelectionMod.h"
#include "selection/ViewListener.h"
#include "view/BandDisplay.h"
#include "view/MousePointer.h"
#include "view/PointerCursor.h"
#include "view/ReadOutLabel.h"
#include "view/WaveEditor_Frm.h"
#include "view/WavePanel.h"
#include "view/WaveSource.h"

#include <QApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QTimer>
#include <QWheelEvent>

#include <algorithm>
#include <utility>
#include <vector>

namespace quoril {

namespace {

constexpr int MoveWaitMs = 70;
constexpr int TipLeft = 10;
constexpr int TipAbove = 14;

std::int32_t ButtonOf(Qt::MouseButton Button) {
    if (Button == Qt::LeftButton)
        return MouseButtonLeft;
    return Button == Qt::RightButton ? MouseButtonRight : 0;
}

/// The work of an event. Nothing is done in the midst of a long command.
template <class BodyType>
void Handle(BodyType&& Body) {
    if (!ProgressFrm->IsOn())
        RunCommand({}, std::forward<BodyType>(Body));
}

} // namespace

WavePanelMouse::WavePanelMouse(WaveEditor_Frm& MainWindow)
    : MouseMoveWaitTimer(new QTimer(this)), Window(MainWindow), Wheel(MainWindow),
      ZoomTipLbl(new QLabel(QStringLiteral("Click the other end"),
                            MainWindow.Wave_Pic[1]->parentWidget())) {
    MouseMoveWaitTimer->setObjectName(QStringLiteral("MouseMoveWaitTimer"));
    MouseMoveWaitTimer->setSingleShot(true);
    MouseMoveWaitTimer->setInterval(MoveWaitMs);
    connect(MouseMoveWaitTimer, &QTimer::timeout, this, [this] { Mouse.MoveWait = false; });
    ZoomTipLbl->setObjectName(QStringLiteral("ZoomTipLbl"));
    ZoomTipLbl->setAccessibleName(QStringLiteral("Tip of the zoom tool"));
    ZoomTipLbl->setAttribute(Qt::WA_TransparentForMouseEvents);
    ZoomTipLbl->setAutoFillBackground(true);
    ZoomTipLbl->setBackgroundRole(QPalette::ToolTipBase);
    ZoomTipLbl->setForegroundRole(QPalette::ToolTipText);
    ZoomTipLbl->setFrameShape(QFrame::Box);
    ZoomTipLbl->setMargin(3);
    ZoomTipLbl->adjustSize();
    ZoomTipLbl->hide();
    for (const std::size_t Channel : {1U, 2U})
        Window.Wave_Pic.at(Channel)->installEventFilter(this);
    Window.installEventFilter(this);
}

bool WavePanelMouse::eventFilter(QObject* Watched, QEvent* Event) {
    for (WavePanel* Panel : Window.Wave_Pic)
        if (Panel != nullptr && Watched == Panel)
            return PanelEvent(*Panel, Event);
    if (Watched == &Window &&
        (Event->type() == QEvent::WindowDeactivate || Event->type() == QEvent::WindowBlocked ||
         Event->type() == QEvent::Hide))
        Abandon();
    return QObject::eventFilter(Watched, Event);
}

bool WavePanelMouse::PanelEvent(WavePanel& Panel, QEvent* Event) {
    switch (Event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        Handle([&] { Press(Panel, *static_cast<QMouseEvent*>(Event)); });
        return true;
    case QEvent::MouseMove:
        Handle([&] { Move(Panel, *static_cast<QMouseEvent*>(Event)); });
        return true;
    case QEvent::MouseButtonRelease:
        Handle([&] { Release(Panel, *static_cast<QMouseEvent*>(Event)); });
        return true;
    case QEvent::Wheel:
        Handle([&] { Turn(Panel, *static_cast<QWheelEvent*>(Event)); });
        return true;
    case QEvent::Leave:
        Left();
        return false;
    default:
        return false;
    }
}

// ---- Buttons

void WavePanelMouse::Press(WavePanel& Panel, const QMouseEvent& Event) {
    const bool Free = Mouse.Hold() == MouseHold::None;
    if (Free) {
        Under = &Panel;
        At = Panel.PlaceOf(Event);
    }
    const QPoint Pixel = Panel.PixelAt(Panel.PlaceOf(Event));
    const double X = Pixel.x();
    const std::int32_t Button = ButtonOf(Event.button());
    if (Event.type() == QEvent::MouseButtonDblClick)
        Mouse.DoubleClick(Panel.Channel(), X, Button);
    else
        Mouse.Press(Panel.Channel(), X, Button);
    if (Mouse.MoveWait)
        MouseMoveWaitTimer->start();
    if (Free && Mouse.Hold() == MouseHold::Draw)
        BeginStroke(Pixel);
    ShowZoomTip();
}

void WavePanelMouse::Move(WavePanel& Panel, const QMouseEvent& Event) {
    Window.StatusGuide("Press F1 to see help");
    // The release can have gone to a menu or another window.
    const Qt::MouseButton Held =
        Mouse.Button() == MouseButtonRight ? Qt::RightButton : Qt::LeftButton;
    if (Mouse.Hold() != MouseHold::None && !(Event.buttons() & Held))
        Abandon();
    if (Mouse.MoveWait)
        return;
    Under = &Panel;
    At = Panel.PlaceOf(Event);
    ShowReadOut();
    FollowTool();
    ShowLines();
    ShowZoomTip();
    if (Mouse.Move(Panel.PixelAt(At).x()))
        ShowBand();
    if (Mouse.Hold() == MouseHold::Draw)
        MoveStroke(Panel.PixelAt(At));
}

void WavePanelMouse::Release(WavePanel& Panel, const QMouseEvent& Event) {
    const bool Drawing = Mouse.Hold() == MouseHold::Draw;
    const bool Ended =
        Mouse.Release(Panel.PixelAt(Panel.PlaceOf(Event)).x(), ButtonOf(Event.button()));
    if (Mouse.Hold() == MouseHold::None)
        MouseMoveWaitTimer->stop();
    if (Drawing && Ended)
        EndStroke();
}

void WavePanelMouse::Left() {
    // While a button is held the panel has the mouse, wherever it is.
    if (Mouse.Hold() != MouseHold::None)
        return;
    Under = nullptr;
    HideLines();
    ShowReadOut();
    ShowZoomTip();
}

void WavePanelMouse::Abandon() {
    if (Mouse.Hold() == MouseHold::None)
        return;
    MouseMoveWaitTimer->stop();
    Handle([this] { Mouse.Abandon(); });
}

void WavePanelMouse::Clear() {
    MouseMoveWaitTimer->stop();
    Mouse.Clear();
}

// ---- Wheel

void WavePanelMouse::Turn(const WavePanel& Panel, const QWheelEvent& Event) {
    // What goes out of view while it is drawn would not be taken.
    if (Mouse.Hold() != MouseHold::Pan && Mouse.Hold() != MouseHold::Draw)
        Wheel.Turn(Event, Panel.PixelAt(Event.position()).x() / Panel.ScaleSpan());
}

// ---- What follows the mouse

void WavePanelMouse::ShowReadOut() {
    const DocumentFacts Document = Source->Facts();
    if (Under == nullptr || Document.Total < 1) {
        for (const std::size_t Index : {1U, 2U})
            Window.DisplayPosLbl.at(Index)->clear();
        Window.Bands->Clear();
        return;
    }
    const QPoint Pixel = Under->PixelAt(At);
    const std::int32_t Pos = WavePositionAt(Pixel.x());
    std::vector<std::int16_t> Samples;
    if (WavePlaceAt(Pixel.x()) == Pos) {
        try {
            Source->SamplesAt(Under->Channel(), {Pos}, Samples);
        } catch (const Failure&) {
            // A box at every move would keep the user from everything else. The star says that
            // the sample is not there, and a command that needs it says why.
            Samples.clear();
        }
    }
    Window.DisplayPosLbl[1]->setText(ShownText(MouseTimeText(Pos, Document.Freq)));
    Window.DisplayPosLbl[2]->setText(ShownText(MouseLevelText(
        Samples.empty() ? nullptr : &Samples.front(), Window.PanelScale.ValueAt(Pixel.y()))));
    Window.ShowBands(Pos, Under->Channel());
}

void WavePanelMouse::ShowLines() {
    const DocumentFacts Document = Source->Facts();
    const PointerLook Look = PointerLookOf(MouseMode, ViewMouseMode);
    for (const std::size_t Channel : {1U, 2U}) {
        WavePanel* Panel = Window.Wave_Pic.at(Channel);
        const int X = Under == nullptr ? -1 : Under->PixelAt(At).x();
        const bool Shown = Look.LineOn && Document.Total > 0 && X >= 0 && X < Panel->ScaleWidth() &&
                           (SelBoth || Panel == Under);
        if (Shown)
            Panel->MouseLine->SetX(X);
        Panel->MouseLine->setVisible(Shown);
    }
}

void WavePanelMouse::HideLines() {
    for (const std::size_t Channel : {1U, 2U})
        Window.Wave_Pic.at(Channel)->MouseLine->hide();
}

void WavePanelMouse::ShowTool() {
    ToolShown = {MouseMode, ViewMouseMode};
    const PointerLook Look = PointerLookOf(MouseMode, ViewMouseMode);
    for (const std::size_t Channel : {1U, 2U}) {
        WavePanel* Panel = Window.Wave_Pic.at(Channel);
        Panel->setCursor(PointerCursor(Look.Image, Panel->PixelRatio()));
        Panel->MouseLine->SetColor(ColorOf(Look.LineColor));
        if (!Look.LineOn)
            Panel->MouseLine->hide();
    }
    ShowZoomTip();
}

/// Whoever changes the tool need not tell: dialogs and zooms do it by the way.
void WavePanelMouse::FollowTool() {
    if (ToolShown != Tool{MouseMode, ViewMouseMode})
        ShowTool();
}

void WavePanelMouse::ShowBand() {
    const std::int32_t WorkChn = WorkChannels(Source->Facts().Channel);
    for (const int Channel : {1, 2}) {
        WavePanel* Panel = Window.Wave_Pic.at(std::size_t(Channel));
        if (!Panel->isVisible() || (WorkChn != 0 && WorkChn != Channel))
            continue;
        const BandColumns Columns =
            BandColumnsOf(Mouse.DragFrom, Mouse.DragTo, Panel->ScaleWidth());
        Panel->ShowInverted(Columns.First, Columns.Past);
    }
}

void WavePanelMouse::ShowZoomTip() {
    const bool Shown = ViewMouseMode == ViewMouseModeZoomEnd && Under != nullptr;
    if (Shown) {
        const QPoint Corner = Under->mapTo(ZoomTipLbl->parentWidget(), At.toPoint()) -
                              QPoint(TipLeft, TipAbove + ZoomTipLbl->height());
        const int Most = ZoomTipLbl->parentWidget()->width() - ZoomTipLbl->width();
        ZoomTipLbl->move(std::clamp(Corner.x(), 0, std::max(Most, 0)), std::max(Corner.y(), 0));
        ZoomTipLbl->raise();
    }
    ZoomTipLbl->setVisible(Shown);
}

// ---- When something else changed the view

void WavePanelMouse::PictureRefreshed() {
    Mouse.Revise();
    FollowTool();
    if (Mouse.Hold() == MouseHold::Select)
        Window.RefreshDisplayLabels(true);
    if (Mouse.Dragging())
        ShowBand();
    if (Mouse.Hold() == MouseHold::Draw)
        ShowStroke(1);
    if (Under != nullptr)
        ShowReadOut();
    if (Source->Facts().Total < 1) {
        HideLines();
        Window.Bands->Clear();
    }
}

void WavePanelMouse::CommandRun() {
    if (Mouse.Revise())
        Refresh_Wave_View();
}

} // namespace quoril
