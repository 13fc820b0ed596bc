#include "shell/UndoClearFrm.h"

#include "base/ModalWindow.h"
#include "base/MsgBoxMod.h"
#include "base/QtText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <array>

namespace quoril {

UndoClearFrm::UndoClearFrm(QWidget* Parent) : QDialog(Parent), AvailList(new QListWidget(this)) {
    setObjectName(QStringLiteral("UndoClearFrm"));
    setWindowTitle(QStringLiteral("Clear Undo Data"));

    auto* Heading = new QLabel(QStringLiteral("&Undo backup data items:"), this);
    Heading->setBuddy(AvailList);
    AvailList->setObjectName(QStringLiteral("AvailList"));
    AvailList->setAccessibleName(tr("Steps that can be undone, the oldest first"));
    AvailList->setMinimumSize(320, 180);

    auto* Buttons = new QVBoxLayout;
    constexpr std::array<const char*, 3> Captions = {"Clear &first one",
                                                     "Clear up to &selected item", "Clear &all"};
    for (std::int32_t Index = 1; Index <= 3; ++Index) {
        const QString Caption =
            QString::fromLatin1(Captions.at(static_cast<std::size_t>(Index - 1)));
        auto* Button = new QPushButton(Caption, this);
        Button->setObjectName(QStringLiteral("ClearBtn_%1").arg(Index));
        connect(Button, &QPushButton::clicked, this, [this, Index] { ButtonClicked(Index); });
        Buttons->addWidget(Button);
    }
    auto* CloseBtn = new QPushButton(QStringLiteral("&Close"), this);
    CloseBtn->setObjectName(QStringLiteral("CloseBtn"));
    CloseBtn->setDefault(true);
    connect(CloseBtn, &QPushButton::clicked, this, &QDialog::reject);
    Buttons->addStretch();
    Buttons->addWidget(CloseBtn);

    auto* Row = new QHBoxLayout;
    Row->addWidget(AvailList, 1);
    Row->addLayout(Buttons);
    auto* Column = new QVBoxLayout(this);
    Column->addWidget(Heading);
    Column->addLayout(Row, 1);
}

void UndoClearFrm::Fill(const std::vector<std::string>& Names) {
    Chosen = {};
    AvailList->clear();
    for (const std::string& Name : Names)
        AvailList->addItem(ShownText(Name));
    AvailList->setCurrentRow(-1);
    AvailList->setFocus();
}

void UndoClearFrm::ButtonClicked(std::int32_t Index) {
    // The keyboard can move the frame away from the selected item.
    const QList<QListWidgetItem*> Selected = AvailList->selectedItems();
    if (Index == UndoClearUpToSelected && Selected.isEmpty()) {
        MsgBox(UndoClearSelectFirst);
        return;
    }
    const int Row = Selected.isEmpty() ? 0 : AvailList->row(Selected.first());
    Chosen = {Index, static_cast<std::size_t>(Row)};
    accept();
}

UndoClearAnswer UndoClearWindow::ShowUndoClear(const std::vector<std::string>& Names) {
    if (Window == nullptr)
        Window = std::make_unique<UndoClearFrm>(WindowInUse());
    Window->Fill(Names);
    RunModal(*Window);
    return Window->Answer();
}

} // namespace quoril
