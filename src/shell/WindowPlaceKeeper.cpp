#include "shell/WindowPlaceKeeper.h"

#include "settings/STD1.h"

#include <QScreen>
#include <QWidget>
#include <algorithm>

namespace quoril {

namespace {

constexpr const char* Section = "MainWindow";
constexpr const char* Key = "Window Size";
constexpr QSize FrameRoom(8, 40);
constexpr double FillsScreen = 0.9;
constexpr std::int32_t Normal = 0;
constexpr std::int32_t Maximised = 2;

bool SameRect(const WindowPlace& A, const WindowPlace& B) {
    return A.Left == B.Left && A.Top == B.Top && A.Width == B.Width && A.Height == B.Height;
}

} // namespace

QRect RectOnScreen(QRect Wanted, const QRect& Screen) {
    Wanted.setSize(Wanted.size().boundedTo(Screen.size()));
    Wanted.moveLeft(std::clamp(Wanted.left(), Screen.left(), Screen.right() - Wanted.width() + 1));
    Wanted.moveTop(std::clamp(Wanted.top(), Screen.top(), Screen.bottom() - Wanted.height() + 1));
    return Wanted;
}

void WindowPlaceKeeper::Restore() {
    Applying = true;
    const QScreen* Screen = Window.screen();
    const QRect Whole = Screen->virtualGeometry();
    const QRect Usable = Screen->availableVirtualGeometry();
    const double DotsX = Window.logicalDpiX();
    const double DotsY = Window.logicalDpiY();
    const std::string Stored = IniGet(Section, Key, NoWindowPlace);
    Last = WindowPlaceCorrected(WindowPlaceParse(Stored), TwipsFromPixels(Whole.width(), DotsX),
                                TwipsFromPixels(Whole.height(), DotsY));
    if (Stored == NoWindowPlace) {
        // The title bar needs room, too.
        Window.resize(Window.size().boundedTo(Screen->availableGeometry().size() - FrameRoom));
    } else if (Last.State == Normal) {
        // A width below the window's own least width cannot be had.
        const QSize Size(PixelsFromTwips(Last.Width, DotsX), PixelsFromTwips(Last.Height, DotsY));
        const QPoint StoredCorner(PixelsFromTwips(Last.Left, DotsX),
                                  PixelsFromTwips(Last.Top, DotsY));
        const QRect Place =
            RectOnScreen(QRect(StoredCorner, Size.expandedTo(Window.minimumSizeHint())), Usable);
        Window.resize(Place.size());
        Window.move(Place.topLeft());
        Corner = Place.topLeft();
    } else {
        Window.setWindowState(Qt::WindowMaximized);
    }
    Before = Last;
    Applying = false;
}

void WindowPlaceKeeper::Settle() {
    if (Corner && !Window.isMaximized() && Window.pos() != *Corner)
        Window.move(*Corner);
    Corner.reset();
}

WindowPlace WindowPlaceKeeper::PlaceNow() const {
    const double DotsX = Window.logicalDpiX();
    const double DotsY = Window.logicalDpiY();
    return {Window.isMaximized() ? Maximised : Normal, TwipsFromPixels(Window.x(), DotsX),
            TwipsFromPixels(Window.y(), DotsY), TwipsFromPixels(Window.width(), DotsX),
            TwipsFromPixels(Window.height(), DotsY)};
}

void WindowPlaceKeeper::Record() {
    if (Applying || Window.isMinimized())
        return;
    const WindowPlace Now = PlaceNow();
    if (Now.State == Maximised) {
        // A desktop may tell the new size before it tells that this is the maximised one.
        const QSize Most = Window.screen()->availableGeometry().size() * FillsScreen;
        if (Last.State == Normal && SameRect(Now, Last) && Window.width() >= Most.width() &&
            Window.height() >= Most.height())
            Last = Before;
        Last.State = Maximised;
        return;
    }
    if (Last.State == Normal && !SameRect(Now, Last))
        Before = Last;
    Last = Now;
}

void WindowPlaceKeeper::Store() const {
    IniPut(Section, Key, WindowPlaceText(Last));
}

} // namespace quoril
