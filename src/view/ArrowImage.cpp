#include "view/ArrowImage.h"

#include <QPainter>

namespace quoril {

ArrowImage::ArrowImage(int Index, QWidget* Parent) : QWidget(Parent), ArrowIndex(Index) {
    setObjectName(QStringLiteral("ArrowImg_%1").arg(Index));
    setMouseTracking(true);
    setCursor(Qt::PointingHandCursor);
    setAccessibleName(Index == 0 ? QStringLiteral("Shift the view right a little")
                                 : QStringLiteral("Shift the view left a little"));
    setFixedWidth(Width);
}

void ArrowImage::paintEvent(QPaintEvent*) {
    QPainter Painter(this);
    constexpr int Spacing = 4;
    const int Lines = width() / Spacing;
    for (int Line = 0; Line < Lines; ++Line) {
        // Line 0 is the outermost and the shortest.
        const double Share = double(Line + 1) / Lines;
        const int Tall = std::max(3, int((height() - 6) * Share));
        const int FromEdge = Line * Spacing + 1;
        const int X = ArrowIndex == 0 ? width() - FromEdge - 2 : FromEdge;
        Painter.fillRect(X, (height() - Tall) / 2, 2, Tall, QColor(20, 24, 48, 150));
        Painter.fillRect(X + 1, (height() - Tall) / 2, 1, Tall, QColor(255, 255, 255, 120));
    }
}

} // namespace quoril
