#include "view/ReadOutLabel.h"

#include "view/PicturePanel.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace quoril {

namespace {

double Luminance(const QColor& Color) {
    const auto Linear = [](double Part) {
        return Part <= 0.04045 ? Part / 12.92 : std::pow((Part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * Linear(Color.redF()) + 0.7152 * Linear(Color.greenF()) +
           0.0722 * Linear(Color.blueF());
}

/// The contrast of two colours as the accessibility guidelines measure it, 1 to 21.
double Contrast(const QColor& A, const QColor& B) {
    const double First = Luminance(A);
    const double Second = Luminance(B);
    return (std::max(First, Second) + 0.05) / (std::min(First, Second) + 0.05);
}

constexpr double ReadableContrast = 4.5;
constexpr int RingWidth = 2;

/// Black or white, whichever stands out.
QColor StandingOutOf(const QColor& Color) {
    return Contrast(Color, Qt::black) > Contrast(Color, Qt::white) ? Qt::black : Qt::white;
}

} // namespace

ReadOutLabel::ReadOutLabel(const QString& Name, QWidget* Parent, const QString& Longest)
    : QLabel(Parent), Back(palette().color(QPalette::Window)),
      Front(palette().color(QPalette::WindowText)) {
    setObjectName(Name);
    setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    setContentsMargins(6, 2, 6, 2);
    QFont Bold = font();
    Bold.setBold(true);
    setFont(Bold);
    if (!Longest.isEmpty())
        setMinimumWidth(QFontMetrics(Bold).horizontalAdvance(Longest) + 14);
}

void ReadOutLabel::SetColors(std::int32_t BackColor, std::int32_t TextColor) {
    Back = ColorFromBgr(BackColor);
    Front = ColorFromBgr(TextColor);
    QPalette Colors = palette();
    Colors.setColor(QPalette::Window, Back);
    Colors.setColor(QPalette::WindowText, Front);
    setPalette(Colors);
    update();
}

void ReadOutLabel::paintEvent(QPaintEvent*) {
    QPainter Painter(this);
    // Without mixed colours at the edges, and beyond them: at a scale that is no whole number an
    // edge can lie within a pixel of the screen.
    Painter.fillRect(rect().adjusted(-1, -1, 1, 1), Back);
    Painter.setRenderHint(QPainter::Antialiasing);
    const QFontMetrics Metrics(font());
    const QRect Inner = contentsRect();
    const int Room = Inner.width() - Metrics.horizontalAdvance(text());
    const double X = Inner.left() + (alignment() & Qt::AlignRight ? Room : 0);
    const double Y = Inner.top() + (Inner.height() - Metrics.height()) / 2.0 + Metrics.ascent();
    if (Contrast(Back, Front) < ReadableContrast) {
        // Letters around the letters: the curves that a font gives for a text are not the same to
        // the last bit each time, and a value that is back must look as it did.
        Painter.setPen(StandingOutOf(Front));
        for (const int Right : {-1, 0, 1})
            for (const int Down : {-1, 0, 1})
                if (Right != 0 || Down != 0)
                    Painter.drawText(QPointF(X + Right, Y + Down), text());
    }
    Painter.setPen(Front);
    Painter.drawText(QPointF(X, Y), text());
    if (hasFocus()) {
        // A line of the background around it keeps it apart from what lies beside the label.
        constexpr double Inset = 1.0 + RingWidth / 2.0;
        Painter.setPen(
            QPen(StandingOutOf(Back), RingWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        Painter.setBrush(Qt::NoBrush);
        Painter.drawRect(QRectF(rect()).adjusted(Inset, Inset, -Inset, -Inset));
    }
}

} // namespace quoril
