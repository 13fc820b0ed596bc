#include "shell/WindowPlaceKeeper.h"

#include "settings/STD1.h"
#include "support/TestSession.h"

#include <QScreen>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

namespace quoril {
namespace {

using test::TestSession;

/// A window that tells its keeper of each change, as the main window does.
struct KeptWindow final : QWidget {
    WindowPlaceKeeper Keeper{*this};

    void resizeEvent(QResizeEvent*) override { Keeper.Record(); }
    void moveEvent(QMoveEvent*) override { Keeper.Record(); }
    void changeEvent(QEvent* Event) override {
        if (Event->type() == QEvent::WindowStateChange)
            Keeper.Record();
    }
    void Start() {
        Keeper.Restore();
        show();
        QApplication::processEvents();
    }
};

std::string Stored() {
    return IniGet("MainWindow", "Window Size", "none");
}

TEST(WindowPlaceKeeper, GivesBackTheStoredPlace) {
    const TestSession Session;
    IniPut("MainWindow", "Window Size", "0,600,450,8000,6000");
    KeptWindow Window;
    Window.Start();
    EXPECT_EQ(Window.x(), 40);
    EXPECT_EQ(Window.y(), 30);
    EXPECT_EQ(Window.width(), 533);
    EXPECT_EQ(Window.height(), 400);
}

TEST(WindowPlaceKeeper, AWindowThatWasShownElsewhereGoesToItsPlaceOnce) {
    const TestSession Session;
    IniPut("MainWindow", "Window Size", "0,600,450,8000,6000");
    KeptWindow Window;
    Window.Start();
    Window.move(39, 10); // as a desktop may put it that leaves out the frame
    Window.Keeper.Settle();
    EXPECT_EQ(Window.pos(), QPoint(40, 30));
    Window.move(39, 10);
    Window.Keeper.Settle();
    EXPECT_EQ(Window.pos(), QPoint(39, 10)) << "the user's own place";
}

TEST(WindowPlaceKeeper, StoresWhereTheWindowWasLeft) {
    const TestSession Session;
    KeptWindow Window;
    Window.Start();
    Window.move(100, 50);
    Window.resize(600, 400);
    QApplication::processEvents();
    Window.Keeper.Store();
    EXPECT_EQ(Stored(), "0,1500,750,9000,6000");
    KeptWindow Next;
    Next.Start();
    EXPECT_EQ(Next.geometry(), Window.geometry());
}

TEST(WindowPlaceKeeper, AMaximisedWindowKeepsTheNormalPlaceBeforeIt) {
    const TestSession Session;
    KeptWindow Window;
    Window.Start();
    Window.move(100, 50);
    Window.resize(600, 400);
    QApplication::processEvents();
    Window.showMaximized();
    QApplication::processEvents();
    Window.Keeper.Store();
    EXPECT_EQ(Stored(), "2,1500,750,9000,6000");
    Window.showNormal();
    QApplication::processEvents();
    Window.Keeper.Store();
    EXPECT_EQ(Stored(), "0,1500,750,9000,6000");
}

TEST(WindowPlaceKeeper, AMinimisedWindowIsNotRecorded) {
    const TestSession Session;
    KeptWindow Window;
    Window.Start();
    Window.move(100, 50);
    Window.resize(600, 400);
    QApplication::processEvents();
    Window.showMinimized();
    QApplication::processEvents();
    Window.Keeper.Store();
    EXPECT_EQ(Stored(), "0,1500,750,9000,6000");
}

TEST(WindowPlaceKeeper, WithoutAStoredPlaceTheWindowKeepsItsSize) {
    const TestSession Session;
    KeptWindow Window;
    Window.resize(640, 480);
    Window.Keeper.Restore();
    EXPECT_EQ(Window.size(), QSize(640, 480));
}

TEST(WindowPlaceKeeper, AWindowLargerThanTheScreenIsMadeToFit) {
    const TestSession Session;
    KeptWindow Window;
    Window.resize(5000, 4000);
    Window.Keeper.Restore();
    EXPECT_EQ(Window.size(), Window.screen()->availableGeometry().size() - QSize(8, 40));
}

TEST(WindowPlaceKeeper, AbsurdPlacesAreBroughtOntoTheScreen) {
    const TestSession Session;
    for (const char* Place :
         {"0,-99999999,2147483647,3,2147483647", "0,0,0,0,0", "9,9,9,9,9", "rubbish",
          "0,99999999999999,1e300,nan,inf", "0,10000,10000,9000,9000", ",,,,"}) {
        IniPut("MainWindow", "Window Size", Place);
        KeptWindow Window;
        Window.Start();
        // The frame of the window system comes on top.
        const QRect Screen = Window.screen()->availableGeometry();
        EXPECT_TRUE(Screen.contains(Window.pos())) << Place;
        EXPECT_TRUE(Screen.adjusted(0, 0, 40, 40).contains(Window.geometry())) << Place;
    }
}

TEST(WindowPlaceKeeper, ARectangleIsMovedAsLittleAsNeeded) {
    const QRect Screen(0, 0, 1000, 800);
    EXPECT_EQ(RectOnScreen(QRect(100, 100, 300, 300), Screen), QRect(100, 100, 300, 300));
    EXPECT_EQ(RectOnScreen(QRect(900, 700, 300, 300), Screen), QRect(700, 500, 300, 300));
    EXPECT_EQ(RectOnScreen(QRect(-50, -50, 300, 300), Screen), QRect(0, 0, 300, 300));
    EXPECT_EQ(RectOnScreen(QRect(10, 10, 3000, 3000), Screen), Screen);
}

} // namespace
} // namespace quoril
