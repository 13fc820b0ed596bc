#include "shell/ProgressFrm.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDropEvent>
#include <QImage>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>
#include <gtest/gtest.h>

namespace quoril {
namespace {

/// A main window with one of each thing that a user can do to a window.
struct Program {
    QMainWindow Window;
    QWidget* Body = new QWidget;
    QPushButton* Button = new QPushButton(QStringLiteral("Press"));
    QLineEdit* Field = new QLineEdit;
    QAction* Command = new QAction(QStringLiteral("Run"), &Window);
    ProgressFrmClass Progress{&Window};
    int Presses = 0;
    int Commands = 0;

    Program() {
        auto* Column = new QVBoxLayout(Body);
        Column->addWidget(Button);
        Column->addWidget(Field);
        Window.setCentralWidget(Body);
        Command->setShortcut(QKeySequence(QStringLiteral("Ctrl+R")));
        Window.addAction(Command);
        QObject::connect(Button, &QPushButton::clicked, Button, [this] { ++Presses; });
        QObject::connect(Command, &QAction::triggered, Command, [this] { ++Commands; });
        Window.show();
        Activate();
    }

    void Activate() {
        Window.activateWindow();
        ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == &Window; }));
        Field->setFocus();
    }

    /// Everything at once; returns how many of the ways had an effect.
    int UseEverything() {
        const int Before = Presses + Commands;
        const QString Text = Field->text();
        QTest::mouseClick(Button, Qt::LeftButton);
        QTest::keyClick(Field, Qt::Key_A);
        QTest::keyClick(Field, Qt::Key_R, Qt::ControlModifier);
        return Presses + Commands - Before + (Field->text() != Text ? 1 : 0);
    }

    /// Reports until the window is on the screen.
    void WorkUntilShown() {
        QElapsedTimer Limit;
        Limit.start();
        while (!Progress.isVisible() && Limit.elapsed() < 10000)
            Progress.SetCurrentProgress(0.5F);
        ASSERT_TRUE(Progress.isVisible());
    }
};

QWidget* Bar(ProgressFrmClass& Window) {
    return Window.findChild<QWidget*>(QStringLiteral("ProgBarPic"));
}

/// The bar's pixels in a colour 0x00BBGGRR, by column, in the middle of its height.
int ColumnsInColor(ProgressFrmClass& Window, QRgb Color) {
    QWidget* Picture = Bar(Window);
    const QImage Image = Picture->grab().toImage();
    int Columns = 0;
    for (int X = 0; X < Image.width(); ++X)
        if ((Image.pixel(X, Image.height() / 2) & 0xFFFFFFU) == (Color & 0xFFFFFFU))
            ++Columns;
    return Columns;
}

TEST(ProgressFrm, IsTheReceiverOfReportsWhileItLives) {
    ProgressReport* const Before = quoril::ProgressFrm;
    {
        ProgressFrmClass Window;
        EXPECT_EQ(quoril::ProgressFrm, &Window);
    }
    EXPECT_EQ(quoril::ProgressFrm, Before);
}

TEST(ProgressFrm, HasItsTwoPicturesAndNoButtons) {
    ProgressFrmClass Window;
    EXPECT_NE(Bar(Window), nullptr);
    EXPECT_NE(Window.findChild<QWidget*>(QStringLiteral("BlinkImg")), nullptr);
    EXPECT_TRUE(Window.findChildren<QAbstractButton*>().isEmpty());
}

TEST(ProgressFrm, ReadsBackEveryValueAtOnce) {
    ProgressFrmClass Window;
    Window.SetVisible(true);
    for (const float Value : {0.0F, 0.25F, 1.0F, 1.75F, -3.0F, 0.1F}) {
        Window.SetCurrentProgress(Value);
        EXPECT_EQ(Window.CurrentProgress(), Value);
    }
}

TEST(ProgressFrm, AtZeroShowsItsTextAndNoBar) {
    ProgressFrmClass Window;
    Window.SetBarColor1(0x0000FF);
    Window.SetCurrentProgress(0);
    EXPECT_EQ(ColumnsInColor(Window, qRgb(255, 0, 0)), 0);
    const QImage WithText = Bar(Window)->grab().toImage();
    Window.SetCurrentProgress(-0.5F);
    const QImage Plain = Bar(Window)->grab().toImage();
    EXPECT_NE(WithText, Plain);
    EXPECT_EQ(ColumnsInColor(Window, qRgb(255, 0, 0)), 0);
}

