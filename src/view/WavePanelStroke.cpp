// A stroke of the tool Draw on a wave panel: what it shows while it is drawn, and its end.
#include "base/CommandFailure.h"
#include "base/ViewState.h"
#include "selection/ViewListener.h"
#include "view/WaveEditor_Frm.h"
#include "view/WavePanel.h"
#include "view/WavePanelMouse.h"
#include "view/WaveSource.h"
#include "view/ZoomMod.h"

#include <algorithm>

namespace quoril {

void WavePanelMouse::BeginStroke(const QPoint& Pixel) {
    Stroke.Begin(WavePositionAt(Pixel.x()), Window.PanelScale.ValueAt(Pixel.y()));
    ShowStroke(1);
}

void WavePanelMouse::MoveStroke(const QPoint& Pixel) {
    ShowStroke(Stroke.Move(WavePositionAt(Pixel.x()), Window.PanelScale.ValueAt(Pixel.y()),
                           Source->Facts().Freq));
}

void WavePanelMouse::ShowStroke(std::int32_t From) {
    QRect Changed;
    for (auto i = std::size_t(From); i < Stroke.DrawPos.size(); ++i)
        Changed |= Window.PlaceDrawnPoint(Under->Channel(), Stroke.DrawPos[i], Stroke.DrawVal[i]);
    Under->UpdatePixels(Changed);
}

void WavePanelMouse::EndStroke() {
    const DocumentFacts Document = Source->Facts();
    const DrawnStretch Drawn =
        Stroke.Drawn(std::max(ViewFrom, 1), ViewEndOf(Document.Total), Document.Bits);
    // What could not be taken is not to stay on the panel.
    RunCommand({}, [&] {
        if (!Drawn.Samples.empty())
            DrawnStretchPut(Under->Channel(), Drawn);
    });
    Refresh_Wave_View();
}

} // namespace quoril
