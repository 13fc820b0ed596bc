#include "view/StripMouse.h"

#include "base/Arithmetic.h"
#include "base/CommandFailure.h"
#include "base/ProgressReport.h"
#include "base/QtText.h"
#include "base/ViewState.h"
#include "playback/PlayMod.h"
#include "selection/DurationText.h"
#include "selection/SelectionMod.h"
#include "settings/UserGuideMod.h"
#include "view/ArrowImage.h"
#include "view/BandDisplay.h"
#include "view/ReadOutLabel.h"
#include "view/WaveEditor_Frm.h"
#include "view/WavePanel.h"

#include <QMouseEvent>
#include <QTimer>
#include <QWheelEvent>

#include <cmath>
#include <string>

namespace quoril {

namespace {

constexpr int MoveWaitMs = 70;

constexpr const char* ScaleHint = "Time scale. Click or select on this scale to play";
constexpr const char* BesideViewHint = "View/selection range shown here, Click here to shift view";
constexpr const char* OnViewHint = "View/selection range shown here, Hold and drag to drag view";
constexpr const char* ArrowHint = "Click to shift view for fine adjustment. Smaller line will "
                                  "move smaller amount.";

bool IsMouse(QEvent::Type Type) {
    return Type == QEvent::MouseButtonPress || Type == QEvent::MouseButtonDblClick ||
           Type == QEvent::MouseMove || Type == QEvent::MouseButtonRelease;
}

/// A fast second click is a press like the first.
bool IsPress(const QMouseEvent& Event) {
    return Event.type() == QEvent::MouseButtonPress || Event.type() == QEvent::MouseButtonDblClick;
}

} // namespace

StripMouse::StripMouse(WaveEditor_Frm& MainWindow)
    : QObject(&MainWindow), Window(MainWindow), MouseMoveWaitTimer(new QTimer(this)),
      Wheel(MainWindow) {
    MouseMoveWaitTimer->setObjectName(QStringLiteral("ScaleMoveWaitTimer"));
    MouseMoveWaitTimer->setSingleShot(true);
    MouseMoveWaitTimer->setInterval(MoveWaitMs);
    connect(MouseMoveWaitTimer, &QTimer::timeout, this, [this] { Scale.MoveWait = false; });
    Window.ScalePic->installEventFilter(this);
    Window.HScrollPic->installEventFilter(this);
    for (ArrowImage* Arrow : Window.ArrowImg)
        Arrow->installEventFilter(this);
}

bool StripMouse::eventFilter(QObject* Watched, QEvent* Event) {
    if (ProgressFrm->IsOn())
        return QObject::eventFilter(Watched, Event);
    if (Event->type() == QEvent::Wheel) {
        const auto* const Strip = static_cast<QWidget*>(Watched);
        quoril::RunCommand({}, [&] { Turn(*Strip, *static_cast<QWheelEvent*>(Event)); });
        Event->accept();
        return true;
    }
    if (Event->type() == QEvent::Leave && Watched == Window.ScalePic)
        ScaleLeft();
    if (!IsMouse(Event->type()))
        return QObject::eventFilter(Watched, Event);
    const auto& Mouse = *static_cast<QMouseEvent*>(Event);
    bool Taken = false;
    quoril::RunCommand({}, [&] {
        if (Watched == Window.ScalePic)
            Taken = OnScale(Mouse);
        else if (Watched == Window.HScrollPic)
            Taken = OnBar(Mouse);
        for (const int Index : {0, 1})
            if (const ArrowImage* Arrow = Window.ArrowImg.at(std::size_t(Index)); Watched == Arrow)
                Taken = OnArrow(Mouse, *Arrow, Index);
    });
    return Taken || QObject::eventFilter(Watched, Event);
}

// ---- Wheel

void StripMouse::Turn(const QWidget& Strip, const QWheelEvent& Event) {
    if (Scroll.IsDragging())
        return;
    const PicturePanel& ScaleStrip = *Window.ScalePic;
    if (&Strip == &ScaleStrip)
        Wheel.Turn(Event,
                   ScaleStrip.PixelAt(Event.position()).x() / Window.Wave_Pic[1]->ScaleSpan());
    else
        Wheel.Turn(Event,
                   BarAcross(Bar(), BarPixel(Strip.mapTo(Window.HScrollPic, Event.position()))));
}

// ---- Time scale

bool StripMouse::OnScale(const QMouseEvent& Event) {
    if (Event.type() == QEvent::MouseMove)
        ScaleMove(Event);
    else if (IsPress(Event))
        ScalePress(Event);
    else if (Event.button() == Qt::LeftButton)
        ScaleRelease(Event);
    return true;
}

std::int32_t StripMouse::ScalePosition(const QPointF& Place) const {
    return Window.PanelScale.PositionAt(Window.ScalePic->PixelAt(Place).x(), Window.Facts().Total);
}

void StripMouse::ScalePress(const QMouseEvent& Event) {
    const std::int32_t Total = Window.Facts().Total;
    if (Total < 1)
        return;
    const std::int32_t Position = ScalePosition(Window.ScalePic->PlaceOf(Event));
    if (Event.button() == Qt::LeftButton) {
        Scale.Press(Position);
        Scale.MoveWait = true;
        MouseMoveWaitTimer->start();
    } else if (Event.button() == Qt::RightButton) {
        const ScaleDeed Deed = ScaleAdjust(Position, Total);
        RefreshStrips();
        Follow(Deed);
    }
}

void StripMouse::ScaleMove(const QMouseEvent& Event) {
    Window.StatusGuide(ScaleHint);
    if (!Event.buttons().testFlag(Qt::LeftButton))
        Scale.Forget();
    const std::int32_t Total = Window.Facts().Total;
    if (Scale.MoveWait || Total < 1)
        return;
    const std::int32_t Position = ScalePosition(Window.ScalePic->PlaceOf(Event));
    OnScaleAt = Window.ScalePic->PlaceOf(Event);
    ShowScalePosition(Position);
    if (Scale.Drag(Position, Total))
        Window.RefreshPlayScale();
}

void StripMouse::ScaleRelease(const QMouseEvent& Event) {
    if (!Scale.IsDown())
        return;
    const ScaleDeed Deed =
        Scale.Release(ScalePosition(Window.ScalePic->PlaceOf(Event)), Window.Facts().Total);
    RefreshStrips();
    Follow(Deed);
}

void StripMouse::ShowScalePosition(std::int32_t Position) {
    const DocumentFacts Document = Window.Facts();
    Window.DisplayPosLbl[2]->setText(QString());
    Window.DisplayPosLbl[1]->setText(
        ShownText(FormatSamples(Position, Document.Freq) + "/" + std::to_string(Position)));
    const std::int32_t WorkChn = WorkChannels(Document.Channel);
    const std::int32_t X = RoundToLong(Window.PanelScale.XOf(Position));
    for (const std::int32_t Channel : {1, 2}) {
        PanelLine* const Line = Window.Wave_Pic.at(std::size_t(Channel))->MouseLine;
        Line->SetX(X);
        Line->setVisible(WorkChn == 0 || WorkChn == Channel);
    }
    Window.ShowBands(Position, WorkChn == 0 ? 1 : WorkChn);
}

void StripMouse::ScaleLeft() {
    // While the button is held the scale has the mouse, wherever it is.
    if (Scale.IsDown() || !OnScaleAt)
        return;
    OnScaleAt.reset();
    for (const std::size_t Index : {1U, 2U}) {
        Window.DisplayPosLbl.at(Index)->clear();
        Window.Wave_Pic.at(Index)->MouseLine->hide();
    }
    Window.Bands->Clear();
}

void StripMouse::PictureRefreshed() {
    if (!OnScaleAt)
        return;
    if (Window.Facts().Total < 1)
        ScaleLeft();
    else
        ShowScalePosition(ScalePosition(*OnScaleAt));
}

void StripMouse::RefreshStrips() {
    Window.RefreshPlayScale();
    Window.RefreshScrollScale();
}

void StripMouse::Follow(const ScaleDeed& Deed) {
    if (Deed.PlayCode != 0)
        PlayCommand(Deed.PlayCode, Deed.PlayArg);
    else if (!Deed.Tip.empty() && GuideChance(ScaleTipChance))
        UserGuide(std::string(Deed.Tip));
}

// ---- Overview bar

ScrollBar StripMouse::Bar() const {
    return {Window.ScrollEdge, Window.HScrollPic->ScaleWidth(), Window.Facts().Total};
}

double StripMouse::BarPixel(const QPointF& Place) const {
    return Window.HScrollPic->PixelAt(Place).x();
}

bool StripMouse::OnBar(const QMouseEvent& Event) {
    const double X = BarPixel(Window.HScrollPic->PlaceOf(Event));
    if (Event.type() == QEvent::MouseMove) {
        BarMove(Event, X);
        return true;
    }
    if (!IsPress(Event))
        Scroll.Release();
    else if (Scroll.Press(Bar(), X))
        Window.Refresh_Wave_View();
    if (Scroll.IsDragging())
        Window.HScrollPic->setCursor(Qt::ClosedHandCursor);
    else
        BarMove(Event, X);
    return true;
}

void StripMouse::BarMove(const QMouseEvent& Event, double X) {
    if (Event.buttons() == Qt::NoButton)
        Scroll.Release();
    const ScrollBar Strip = Bar();
    if (Strip.Total < 1)
        return;
    const bool OnView = Strip.OnView(X);
    if (!Scroll.IsDragging())
        Window.HScrollPic->setCursor(OnView ? Qt::OpenHandCursor : Qt::ArrowCursor);
    Window.StatusGuide(OnView ? OnViewHint : BesideViewHint);
    for (const std::size_t Channel : {1U, 2U})
        Window.Wave_Pic.at(Channel)->MouseLine->hide();
    if (Scroll.Move(Strip, X))
        Window.Refresh_Wave_View();
}

// ---- The arrows

bool StripMouse::OnArrow(const QMouseEvent& Event, const ArrowImage& Arrow, int Index) {
    const double X = Event.position().x();
    if (Event.type() == QEvent::MouseMove) {
        BarMove(Event, BarPixel(Window.HScrollPic->PlaceOf(Event)));
        Window.StatusGuide(ArrowHint);
    } else if (IsPress(Event) && Window.Facts().Total > 0) {
        ArrowShift(Index, std::floor(X), Arrow.width());
        Window.Refresh_Wave_View();
    }
    return true;
}

} // namespace quoril