TEST(ProgressFrm, PaintsTheShareOfTheBarInTheChosenColor) {
    ProgressFrmClass Window;
    Window.SetBarColor1(0xFF0000); // blue
    Window.SetCurrentProgress(0.5F);
    EXPECT_NEAR(ColumnsInColor(Window, qRgb(0, 0, 255)), Bar(Window)->width() / 2, 2);
    Window.SetBarColor1(25600); // dark green
    EXPECT_NEAR(ColumnsInColor(Window, qRgb(0, 100, 0)), Bar(Window)->width() / 2, 2);
}

TEST(ProgressFrm, AtOneFillsTheBarAndBeyondOneAsWell) {
    ProgressFrmClass Window;
    Window.SetBarColor1(255); // red
    for (const float Value : {1.0F, 7.0F, 1e30F}) {
        Window.SetCurrentProgress(Value);
        EXPECT_GE(ColumnsInColor(Window, qRgb(255, 0, 0)), Bar(Window)->width() - 2) << Value;
    }
}

TEST(ProgressFrm, ShortCommandsNeverBringItUp) {
    Program All;
    QElapsedTimer Clock;
    Clock.start();
    All.Progress.SetVisible(true);
    while (Clock.elapsed() < ProgressFrmClass::MilliSecondsToShow / 2) {
        All.Progress.SetCurrentProgress(0.5F);
        ASSERT_FALSE(All.Progress.isVisible());
    }
    All.Progress.SetVisible(false);
    All.Progress.SetCurrentProgress(1);
    EXPECT_FALSE(All.Progress.isVisible());
}

TEST(ProgressFrm, LongCommandsBringItUpAfterItsTimeAndTakeItDownAtTheEnd) {
    Program All;
    QElapsedTimer Clock;
    Clock.start();
    All.Progress.SetVisible(true);
    All.WorkUntilShown();
    EXPECT_GE(Clock.elapsed(), ProgressFrmClass::MilliSecondsToShow);
    All.Progress.SetVisible(false);
    EXPECT_FALSE(All.Progress.isVisible());
}

TEST(ProgressFrm, TheLampAloneBringsItUpToo) {
    Program All;
    All.Progress.SetVisible(true);
    QElapsedTimer Limit;
    Limit.start();
    while (!All.Progress.isVisible() && Limit.elapsed() < 10000)
        All.Progress.BlinkLamp();
    EXPECT_TRUE(All.Progress.isVisible());
}

TEST(ProgressFrm, TheLampTogglesAndAReportPutsItOut) {
    ProgressFrmClass Window;
    auto* Lamp = Window.findChild<QWidget*>(QStringLiteral("BlinkImg"));
    EXPECT_TRUE(Lamp->isHidden());
    Window.BlinkLamp();
    EXPECT_FALSE(Lamp->isHidden());
    Window.BlinkLamp();
    EXPECT_TRUE(Lamp->isHidden());
    Window.BlinkLamp();
    Window.SetCurrentProgress(0.3F);
    EXPECT_TRUE(Lamp->isHidden());
}

TEST(ProgressFrm, AMillionReportsPaintAtMostThirtyTimesASecond) {
    Program All;
    struct PaintCounter final : QObject {
        int Paints = 0;
        bool eventFilter(QObject*, QEvent* Event) override {
            if (Event->type() == QEvent::Paint)
                ++Paints;
            return false;
        }
    } Counter;
    Bar(All.Progress)->installEventFilter(&Counter);
    QElapsedTimer Clock;
    Clock.start();
    All.Progress.SetVisible(true);
    All.WorkUntilShown();
    for (int I = 0; I < 1000000; ++I)
        All.Progress.SetCurrentProgress(static_cast<float>(I) / 1000000.0F);
    EXPECT_LE(Counter.Paints, Clock.elapsed() / ProgressFrmClass::MilliSecondsBetweenPaints + 3);
    EXPECT_GE(Counter.Paints, 1);
}

TEST(ProgressFrm, TimersGoOnWhileACommandReports) {
    Program All;
    int Ticks = 0;
    QTimer Timer;
    QObject::connect(&Timer, &QTimer::timeout, &Timer, [&Ticks] { ++Ticks; });
    Timer.start(1);
    All.Progress.SetVisible(true);
    All.WorkUntilShown();
    EXPECT_GE(Ticks, 2);
}

TEST(ProgressFrm, OtherWindowsRepaintWhileACommandReports) {
    Program All;
    struct Painted final : QWidget {
        int Paints = 0;
        void paintEvent(QPaintEvent*) override { ++Paints; }
    } Other;
    Other.show();
    All.Progress.SetVisible(true);
    All.WorkUntilShown();
    const int Before = Other.Paints;
    QElapsedTimer Limit;
    Limit.start();
    Other.update();
    while (Other.Paints == Before && Limit.elapsed() < 10000)
        All.Progress.SetCurrentProgress(0.5F);
    EXPECT_GT(Other.Paints, Before);
}

