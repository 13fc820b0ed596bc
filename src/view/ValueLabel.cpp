#include "view/ValueLabel.h"

#include "view/PicturePanel.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

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

} // namespace

ValueLabel::ValueLabel(const QString& Name, QWidget* Parent) : QLabel(Parent) {
    setObjectName(Name);
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setContentsMargins(6, 2, 6, 2);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
    QFont Bold = font();
    Bold.setBold(true);
    setFont(Bold);
}

void ValueLabel::SetColors(std::int32_t BackColor, std::int32_t TextColor) {
    Back = ColorFromBgr(BackColor);
    Front = ColorFromBgr(TextColor);
    QPalette Colors = palette();
    Colors.setColor(QPalette::Window, Back);
    Colors.setColor(QPalette::WindowText, Front);
    setPalette(Colors);
    update();
}

void ValueLabel::paintEvent(QPaintEvent*) {
    QPainter Painter(this);
    Painter.setRenderHint(QPainter::Antialiasing);
    Painter.setPen(Qt::NoPen);
    Painter.setBrush(Back);
    Painter.drawRoundedRect(rect(), 3, 3);
    if (Contrast(Back, Front) < ReadableContrast) {
        // An outline in black or white, whichever stands out against the letters.
        const QFontMetrics Metrics(font());
        const double X = width() - contentsMargins().right() - Metrics.horizontalAdvance(text());
        const double Y = (height() - Metrics.height()) / 2.0 + Metrics.ascent();
        QPainterPath Path;
        Path.addText(X, Y, font(), text());
        const QColor Outline = Contrast(Front, Qt::black) > Contrast(Front, Qt::white)
                                   ? QColor(Qt::black)
                                   : QColor(Qt::white);
        Painter.strokePath(Path, QPen(Outline, 2.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    }
    Painter.setPen(Front);
    Painter.drawText(contentsRect(), int(alignment()), text());
    if (hasFocus()) {
        Painter.setPen(QPen(Front, 1, Qt::DotLine));
        Painter.setBrush(Qt::NoBrush);
        Painter.drawRoundedRect(QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5), 2, 2);
    }
}

void ValueLabel::mousePressEvent(QMouseEvent* Event) {
    if (Event->button() == Qt::LeftButton && Clicked)
        Clicked();
    Event->accept();
}

void ValueLabel::keyPressEvent(QKeyEvent* Event) {
    if ((Event->key() == Qt::Key_Return || Event->key() == Qt::Key_Enter) && Clicked) {
        Clicked();
        return;
    }
    QLabel::keyPressEvent(Event);
}

void ValueLabel::contextMenuEvent(QContextMenuEvent* Event) {
    const bool ByKey = Event->reason() == QContextMenuEvent::Keyboard;
    if (MenuWanted)
        MenuWanted(ByKey ? mapToGlobal(rect().bottomLeft()) : Event->globalPos());
}

void ValueLabel::focusInEvent(QFocusEvent* Event) {
    QLabel::focusInEvent(Event);
    update();
}

void ValueLabel::focusOutEvent(QFocusEvent* Event) {
    QLabel::focusOutEvent(Event);
    update();
}

} // namespace quoril
