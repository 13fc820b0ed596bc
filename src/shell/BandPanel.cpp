#include "shell/BandPanel.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>
#include <array>

namespace quoril {

namespace {

constexpr std::array KeysTaken = {Qt::Key_Left, Qt::Key_Right,  Qt::Key_Up,
                                  Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown,
                                  Qt::Key_Home, Qt::Key_End,    Qt::Key_Space};

/// A panel as a screen reader sees it: a slider whose value is told in words.
class SpokenPanel final : public QAccessibleWidget {
  public:
    explicit SpokenPanel(BandPanel* Panel) : QAccessibleWidget(Panel, QAccessible::Slider) {}
    [[nodiscard]] QString text(QAccessible::Text Which) const override {
        if (Which == QAccessible::Value)
            return static_cast<const BandPanel*>(widget())->SpokenValue();
        return QAccessibleWidget::text(Which);
    }
};

QAccessibleInterface* SpokenPanelOf(const QString&, QObject* Object) {
    auto* Panel = dynamic_cast<BandPanel*>(Object);
    return Panel == nullptr ? nullptr : new SpokenPanel(Panel);
}

void InstallSpokenPanels() {
    static const bool Installed = [] {
        QAccessible::installFactory(SpokenPanelOf);
        return true;
    }();
    (void)Installed;
}

} // namespace

BandPanel::BandPanel(const QString& Name, const QString& AccessibleName, QWidget* Parent)
    : PicturePanel(Name, Parent) {
    InstallSpokenPanels();
    setAccessibleName(AccessibleName);
    setFocusPolicy(Qt::StrongFocus);
}

void BandPanel::SetSpokenValue(const QString& Value) {
    if (Spoken == Value)
        return;
    Spoken = Value;
    QAccessibleValueChangeEvent Event(this, Value);
    QAccessible::updateAccessibility(&Event);
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
