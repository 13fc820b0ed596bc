// Dragging the overview bar of a 2 GB stereo file in a window as large as a usual screen. Thirty
// pictures a second are 33 ms each.
#include "BenchSupport.h"
#include "audiofile/OpenSaveClass.h"
#include "base/ViewState.h"
#include "storage/FileMemoClass.h"
#include "view/PicturePanel.h"
#include "view/WaveEditor_Frm.h"

#include <QApplication>
#include <QMouseEvent>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>

using namespace quoril;
using namespace quoril::bench;

namespace {

constexpr std::int32_t Frames = 500000000;
constexpr int Moves = 60;

void Send(QWidget* Bar, QEvent::Type Type, int X, Qt::MouseButton Button, Qt::MouseButtons Held) {
    const QPointF Place(X, Bar->height() / 2.0);
    QMouseEvent Event(Type, Place, Bar->mapToGlobal(Place), Button, Held, Qt::NoModifier);
    QApplication::sendEvent(Bar, &Event);
}

/// The slowest and the mean picture of a drag, in seconds, from the event to the painted window.
struct DragTimes {
    double Slowest = 0;
    double Mean = 0;
};

DragTimes DragOnce(WaveEditor_Frm& Window, std::int32_t Samples) {
    ViewAll = false;
    ViewFrom = 1;
    ViewTotal = Samples;
    Window.Refresh_Wave_View();
    QWidget* const Bar = Window.HScrollPic;
    const int From = (Window.ScrollEdge[1] + Window.ScrollEdge[2]) / 2;
    const int Step = std::max((Bar->width() - Window.ScrollEdge[2]) / (Moves + 1), 1);
    Send(Bar, QEvent::MouseButtonPress, From, Qt::LeftButton, Qt::LeftButton);
    DragTimes Times;
    for (int Move = 1; Move <= Moves; ++Move) {
        const std::int32_t Before = ViewFrom;
        const double Seconds = SecondsOf([&] {
            Send(Bar, QEvent::MouseMove, From + Move * Step, Qt::NoButton, Qt::LeftButton);
            QApplication::processEvents();
        });
        if (ViewFrom == Before)
            std::exit(1);
        Times.Slowest = std::max(Times.Slowest, Seconds);
        Times.Mean += Seconds / Moves;
    }
    Send(Bar, QEvent::MouseButtonRelease, From, Qt::LeftButton, Qt::NoButton);
    return Times;
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication Application(argc, argv);
    const BenchFolder Folder;
    MemoryBudget = 536870912;
    const std::string Large = Folder.Path("large.wav");
    MakeWav(Large, 2, Frames, true);
    WaveStore = std::make_unique<FileMemoClass>();
    bool Result = false;
    OpenSaveClass().FileLoadWave(*WaveStore, Large, Result);
    if (!Result)
        return 1;
    {
        WaveEditor_Frm Window;
        Window.resize(1920, 1080);
        Window.show();
        QApplication::processEvents();
        for (const int Share : {2, 10, 100}) {
            const DragTimes Times = DragOnce(Window, Frames / Share);
            const std::string Name =
                "drag the overview bar of 2 GB stereo at 1920 x 1080, view 1/" +
                std::to_string(Share);
            Report((Name + ", mean").c_str(), 1000 * Times.Mean, "ms", 0);
            Report((Name + ", slowest").c_str(), 1000 * Times.Slowest, "ms", 0);
        }
    }
    WaveStore.reset();
    return 0;
}
