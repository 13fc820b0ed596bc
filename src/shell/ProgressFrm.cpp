#include "shell/ProgressFrm.h"

#include "base/ProgramTitle.h"
#include "view/PicturePanel.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPainter>
#include <QScreen>
#include <QWindow>
#include <algorithm>

namespace quoril {

namespace {

/// What a user does to a window, as against what the system wants of it.
bool IsInput(const QEvent& Event) {
    switch (Event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::NonClientAreaMouseButtonPress:
    case QEvent::NonClientAreaMouseButtonRelease:
    case QEvent::NonClientAreaMouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::InputMethod:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::NativeGesture:
        return true;
    case QEvent::Close: // from the window system; the program may close its own windows
        return Event.spontaneous();
    default:
        return false;
    }
}

/// A round lamp, drawn so that it is sharp at every scale.
class LampPicture final : public QWidget {
  public:
    using QWidget::QWidget;

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter Painter(this);
        Painter.setRenderHint(QPainter::Antialiasing);
        Painter.setPen(QPen(QColor(0, 96, 0), 1));
        QRadialGradient Glow(QPointF(width() * 0.4, height() * 0.4), width() * 0.6);
        Glow.setColorAt(0, QColor(190, 255, 190));
        Glow.setColorAt(1, QColor(0, 170, 0));
        Painter.setBrush(Glow);
        Painter.drawEllipse(QRectF(rect()).adjusted(1, 1, -1, -1));
    }
};

} // namespace

class ProgressFrmClass::BarPicture final : public QWidget {
  public:
    using QWidget::QWidget;
    float Part = 0;
    std::uint32_t BarColor1 = BarColorGather;

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter Painter(this);
        Painter.fillRect(rect(), palette().color(QPalette::Base));
        if (Part == 0.0F) {
            Painter.setPen(palette().color(QPalette::Text));
            Painter.drawText(QPoint(2, 2 + Painter.fontMetrics().ascent()),
                             QStringLiteral("Processing... Please wait..."));
        } else {
            // The value is painted as it comes; beyond the picture there is nothing to see.
            const double Right = static_cast<double>(Part) * width();
            if (Right > 0)
                Painter.fillRect(QRectF(0, 0, std::min(Right, width() + 1.0), height()),
                                 ColorFromBgr(static_cast<std::int32_t>(BarColor1)));
        }
        Painter.setPen(palette().color(QPalette::Mid));
        Painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
};

ProgressFrmClass::ProgressFrmClass(QWidget* Main)
    : QWidget(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                           Qt::WindowDoesNotAcceptFocus),
      MainWindow(Main), ProgBarPic(new BarPicture(this)), BlinkImg(new LampPicture(this)) {
    setObjectName(QStringLiteral("ProgressFrm"));
    setWindowTitle(QString::fromUtf8(ProgramTitle));
    setAccessibleName(tr("Progress of the running command"));
    setAttribute(Qt::WA_ShowWithoutActivating);

    ProgBarPic->setObjectName(QStringLiteral("ProgBarPic"));
    ProgBarPic->setAccessibleName(tr("Part of the work that is done"));
    ProgBarPic->setFixedSize(std::max(320, fontMetrics().horizontalAdvance(
                                               QStringLiteral("Processing... Please wait...")) +
                                               40),
                             fontMetrics().height() + 8);

    BlinkImg->setObjectName(QStringLiteral("BlinkImg"));
    BlinkImg->setAccessibleName(tr("Lamp that blinks while work goes on"));
    BlinkImg->setFixedSize(14, 14);
    QSizePolicy KeepsItsPlace = BlinkImg->sizePolicy();
    KeepsItsPlace.setRetainSizeWhenHidden(true);
    BlinkImg->setSizePolicy(KeepsItsPlace);
    BlinkImg->hide();

    auto* Row = new QHBoxLayout(this);
    Row->addWidget(ProgBarPic);
    Row->addWidget(BlinkImg);
    Row->setSizeConstraint(QLayout::SetFixedSize);

    SetProgressReport(this);
    qApp->installEventFilter(this);
}

