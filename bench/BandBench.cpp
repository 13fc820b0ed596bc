// What the bar graph of bands costs for one move of the mouse, at the highest rate.
#include "BenchSupport.h"
#include "storage/FileMemoClass.h"
#include "view/BandDisplay.h"
#include "view/PicturePanel.h"
#include "view/WaveSource.h"

#include <QApplication>
#include <QTimer>

#include <algorithm>
#include <vector>

using namespace quoril;
using namespace quoril::bench;

namespace {

constexpr std::int32_t Frames = 12000000;
constexpr std::int32_t Freq = 200000;
constexpr int Moves = 300;

/// Seconds of each of many moves over the whole sound, the shortest first.
std::vector<double> MoveSeconds(BandDisplay& Bands) {
    const StoreSource Source;
    Bands.DispDynEqGrpWaitTimer->setInterval(0);
    std::vector<double> Seconds;
    for (std::int32_t Move = 0; Move < Moves; ++Move) {
        const std::int32_t Pos = 1 + (Move * 7919 % Moves) * (Frames / Moves);
        Seconds.push_back(SecondsOf([&] { Bands.Show(Source, Pos, 1 + Move % 2); }));
        while (Bands.DispDynEqGrpWaitTimer->isActive())
            QApplication::processEvents();
    }
    std::ranges::sort(Seconds);
    return Seconds;
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication Application(argc, argv);
    const BenchFolder Folder;
    MemoryBudget = 536870912;
    const std::string Name = Folder.Path("sound.wav");
    MakeWav(Name, 2, Frames, true);
    DocumentOf(Name);
    WaveStore->WavFmtFreq = Freq;
    {
        PicturePanel Panel(QStringLiteral("DispFrqVolPic"), nullptr);
        Panel.resize(160, 120);
        Panel.show();
        BandDisplay Bands(&Panel);
        const QImage Empty = Panel.Picture().copy();
        const std::vector<double> Seconds = MoveSeconds(Bands);
        if (Panel.Picture() == Empty)
            return 1; // it was not drawn
        Report("band display of 200000 Hz, a move of the mouse, middle of 300",
               1000 * Seconds[Moves / 2], "ms", 1);
        Report("band display of 200000 Hz, a move of the mouse, longest of 300",
               1000 * Seconds.back(), "ms", 0);
    }
    WaveStore.reset();
    return 0;
}
