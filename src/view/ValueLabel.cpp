#include "view/ValueLabel.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>

namespace quoril {

ValueLabel::ValueLabel(const QString& Name, QWidget* Parent, const QString& Longest)
    : ReadOutLabel(Name, Parent, Longest) {
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
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
    ReadOutLabel::keyPressEvent(Event);
}

void ValueLabel::contextMenuEvent(QContextMenuEvent* Event) {
    const bool ByKey = Event->reason() == QContextMenuEvent::Keyboard;
    if (MenuWanted)
        MenuWanted(ByKey ? mapToGlobal(rect().bottomLeft()) : Event->globalPos());
}

void ValueLabel::focusInEvent(QFocusEvent* Event) {
    ReadOutLabel::focusInEvent(Event);
    update();
}

void ValueLabel::focusOutEvent(QFocusEvent* Event) {
    ReadOutLabel::focusOutEvent(Event);
    update();
}

} // namespace quoril
