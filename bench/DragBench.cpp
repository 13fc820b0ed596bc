// Dragging over a 2 GB stereo file: the overview bar in a window as large as a usual screen, where
// thirty pictures a second are 33 ms each; and a selection in a window as wide as a large screen,
// where the rubber band is held against a copy of the pictures behind it; and strokes drawn there.
#include "BenchSupport.h"
#include "base/ViewState.h"
#include "storage/FileMemoClass.h"
#include "view/PicturePanel.h"
#include "view/WaveEditor_Frm.h"
#include "view/WaveMouse.h"
#include "view/WavePanel.h"
#include "view/WavePanelMouse.h"
#include "view/WaveSource.h"

#include <QApplication>
#include <QMouseEvent>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <functional>
#include <memory>
#include <string>
#include <vector>

using namespace quoril;
using namespace quoril::bench;

namespace {

constexpr std::int32_t Frames = 500000000;
constexpr int Moves = 60;

void Send(QWidget* Bar, QEvent::Type Type, int X, Qt::MouseButton Button, Qt::MouseButtons Held,
          double Above = 0) {
    const QPointF Place(X, Bar->height() / 2.0 - Above);
    QMouseEvent Event(Type, Place, Bar->mapToGlobal(Place), Button, Held, Qt::NoModifier);
    QApplication::sendEvent(Bar, &Event);
}

/// Seconds of the processor that this process has used.
double CpuSeconds() {
    timespec Time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &Time);
    return static_cast<double>(Time.tv_sec) + static_cast<double>(Time.tv_nsec) * 1e-9;
}

/// What pictures of a drag cost, from the event to the painted window, in seconds: the slowest by
/// the clock, and the mean by the processor, which other programs on the machine hardly change.
struct DragTimes {
    double Slowest = 0;
    double Mean = 0;

    void Add(int Events, const std::function<void()>& What) {
        const double Before = CpuSeconds();
        Slowest = std::max(Slowest, SecondsOf(What));
        Mean += (CpuSeconds() - Before) / Events;
    }
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
        Times.Add(Moves, [&] {
            Send(Bar, QEvent::MouseMove, From + Move * Step, Qt::NoButton, Qt::LeftButton);
            QApplication::processEvents();
        });
        if (ViewFrom == Before)
            std::exit(1);
    }
    Send(Bar, QEvent::MouseButtonRelease, From, Qt::LeftButton, Qt::NoButton);
    return Times;
}

/// The document of the process. Counts the samples that are read one by one and in stretches.
class CountingSource final : public WaveSource {
  public:
    [[nodiscard]] DocumentFacts Facts() const override { return Store.Facts(); }
    void WillNeed(const std::vector<std::int32_t>& Positions) const override {
        Store.WillNeed(Positions);
    }
    void SamplesAt(std::int32_t Channel, const std::vector<std::int32_t>& Positions,
                   std::vector<std::int16_t>& Samples) const override {
        Single += Positions.size();
        Store.SamplesAt(Channel, Positions, Samples);
    }
    void StretchAt(std::int32_t Channel, std::int32_t From, std::int32_t Count,
                   std::vector<std::int16_t>& Samples) const override {
        ++Stretches;
        Store.StretchAt(Channel, From, Count, Samples);
    }
    mutable std::size_t Single = 0;
    mutable std::size_t Stretches = 0;

  private:
    StoreSource Store;
};

