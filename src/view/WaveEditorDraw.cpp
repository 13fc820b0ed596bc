// The tool Draw of the main window: taking it, putting it away, and the points that it shows.
#include "base/MsgBoxMod.h"
#include "base/ViewState.h"
#include "settings/UserGuideMod.h"
#include "view/ColorSettings.h"
#include "view/WaveEditor_Frm.h"
#include "view/WaveMouse.h"
#include "view/WavePanel.h"

#include <QTimer>

#include <algorithm>

namespace quoril {

namespace {

constexpr int DrawBtnEnblMs = 500;

/// A view of more than a second is too wide to draw in.
bool TooWideToDraw(std::int32_t Freq) {
    return static_cast<double>(ViewTotal) / Freq > 1.0;
}

} // namespace

void WaveEditor_Frm::RegisterDrawCommands() {
    DrawBtnEnblTimer = new QTimer(this);
    DrawBtnEnblTimer->setObjectName(QStringLiteral("DrawBtnEnblTimer"));
    DrawBtnEnblTimer->setInterval(DrawBtnEnblMs);
    connect(DrawBtnEnblTimer, &QTimer::timeout, this, &WaveEditor_Frm::DrawBtnEnbl);
    Commands.Set("Draw_Mnu_1", [this] { DrawBegin(); });
    Commands.Set("Draw_Mnu_2", [this] {
        MouseMode = MouseModeSelect;
        RefreshMousePointer();
        DrawBtnEnbl();
    });
}

void WaveEditor_Frm::DrawBegin() {
    if (TooWideToDraw(Source->Facts().Freq)) {
        MsgBox("Zoom in (+) to draw with mouse.\nView less then one second duration\n"
               "on screen and try again to draw\n\nIt is better to draw viewing 1:1",
               "Draw with mouse failed");
        return;
    }
    MouseMode = MouseModeDraw;
    ViewMouseMode = ViewMouseModeNone;
    RefreshMousePointer();
    SetEntryEnabled("Draw_Mnu_1", false);
    SetEntryEnabled("Draw_Mnu_2", true);
    DrawBtnEnblTimer->start();
    UserGuide("With this command scratch with mouse to draw. Use draw done after finishing "
              "drawing.");
    constexpr double TipChance = 0.1;
    if (GuideChance(TipChance))
        UserGuide("You can cancel drawing mode with Esc - key if needed.");
}

void WaveEditor_Frm::DrawBtnEnbl() {
    if (MouseMode == MouseModeDraw)
        return;
    SetEntryEnabled("Draw_Mnu_1", true);
    SetEntryEnabled("Draw_Mnu_2", false);
    DrawBtnEnblTimer->stop();
}

QRect WaveEditor_Frm::PlaceDrawnPoint(int Index, std::int32_t Pos, std::int32_t Val) {
    const DocumentFacts Document = Source->Facts();
    if (Pos < 1 || Pos > Document.Total)
        return {};
    const std::int32_t Max = Document.Bits == 8 ? 127 : 32767;
    return Wave_Pic.at(std::size_t(Index))
        ->PlacePoint(PanelScale.XOf(Pos), PanelScale.YOf(std::clamp(Val, -Max, Max)),
                     ColorFromBgr(ColorOf(WaveColor::WaveFormDrawColor)));
}

void WaveEditor_Frm::Draw_Point_Wave_Pic(int Index, std::int32_t Pos, std::int32_t Val) {
    Wave_Pic.at(std::size_t(Index))->UpdatePixels(PlaceDrawnPoint(Index, Pos, Val));
}

} // namespace quoril