ProgressFrmClass::~ProgressFrmClass() {
    SetProgressReport(nullptr);
}

void ProgressFrmClass::SetVisible(bool Visible) {
    if (Visible == On)
        return;
    On = Visible;
    if (On) {
        ModalAtStart = QApplication::activeModalWidget();
        WasInFront = false;
        SinceOn.start();
        SincePaint.start();
    } else {
        hide();
        ModalAtStart.clear();
    }
}

void ProgressFrmClass::SetBarColor1(std::uint32_t Color) {
    ProgBarPic->BarColor1 = Color;
    ProgBarPic->update();
}

void ProgressFrmClass::SetCurrentProgress(float NewValue) {
    Value = NewValue;
    ProgBarPic->Part = NewValue;
    if (LampOn) {
        LampOn = false;
        BlinkImg->hide();
    }
    if (DueForPaint())
        Report();
}

void ProgressFrmClass::BlinkLamp() {
    LampOn = !LampOn;
    BlinkImg->setVisible(LampOn);
    if (DueForPaint())
        Report();
}

bool ProgressFrmClass::DueForPaint() const {
    return On && !InEvents && Suspended == 0 && SincePaint.elapsed() >= MilliSecondsBetweenPaints;
}

void ProgressFrmClass::Report() {
    const bool Due = SinceOn.elapsed() >= MilliSecondsToShow;
    if (Due && !isVisible())
        ShowOverMainWindow();
    ProgBarPic->update();
    if (Due)
        KeepInFront();
    InEvents = true;
    QCoreApplication::processEvents(Due ? QEventLoop::AllEvents
                                        : QEventLoop::ExcludeUserInputEvents);
    InEvents = false;
    SincePaint.start();
}

void ProgressFrmClass::ShowOverMainWindow() {
    adjustSize();
    const QWidget* Under =
        QApplication::activeWindow() != nullptr ? QApplication::activeWindow() : MainWindow.data();
    const QRect Place = Under != nullptr && Under->isVisible()
                            ? Under->frameGeometry()
                            : QGuiApplication::primaryScreen()->availableGeometry();
    move(Place.center() - rect().center());
    if (MainWindow != nullptr && MainWindow->windowHandle() != nullptr) {
        static_cast<void>(winId()); // makes the window that the owner is set on
        windowHandle()->setTransientParent(MainWindow->windowHandle());
    }
    show();
}

void ProgressFrmClass::KeepInFront() {
    const QWidget* Active = QApplication::activeWindow();
    const bool InFront = Active != nullptr && (Active == this || Active == MainWindow);
    // The user who switched away is left alone; the user who comes back finds both windows on top.
    if (InFront && !WasInFront) {
        if (MainWindow != nullptr)
            MainWindow->raise();
        raise();
    }
    WasInFront = InFront;
}

bool ProgressFrmClass::MayHaveInput(QObject* Receiver) const {
    const QWidget* Modal = QApplication::activeModalWidget();
    if (Modal == nullptr || Modal == ModalAtStart)
        return false;
    while (Receiver != nullptr) {
        if (Receiver == Modal || Receiver == Modal->windowHandle())
            return true;
        QObject* Above = Receiver->parent();
        // A list that drops down from the dialog is a window of its own.
        if (const auto* Window = qobject_cast<QWindow*>(Receiver); Window != nullptr && !Above)
            Above = Window->transientParent();
        Receiver = Above;
    }
    return false;
}

bool ProgressFrmClass::eventFilter(QObject* Receiver, QEvent* Event) {
    if (!On || !IsInput(*Event) || MayHaveInput(Receiver))
        return false;
    Event->ignore();
    return true;
}

void ProgressFrmClass::closeEvent(QCloseEvent* Event) {
    Event->ignore();
}

void ProgressFrmClass::Suspend() {
    if (Suspended++ == 0)
        hide();
}

void ProgressFrmClass::Resume() {
    --Suspended;
}

} // namespace quoril
