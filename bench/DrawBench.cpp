// Drawing a 2 GB stereo file at the width of a large screen, beside copying a picture of that size.
#include "BenchSupport.h"
#include "base/ViewState.h"
#include "storage/FileMemoClass.h"
#include "view/ColorSettings.h"
#include "view/WaveDraw.h"

#include <QGuiApplication>
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <string>
#include <unistd.h>

using namespace quoril;
using namespace quoril::bench;

namespace {

/// Has the system forget what it keeps of a file.
void ForgetPages(const std::string& Name) {
    const int File = ::open(Name.c_str(), O_RDONLY | O_CLOEXEC);
    if (File < 0 || ::fsync(File) != 0 || ::posix_fadvise(File, 0, 0, POSIX_FADV_DONTNEED) != 0)
        std::exit(1);
    ::close(File);
}

/// Reads one frame at each place that a refresh visits, with read-ahead for all of them first.
void TouchPages(const std::string& Name, int Width, std::int32_t Frames) {
    const int File = ::open(Name.c_str(), O_RDONLY | O_CLOEXEC);
    const auto Step = static_cast<std::int64_t>(0.85 * Frames / (Width - 1)) * 4;
    const std::int64_t End = 44 + std::int64_t{Frames} * 4;
    for (std::int64_t Place = 44; Place < End; Place += Step)
        ::posix_fadvise(File, Place, 4, POSIX_FADV_WILLNEED);
    std::int32_t Frame = 0;
    for (std::int64_t Place = 44; Place < End; Place += Step)
        if (::pread(File, &Frame, sizeof Frame, Place) != sizeof Frame)
            std::exit(1);
    ::close(File);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication Application(argc, argv);
    const BenchFolder Folder;
    MemoryBudget = 536870912;
    const std::string Large = Folder.Path("large.wav");
    constexpr std::int32_t Frames = 500000000;
    MakeWav(Large, 2, Frames, true);
    DocumentOf(Large);
    ViewFrom = 1;
    ViewTotal = Frames;
    constexpr int Width = 3840;
    constexpr int Height = 900;
    QImage Pictures[2] = {QImage(Width, Height, QImage::Format_RGB32),
                          QImage(Width, Height, QImage::Format_RGB32)};
    const StoreSource Source;
    const auto Refresh = [&] {
        PixelsPerSample = (Width - 1.0) / ViewTotal;
        WaveDraw Draw(Source, Width, Height, 1.0);
        for (int Channel = 1; Channel <= 2; ++Channel) {
            Pictures[Channel - 1].fill(Qt::black);
            Draw.DrawPanel(Pictures[Channel - 1], Channel);
        }
    };
    const QImage From = Pictures[0].copy();
    const double Copy = BestSecondsOf(9, [&] {
        for (QImage& Picture : Pictures)
            std::memcpy(Picture.bits(), From.constBits(),
                        static_cast<std::size_t>(From.sizeInBytes()));
    });
    for (WaveFormDrawStyle = 1; WaveFormDrawStyle <= 5; ++WaveFormDrawStyle) {
        Refresh();
        const double Warm = BestSecondsOf(9, Refresh);
        const std::string Name = "refresh 2 GB stereo at 3840 pixels, style " +
                                 std::to_string(WaveFormDrawStyle) + ", warm";
        Report(Name.c_str(), 1000 * Warm, "ms", 16);
        Report((Name + " / copy of the picture").c_str(), Warm / Copy, "times", 0);
    }
    WaveFormDrawStyle = 3;
    double ColdRefresh = 1e9;
    double ColdPages = 1e9;
    for (int Round = 0; Round < 3; ++Round) {
        ForgetPages(Large);
        ColdRefresh = std::min(ColdRefresh, SecondsOf(Refresh));
        ForgetPages(Large);
        ColdPages = std::min(ColdPages, SecondsOf([&] { TouchPages(Large, Width, Frames); }));
    }
    Report("refresh, nothing cached / the same pages touched once", ColdRefresh / ColdPages,
           "times", 1.5);
    Report("refresh, nothing cached", 1000 * ColdRefresh, "ms", 0);
    WaveStore.reset();
    return 0;
}
