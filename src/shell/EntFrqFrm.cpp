#include "shell/EntFrqFrm.h"

#include "base/ModalWindow.h"
#include "base/OkCancelRow.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace quoril {

EntFrqFrm::EntFrqFrm(const EntFrqEntry& Shown, QWidget* Parent) : QDialog(Parent) {
    setObjectName(QStringLiteral("EntFrqFrm"));
    setWindowTitle(QStringLiteral("Enter Frequency"));
    auto* Column = new QVBoxLayout(this);
    Column->setContentsMargins(14, 12, 14, 12);
    Column->setSpacing(12);
    Column->setSizeConstraint(QLayout::SetFixedSize);
    auto* Words = new QHBoxLayout;
    int Number = 0;
    for (const char* Text : {"Frequency (Hz):", "(2 to 20000 Hz)"}) {
        auto* Label1 = new QLabel(QLatin1String(Text), this);
        Label1->setObjectName(QStringLiteral("Label1_%1").arg(++Number));
        Words->addWidget(Label1);
    }
    Words->addStretch(1);
    Column->addLayout(Words);
    EnterFrqTxt.emplace(*this, *Column, "EnterFrqTxt", "Frequency", "in Hertz",
                        TwoTexts{Shown.Start, Shown.End, Shown.UseTwo});
    AddOkCancelRow(*this, *Column, OkClicked);
}

EntFrqEntry EntFrqFrm::Entry() const {
    const TwoTexts Texts = EnterFrqTxt->Texts();
    return {Texts.Start, Texts.End, Texts.UseTwo};
}

EntFrqAnswer EntFrqAsker::ShowEntFrq(const EntFrqEntry& Shown) {
    EntFrqFrm Dialog(Shown, WindowInUse());
    RunModal(Dialog);
    return {Dialog.OkClicked, Dialog.Entry()};
}

} // namespace quoril
