#include "shell/EntFrqFrm.h"

#include "base/ModalWindow.h"
#include "base/OkCancelRow.h"
#include "base/QtText.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace quoril {

EntFrqFrm::EntFrqFrm(const EntFrqEntry& Shown, QWidget* Parent) : QDialog(Parent) {
    setObjectName(QStringLiteral("EntFrqFrm"));
    setWindowTitle(QStringLiteral("Enter Frequency"));
    auto* Column = new QVBoxLayout(this);
    Column->setContentsMargins(14, 12, 14, 12);
    Column->setSpacing(12);
    Column->setSizeConstraint(QLayout::SetFixedSize);
    auto* Rows = new QGridLayout;
    Rows->setHorizontalSpacing(12);
    Rows->setVerticalSpacing(8);
    int Number = 0;
    for (const char* Words : {"Frequency (Hz):", "(2 to 20000 Hz)"}) {
        auto* Label1 = new QLabel(QLatin1String(Words), this);
        Label1->setObjectName(QStringLiteral("Label1_%1").arg(++Number));
        Rows->addWidget(Label1, 0, Number - 1);
    }
    AddEnd(*Rows, 1, "&Start:", "Frequency at the start, in Hertz", Shown.Start);
    AddEnd(*Rows, 2, "&End:", "Frequency at the end, in Hertz", Shown.End);
    UseTwoChk = new QCheckBox(QStringLiteral("&Use Two Values"), this);
    UseTwoChk->setObjectName(QStringLiteral("UseTwoChk"));
    UseTwoChk->setAccessibleName(QStringLiteral("Use Two Values"));
    UseTwoChk->setChecked(Shown.UseTwo);
    Rows->addWidget(UseTwoChk, Rows->rowCount(), 1);
    Column->addLayout(Rows);
    AddOkCancelRow(*this, *Column, OkClicked);
    connect(UseTwoChk, &QCheckBox::toggled, this, &EntFrqFrm::FollowStart);
    connect(EnterFrqTxt[1], &QLineEdit::textChanged, this, &EntFrqFrm::FollowStart);
    FollowStart();
    EnterFrqTxt[1]->setFocus();
    EnterFrqTxt[1]->selectAll();
}

void EntFrqFrm::AddEnd(QGridLayout& Rows, std::size_t Index, const char* Caption,
                       const char* AccessibleName, const std::string& Text) {
    auto* StaEndLbl = new QLabel(QLatin1String(Caption), this);
    StaEndLbl->setObjectName(QStringLiteral("StaEndLbl_%1").arg(Index));
    auto* Box = new QLineEdit(ShownText(Text), this);
    Box->setObjectName(QStringLiteral("EnterFrqTxt_%1").arg(Index));
    Box->setAccessibleName(QLatin1String(AccessibleName));
    StaEndLbl->setBuddy(Box);
    EnterFrqTxt.at(Index) = Box;
    const int Row = Rows.rowCount();
    Rows.addWidget(StaEndLbl, Row, 0);
    Rows.addWidget(Box, Row, 1);
}

void EntFrqFrm::FollowStart() {
    EnterFrqTxt[2]->setEnabled(UseTwoChk->isChecked());
    if (!UseTwoChk->isChecked())
        EnterFrqTxt[2]->setText(EnterFrqTxt[1]->text());
}

EntFrqEntry EntFrqFrm::Entry() const {
    return {CoreText(EnterFrqTxt[1]->text()), CoreText(EnterFrqTxt[2]->text()),
            UseTwoChk->isChecked()};
}

EntFrqAnswer EntFrqAsker::ShowEntFrq(const EntFrqEntry& Shown) {
    EntFrqFrm Dialog(Shown, WindowInUse());
    RunModal(Dialog);
    return {Dialog.OkClicked, Dialog.Entry()};
}

} // namespace quoril
