#include "view/BandDisplay.h"

#include "base/Failure.h"
#include "effects/BandLevels.h"
#include "view/BandGraph.h"
#include "view/ColorSettings.h"
#include "view/PicturePanel.h"
#include "view/WaveSource.h"

#include <QPainter>
#include <QTimer>

#include <utility>
#include <vector>

namespace quoril {

namespace {

constexpr int WaitMs = 100;

/// The levels of the bands, from index 1; empty when there is nothing to be read.
std::vector<std::int32_t> LevelsAt(const WaveSource& Source, std::int32_t Pos,
                                   std::int32_t Channel) {
    const DocumentFacts Document = Source.Facts();
    if (Document.Total < 1)
        return {};
    const BandWindow Window = BandWindowAt(Pos, Document.Freq);
    std::vector<std::int16_t> Samples;
    try {
        Source.StretchAt(Channel, Window.From, Window.Count, Samples);
    } catch (const Failure&) {
        // A box at every move would keep the user from everything else, and the read-out of the
        // mouse shows already that nothing can be read there.
        return {};
    }
    std::vector<std::int32_t> Levels(BandBarCount + 1, 0);
    BandLevels({Samples.begin(), Samples.end()}, BandBarCount, Document.Freq, Document.Bits,
               Levels);
    return Levels;
}

} // namespace

BandDisplay::BandDisplay(PicturePanel* DispFrqVolPic)
    : QObject(DispFrqVolPic), DispDynEqGrpWaitTimer(new QTimer(this)), Panel(DispFrqVolPic) {
    DispDynEqGrpWaitTimer->setObjectName(QStringLiteral("DispDynEqGrpWaitTimer"));
    DispDynEqGrpWaitTimer->setSingleShot(true);
    DispDynEqGrpWaitTimer->setInterval(WaitMs);
    connect(DispDynEqGrpWaitTimer, &QTimer::timeout, this, &BandDisplay::WaitEnd);
}

void BandDisplay::Show(const WaveSource& Source, std::int32_t Pos, std::int32_t Channel) {
    const Place Where{&Source, Pos, Channel};
    if (Busy)
        Waiting = Where;
    else
        Run(Where);
}

void BandDisplay::Clear() {
    Waiting.reset();
    Panel->Clear();
}

void BandDisplay::WaitEnd() {
    Busy = false;
    if (const std::optional<Place> Where = std::exchange(Waiting, std::nullopt))
        Run(*Where);
}

void BandDisplay::Run(const Place& Where) {
    Busy = true;
    DispDynEqGrpWaitTimer->start();
    Panel->Clear();
    const std::vector<std::int32_t> Levels = LevelsAt(*Where.Source, Where.Pos, Where.Channel);
    if (Levels.empty())
        return;
    const std::int32_t Bits = Where.Source->Facts().Bits;
    QImage& Picture = Panel->Picture();
    QPainter Painter(&Picture);
    const QColor Color = ColorFromBgr(ColorOf(WaveColor::WaveFormNormalColor));
    for (std::int32_t Index = 1; Index <= BandBarCount; ++Index) {
        const BandBar Bar =
            BandBarOf(Index, Levels[std::size_t(Index)], Bits, Picture.width(), Picture.height());
        Painter.fillRect(Bar.Left, Bar.Top, Bar.Right - Bar.Left, Picture.height() - Bar.Top,
                         Color);
    }
}

} // namespace quoril
