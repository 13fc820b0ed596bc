#include "shell/BandPanel.h"

#include "shell/SpokenPanel.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>
#include <array>
#include <utility>

namespace quoril {

namespace {

constexpr std::array KeysTaken = {Qt::Key_Left, Qt::Key_Right,  Qt::Key_Up,
                                  Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown,
                                  Qt::Key_Home, Qt::Key_End,    Qt::Key_Space};

} // namespace

BandPanel::BandPanel(const QString& Name, const QString& AccessibleName, QAccessible::Role Role,
                     QWidget* Parent)
    : PicturePanel(Name, Parent), Kind(Role) {
    InstallSpokenPanels();
    setAccessibleName(AccessibleName);
    setFocusPolicy(Qt::StrongFocus);
}

void BandPanel::Tell(const QString& Band, int Value) {
    if (accessibleDescription() != Band)
        setAccessibleDescription(Band);
    if (std::exchange(Told, Value) == Value)
        return;
    if (Kind == QAccessible::Slider) {
        QAccessibleValueChangeEvent Event(this, Value);
        QAccessible::updateAccessibility(&Event);
    } else {
        QAccessible::State Changed;
        Changed.checked = true;
        QAccessibleStateChangeEvent Event(this, Changed);
        QAccessible::updateAccessibility(&Event);
    }
}

BandPicture BandPanel::Geometry(std::int32_t NoOfBands) const {
    return {std::max(ScaleWidth(), 1), std::max(ScaleHeight(), 1), NoOfBands};
}

void BandPanel::mousePressEvent(QMouseEvent* Event) {
    if (Event->button() == Qt::LeftButton && Pressed)
        Pressed(PixelAt(PlaceOf(*Event)));
}

void BandPanel::mouseMoveEvent(QMouseEvent* Event) {
    if (Moved)
        Moved(PixelAt(PlaceOf(*Event)));
}

void BandPanel::contextMenuEvent(QContextMenuEvent* Event) {
    // What stands behind the menu key is not the same on all desktops: it is taken as a key.
    if (MenuWanted && Event->reason() != QContextMenuEvent::Keyboard)
        MenuWanted(Event->globalPos());
}

void BandPanel::keyPressEvent(QKeyEvent* Event) {
    const bool MenuKey =
        Event->key() == Qt::Key_Menu ||
        (Event->key() == Qt::Key_F10 && Event->modifiers().testFlag(Qt::ShiftModifier));
    if (MenuKey && MenuWanted)
        MenuWanted(mapToGlobal(rect().center()));
    else if (KeyPressed && std::ranges::find(KeysTaken, Event->key()) != KeysTaken.end())
        KeyPressed(Event->key());
    else
        PicturePanel::keyPressEvent(Event);
}

void BandPanel::resizeEvent(QResizeEvent* Event) {
    PicturePanel::resizeEvent(Event);
    if (Redraw)
        Redraw();
}

void BandPanel::focusInEvent(QFocusEvent* Event) {
    PicturePanel::focusInEvent(Event);
    if (Redraw)
        Redraw();
}

void BandPanel::focusOutEvent(QFocusEvent* Event) {
    PicturePanel::focusOutEvent(Event);
    if (Redraw)
        Redraw();
}

} // namespace quoril
