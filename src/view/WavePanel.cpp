#include "view/WavePanel.h"

#include <algorithm>
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

void WavePanel::ShowInverted(int First, int Past) {
    QImage& Shown = Picture();
    if (WaveBak_Pic.size() != Shown.size())
        return;
    constexpr QRgb Inverted = 0x00FFFFFF;
    First = std::clamp(First, 0, Shown.width());
    Past = std::clamp(Past, First, Shown.width());
    for (int Row = 0; Row < Shown.height(); ++Row) {
        auto* To = reinterpret_cast<QRgb*>(Shown.scanLine(Row));
        std::memcpy(To, WaveBak_Pic.constScanLine(Row), std::size_t(Shown.width()) * sizeof(QRgb));
        for (int Column = First; Column < Past; ++Column)
            To[Column] ^= Inverted;
    }
    update();
}

} // namespace quoril
