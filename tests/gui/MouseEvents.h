// Events of the mouse as the toolkit tells them to a widget.
#pragma once

#include <QApplication>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWidget>

namespace quoril::test {

/// An event at a place on a widget: rounded to whole pixels there, exact in the window.
inline void SendMouse(QWidget* Where, QEvent::Type Type, const QPointF& Place,
                      Qt::MouseButton Button, Qt::MouseButtons Held) {
    QMouseEvent Event(Type, Place.toPoint(), Where->mapTo(Where->window(), Place),
                      Where->mapToGlobal(Place), Button, Held, Qt::NoModifier);
    QApplication::sendEvent(Where, &Event);
}

/// A turn of the wheel by whole notches, away from the user if positive: exact on the widget, and
/// the place in the window not told.
inline void SendWheel(QWidget* Where, const QPointF& Place, int Notches,
                      Qt::KeyboardModifiers Keys = {}, QPoint Pixels = {},
                      Qt::ScrollPhase Phase = Qt::NoScrollPhase) {
    QWheelEvent Event(Place, Where->mapToGlobal(Place), Pixels, {0, 120 * Notches}, Qt::NoButton,
                      Keys, Phase, false);
    QApplication::sendEvent(Where, &Event);
}

} // namespace quoril::test
