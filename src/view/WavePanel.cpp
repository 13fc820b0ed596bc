#include "view/WavePanel.h"

namespace quoril {

WavePanel::WavePanel(int Index, QWidget* Parent)
    : PicturePanel(QStringLiteral("Wave_Pic_%1").arg(Index), Parent), ChannelIndex(Index) {
    MouseLine = new PanelLine(QStringLiteral("MouseLine_%1").arg(Index), this);
    MouseLine->hide();
    PlayPosShp = new PanelLine(QStringLiteral("PlayPosShp_%1").arg(Index), this);
    setFocusPolicy(Qt::ClickFocus);
}

} // namespace quoril