/// Selects nearly the whole panel in steps, there and back.
void SelectByDrag(WaveEditor_Frm& Window, int Step, const std::string& Name) {
    CountingSource Source;
    Window.SetSource(&Source);
    Window.Refresh_Wave_View();
    WavePanel* const Panel = Window.Wave_Pic[1];
    Send(Panel, QEvent::MouseButtonPress, 20, Qt::LeftButton, Qt::LeftButton);
    Window.PanelMouse->Mouse.MoveWait = false;
    Source.Single = Source.Stretches = 0;
    DragTimes Times;
    const int Width = Panel->width() - 40;
    const int Events = 2 * (Width / Step);
    for (int Event = 1; Event <= Events; ++Event) {
        const int Way = Event * Step;
        const int X = 20 + (Way <= Width ? Way : 2 * Width - Way);
        Times.Add(Events, [&] {
            Send(Panel, QEvent::MouseMove, X, Qt::NoButton, Qt::LeftButton);
            QApplication::processEvents();
        });
    }
    const double Singles = static_cast<double>(Source.Single) / Events;
    Send(Panel, QEvent::MouseButtonRelease, 20, Qt::LeftButton, Qt::NoButton);
    std::array<QImage, 2> Copies = {Window.Wave_Pic[1]->WaveBak_Pic.copy(),
                                    Window.Wave_Pic[2]->WaveBak_Pic.copy()};
    constexpr int Rounds = 20;
    DragTimes Copy;
    const auto CopyOnce = [&] {
        for (const std::size_t Index : {0U, 1U})
            std::memcpy(Copies.at(Index).bits(),
                        Window.Wave_Pic.at(Index + 1)->WaveBak_Pic.constBits(),
                        static_cast<std::size_t>(Copies.at(Index).sizeInBytes()));
    };
    for (int Round = 0; Round < Rounds; ++Round)
        Copy.Add(Rounds, CopyOnce);
    Report((Name + ", processor").c_str(), 1000 * Times.Mean, "ms", 4);
    Report((Name + ", slowest by the clock").c_str(), 1000 * Times.Slowest, "ms", 0);
    Report((Name + ", processor / copy of both pictures").c_str(), Times.Mean / Copy.Mean, "times",
           0);
    Report((Name + ", samples read by an event").c_str(), Singles, "samples", 1);
    static const StoreSource Plain;
    Window.SetSource(&Plain);
}

/// Draws strokes over nearly the whole panel at 4000 samples in view.
void Draw(WaveEditor_Frm& Window, int Step, const std::string& Name) {
    constexpr int Strokes = 8;
    constexpr double Height = 300;
    WavePanel* const Panel = Window.Wave_Pic[1];
    const int Width = Panel->width() - 40;
    const int Events = Width / Step;
    DragTimes Moving;
    DragTimes LettingGo;
    for (int Stroke = 0; Stroke < Strokes; ++Stroke) {
        ViewAll = false;
        ViewFrom = 100000001;
        ViewTotal = 4000;
        MouseMode = MouseModeDraw;
        Window.Refresh_Wave_View();
        Send(Panel, QEvent::MouseButtonPress, 20, Qt::LeftButton, Qt::LeftButton);
        Window.PanelMouse->Mouse.MoveWait = false;
        QApplication::processEvents();
        for (int Event = 1; Event <= Events; ++Event)
            Moving.Add(Strokes * Events, [&] {
                Send(Panel, QEvent::MouseMove, 20 + Event * Step, Qt::NoButton, Qt::LeftButton,
                     Height * std::sin(0.3 * Event + Stroke));
                QApplication::processEvents();
            });
        const std::int32_t Steps = WaveStore->UndoCount();
        LettingGo.Add(Strokes, [&] {
            Send(Panel, QEvent::MouseButtonRelease, 20 + Width, Qt::LeftButton, Qt::NoButton);
            QApplication::processEvents();
        });
        if (WaveStore->UndoCount() == Steps)
            std::exit(1);
    }
    MouseMode = MouseModeSelect;
    Report((Name + ", a move, processor").c_str(), 1000 * Moving.Mean, "ms", 2);
    Report((Name + ", a move, slowest by the clock").c_str(), 1000 * Moving.Slowest, "ms", 0);
    Report((Name + ", letting go, processor").c_str(), 1000 * LettingGo.Mean, "ms", 16);
    Report((Name + ", letting go, slowest by the clock").c_str(), 1000 * LettingGo.Slowest, "ms",
           0);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication Application(argc, argv);
    const BenchFolder Folder;
    MemoryBudget = 536870912;
    const std::string Large = Folder.Path("large.wav");
    MakeWav(Large, 2, Frames, true);
    DocumentOf(Large);
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
            Report((Name + ", processor").c_str(), 1000 * Times.Mean, "ms", 33);
            Report((Name + ", slowest by the clock").c_str(), 1000 * Times.Slowest, "ms", 0);
        }
        Window.resize(3840, 2160);
        QApplication::processEvents();
        ViewAll = true;
        SelectByDrag(Window, 16, "select by drag over 3840 x 2160 stereo, slowly");
        SelectByDrag(Window, 400, "select by drag over 3840 x 2160 stereo, in leaps");
        Draw(Window, 16, "draw over 3840 x 2160 stereo, 4000 samples in view");
        Draw(Window, 1200, "the same in leaps over a third of the panel");
    }
    WaveStore.reset();
    return 0;
}
