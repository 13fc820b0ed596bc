// One channel's panel: `Wave_Pic`, with its finished picture `WaveBak_Pic`.
#pragma once

#include "view/PicturePanel.h"

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

    /// The finished picture of the last refresh, without mouse feedback. Null before the first.
    QImage WaveBak_Pic;
    PanelLine* MouseLine;  ///< follows the mouse
    PanelLine* PlayPosShp; ///< shows the play position

  private:
    void Invert(int From, int To);

    int ChannelIndex;
    int InvertedFirst = 0; // the columns that are inverted now
    int InvertedPast = 0;
};

} // namespace quoril