TEST(ProgressFrm, InputToOtherWindowsIsDiscardedWhileItIsOn) {
    Program All;
    ASSERT_EQ(All.UseEverything(), 3);
    All.Progress.SetVisible(true);
    EXPECT_EQ(All.UseEverything(), 0);
    All.WorkUntilShown();
    All.Activate();
    EXPECT_EQ(All.UseEverything(), 0);
    All.Progress.SetVisible(false);
    All.Activate();
    EXPECT_EQ(All.UseEverything(), 3);
}

TEST(ProgressFrm, AMainWindowIsNotClosedAndTakesNoDropWhileItIsOn) {
    Program All;
    struct DropTarget final : QWidget {
        int Drops = 0;
        DropTarget() { setAcceptDrops(true); }
        void dragEnterEvent(QDragEnterEvent* Event) override { Event->acceptProposedAction(); }
        void dropEvent(QDropEvent*) override { ++Drops; }
    } Target;
    Target.show();
    const auto Drop = [&Target] {
        QMimeData Data;
        Data.setText(QStringLiteral("x"));
        QDragEnterEvent Enter(QPoint(1, 1), Qt::CopyAction, &Data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&Target, &Enter);
        QDropEvent Event(QPointF(1, 1), Qt::CopyAction, &Data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&Target, &Event);
    };
    All.Progress.SetVisible(true);
    All.Window.windowHandle()->close();
    QApplication::processEvents();
    EXPECT_TRUE(All.Window.isVisible());
    Drop();
    EXPECT_EQ(Target.Drops, 0);
    All.Progress.SetVisible(false);
    Drop();
    EXPECT_EQ(Target.Drops, 1);
    All.Window.windowHandle()->close();
    QApplication::processEvents();
    EXPECT_FALSE(All.Window.isVisible());
}

TEST(ProgressFrm, ClosingItDoesNothing) {
    Program All;
    All.Progress.SetVisible(true);
    All.WorkUntilShown();
    All.Progress.windowHandle()->close();
    All.Progress.close();
    EXPECT_TRUE(All.Progress.isVisible());
}

TEST(ProgressFrm, ADialogOfTheRunningCommandHasInput) {
    Program All;
    All.Progress.SetVisible(true);
    All.WorkUntilShown();
    QDialog Dialog(&All.Window);
    auto* Button = new QPushButton(&Dialog);
    int Presses = 0;
    QObject::connect(Button, &QPushButton::clicked, Button, [&Presses] { ++Presses; });
    Dialog.open();
    QTest::mouseClick(Button, Qt::LeftButton);
    EXPECT_EQ(Presses, 1);
    EXPECT_EQ(All.UseEverything(), 0);
    Dialog.windowHandle()->close();
    QApplication::processEvents();
    EXPECT_FALSE(Dialog.isVisible());
    EXPECT_EQ(All.UseEverything(), 0);
}

TEST(ProgressFrm, ADialogThatTheCommandRunsInHasNone) {
    Program All;
    QDialog Dialog(&All.Window);
    auto* Button = new QPushButton(&Dialog);
    int Presses = 0;
    QObject::connect(Button, &QPushButton::clicked, Button, [&Presses] { ++Presses; });
    Dialog.open();
    All.Progress.SetVisible(true);
    QTest::mouseClick(Button, Qt::LeftButton);
    EXPECT_EQ(Presses, 0);
    All.Progress.SetVisible(false);
    QTest::mouseClick(Button, Qt::LeftButton);
    EXPECT_EQ(Presses, 1);
}

TEST(ProgressFrm, GoesOutOfTheWayOfABoxAndComesBackWithTheNextReport) {
    Program All;
    All.Progress.SetVisible(true);
    All.WorkUntilShown();
    {
        const ProgressSuspension Outer;
        {
            const ProgressSuspension Inner;
            EXPECT_FALSE(All.Progress.isVisible());
        }
        for (int I = 0; I < 1000; ++I)
            All.Progress.SetCurrentProgress(0.5F);
        EXPECT_FALSE(All.Progress.isVisible());
        EXPECT_TRUE(All.Progress.IsOn());
    }
    All.WorkUntilShown();
}

TEST(ProgressFrm, ScopesInsideOneAnotherTakeItDownOnce) {
    Program All;
    {
        const ProgressScope Outer(BarColorGather);
        { const ProgressScope Inner(BarColorUndo); }
        EXPECT_TRUE(All.Progress.IsOn());
    }
    EXPECT_FALSE(All.Progress.IsOn());
}

} // namespace
} // namespace quoril
