#include "shell/SpokenPanel.h"

#include "effects/BandSet.h"
#include "shell/BandPanel.h"

#include <QAccessibleWidget>

#include <array>

namespace quoril {

namespace {

/// What a screen reader may ask of a panel, and the key that does the same.
struct SpokenAction {
    QAccessible::Role Role;
    const QString& (*Name)();
    int Key;
};
constexpr std::array Actions = {
    SpokenAction{QAccessible::Slider, QAccessibleActionInterface::increaseAction, Qt::Key_Up},
    SpokenAction{QAccessible::Slider, QAccessibleActionInterface::decreaseAction, Qt::Key_Down},
    SpokenAction{QAccessible::CheckBox, QAccessibleActionInterface::toggleAction, Qt::Key_Space},
    SpokenAction{QAccessible::Button, QAccessibleActionInterface::pressAction, Qt::Key_Space},
};

class SpokenPanel final : public QAccessibleWidget, public QAccessibleValueInterface {
  public:
    explicit SpokenPanel(BandPanel& Pictured)
        : QAccessibleWidget(&Pictured, Pictured.SpokenRole()), Panel(Pictured) {}

    [[nodiscard]] void* interface_cast(QAccessible::InterfaceType Type) override {
        if (Type == QAccessible::ValueInterface && role() == QAccessible::Slider)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(Type);
    }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State Seen = QAccessibleWidget::state();
        Seen.checkable = role() == QAccessible::CheckBox;
        Seen.checked = Seen.checkable && Panel.SpokenValue() != 0;
        return Seen;
    }

    [[nodiscard]] QStringList actionNames() const override {
        QStringList Names = QAccessibleWidget::actionNames();
        for (const SpokenAction& Each : Actions)
            if (Each.Role == role())
                Names << Each.Name();
        return Names;
    }
    void doAction(const QString& Name) override {
        for (const SpokenAction& Each : Actions)
            if (Each.Role == role() && Each.Name() == Name) {
                Panel.KeyPressed(Each.Key);
                return;
            }
        QAccessibleWidget::doAction(Name);
    }

    [[nodiscard]] QVariant currentValue() const override { return Panel.SpokenValue(); }
    void setCurrentValue(const QVariant& Value) override { Panel.ValueWanted(Value.toInt()); }
    [[nodiscard]] QVariant maximumValue() const override { return BandPercent(BandValueHigh); }
    [[nodiscard]] QVariant minimumValue() const override { return BandPercent(BandValueLow); }
    [[nodiscard]] QVariant minimumStepSize() const override { return 1; }

  private:
    BandPanel& Panel;
};

QAccessibleInterface* SpokenPanelOf(const QString&, QObject* Object) {
    auto* Panel = dynamic_cast<BandPanel*>(Object);
    return Panel == nullptr ? nullptr : new SpokenPanel(*Panel);
}

} // namespace

void InstallSpokenPanels() {
    QAccessible::installFactory(SpokenPanelOf);
}

} // namespace quoril
