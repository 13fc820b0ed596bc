// One channel's panel: `Wave_Pic`, with its finished picture `WaveBak_Pic`.
#pragma once

#include "view/PicturePanel.h"

#include <vector>

namespace quoril {

class WavePanel final : public PicturePanel {
  public:
    /// `Index` is the channel, 1 or 2.
    WavePanel(int Index, QWidget* Parent);

    [[nodiscard]] int Channel() const { return ChannelIndex; }
    /// Keeps the present picture as the finished one.
    void TakeSnapshot();

    /// Shows the finished picture with the columns from `First` to before `Past` inverted. Only
    /// columns that change are drawn; whatever else was drawn since the last refresh stays.
    void ShowInverted(int First, int Past);

    /// Sets a dot over the finished picture, as wide and as high as the whole part of the screen's
    /// scale; its columns give up what was set in them before. Gives the pixels that have changed;
    /// none beside the panel.
    QRect PlacePoint(double X, double Y, const QColor& Color);
    /// Shows changed pixels of the picture on the screen.
    void UpdatePixels(const QRect& Pixels);

    /// The finished picture of the last refresh, without mouse feedback. Null before the first.
    QImage WaveBak_Pic;
    PanelLine* MouseLine;  ///< follows the mouse
    PanelLine* PlayPosShp; ///< shows the play position

  private:
    void Invert(int From, int To);

    int ChannelIndex;
    int InvertedFirst = 0; // the columns that are inverted now
    int InvertedPast = 0;
    std::vector<int> PointRow; // of each column the first row of its dot; -1 without one
};

} // namespace quoril
