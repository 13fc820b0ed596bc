#include "view/WavePanel.h"

#include <cstring>

namespace quoril {

WavePanel::WavePanel(int Index, QWidget* Parent)
    : PicturePanel(QStringLiteral("Wave_Pic_%1").arg(Index), Parent), ChannelIndex(Index) {
    MouseLine = new PanelLine(QStringLiteral("MouseLine_%1").arg(Index), this);
    MouseLine->hide();
    PlayPosShp = new PanelLine(QStringLiteral("PlayPosShp_%1").arg(Index), this);
    setFocusPolicy(Qt::StrongFocus);
}

void WavePanel::TakeSnapshot() {
    const QImage& Now = Picture();
    if (WaveBak_Pic.size() != Now.size() || WaveBak_Pic.bytesPerLine() != Now.bytesPerLine())
        WaveBak_Pic = QImage(Now.size(), Now.format());
    // Into the memory that is there: a fresh image of this size costs more than the copy.
    std::memcpy(WaveBak_Pic.bits(), Now.constBits(), std::size_t(Now.sizeInBytes()));
}

} // namespace quoril
