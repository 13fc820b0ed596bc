#include "base/RadioFrame.h"

#include <QButtonGroup>
#include <QDialog>
#include <QGroupBox>
#include <QGuiApplication>
#include <QRadioButton>
#include <QVBoxLayout>

namespace quoril {

void TabToTheChosen(QButtonGroup& Group) {
    QObject::connect(&Group, &QButtonGroup::buttonToggled, &Group,
                     [&Group](QAbstractButton* Toggled, bool Checked) {
                         if (!Checked)
                             return;
                         for (QAbstractButton* Button : Group.buttons())
                             Button->setFocusPolicy(Button == Toggled ? Qt::StrongFocus
                                                                      : Qt::ClickFocus);
                     });
}

QButtonGroup* AddRadioFrame(QDialog& Dialog, QLayout& Place, const char* Heading, const char* Name,
                            std::span<const char* const> Captions, int First) {
    auto* Frame = new QGroupBox(QLatin1String(Heading), &Dialog);
    Frame->setAccessibleName(QLatin1String(Heading));
    auto* Rows = new QVBoxLayout(Frame);
    auto* Group = new QButtonGroup(Frame);
    int Index = First;
    for (const char* Caption : Captions) {
        auto* Button = new QRadioButton(QLatin1String(Caption), Frame);
        Button->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(Name)).arg(Index));
        Button->setAccessibleName(QString::fromLatin1(Caption).remove(QLatin1Char('&')));
        // A key chooses at once, and not when the button comes up again: the next key may already
        // be the one that closes the dialog.
        QObject::connect(Button, &QRadioButton::pressed, Button, [Button] {
            if (QGuiApplication::mouseButtons() == Qt::NoButton)
                Button->setChecked(true);
        });
        Group->addButton(Button, Index++);
        Rows->addWidget(Button);
    }
    TabToTheChosen(*Group);
    Rows->addStretch(1);
    Place.addWidget(Frame);
    return Group;
}

} // namespace quoril
