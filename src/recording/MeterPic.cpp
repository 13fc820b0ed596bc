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
    // Filled and not drawn, so that the frame is whole at every scale of the screen.
    Painter.fillRect(rect(), palette().color(QPalette::Mid));
    const QRect Inside = rect().adjusted(1, 1, -1, -1);
    Painter.fillRect(Inside, Qt::white);
    const int Bar = MeterBar(PeakShown, BitsShown, height());
    Painter.fillRect(QRect(0, height() - Bar, width(), Bar) & Inside,
                     RedShown ? Qt::red : Qt::blue);
}

} // namespace quoril
