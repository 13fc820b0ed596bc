// `DispFrqVolPic`: the bar graph of the sound around the mouse.
#pragma once

#include <QObject>

#include <cstdint>
#include <optional>

class QTimer;

namespace quoril {

class PicturePanel;
class WaveSource;

/// Draws ten times a second at most: a run keeps the display busy until `DispDynEqGrpWaitTimer` has
/// ended. What was asked for meanwhile comes then, so that the graph stands for the place where the
/// mouse has come to rest. The panel owns it.
class BandDisplay final : public QObject {
  public:
    explicit BandDisplay(PicturePanel* DispFrqVolPic);

    /// The bands around a sample of a channel, 1 or 2. A stretch that cannot be read shows nothing.
    /// The source must stay until the next call.
    void Show(const WaveSource& Source, std::int32_t Pos, std::int32_t Channel);
    /// The mouse is nowhere: an empty graph.
    void Clear();

    QTimer* DispDynEqGrpWaitTimer;

  private:
    struct Place {
        const WaveSource* Source;
        std::int32_t Pos;
        std::int32_t Channel;
    };
    void Run(const Place& Where);
    void WaitEnd();

    PicturePanel* Panel;
    bool Busy = false;
    std::optional<Place> Waiting;
};

} // namespace quoril
