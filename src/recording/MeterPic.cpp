#include "recording/MeterPic.h"

#include "recording/RecordMachine.h"

#include <QPainter>

namespace quoril {

MeterPic::MeterPic(QWidget* Parent) : QWidget(Parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void MeterPic::Show(std::int32_t Peak, std::int32_t Bits, bool Red) {
    if (Peak == PeakShown && Bits == BitsShown && Red == RedShown)
        return;
    PeakShown = Peak;
    BitsShown = Bits;
    RedShown = Red;
    update();
}

void MeterPic::paintEvent(QPaintEvent*) {
    QPainter Painter(this);
    Painter.fillRect(rect(), Qt::white);
    const int Bar = MeterBar(PeakShown, BitsShown, height());
    Painter.fillRect(0, height() - Bar, width(), Bar, RedShown ? Qt::red : Qt::blue);
    Painter.setPen(palette().color(QPalette::Mid));
    Painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
}

} // namespace quoril
