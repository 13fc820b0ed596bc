#include "shell/EntStrchFrm.h"

#include "base/ModalWindow.h"
#include "base/OkCancelRow.h"
#include "base/QtText.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace quoril {

EntStrchFrm::EntStrchFrm(std::int32_t Index, const StretchEntry& Shown, QWidget* Parent)
    : QDialog(Parent) {
    setObjectName(QStringLiteral("EntStrchFrm"));
    setWindowTitle(Index == 0 ? QStringLiteral("Enter Percentage to Stretch/Shrink")
                              : QStringLiteral("Enter Percentage Tempo"));
    auto* Column = new QVBoxLayout(this);
    Column->setContentsMargins(14, 12, 14, 12);
    Column->setSpacing(12);
    Column->setSizeConstraint(QLayout::SetFixedSize);
    auto* Prompt = new QLabel(QStringLiteral("Enter Percentage:\n(10 to 1000 %)"), this);
    Prompt->setObjectName(QStringLiteral("Label1"));
    Column->addWidget(Prompt);

    auto* Values = new QGridLayout;
    Values->setHorizontalSpacing(12);
    Values->setVerticalSpacing(4);
    EnterValTxt[1] = AddValue(*Values, 1, "&Start:", "Percentage at the start, 10 to 1000");
    EnterValTxt[2] = AddValue(*Values, 2, "&End:", "Percentage at the end, 10 to 1000");
    Column->addLayout(Values);

    UseTwoChk = new QCheckBox(QStringLiteral("&Use Two Values"), this);
    UseTwoChk->setObjectName(QStringLiteral("UseTwoChk"));
    MoveAudioChk = new QCheckBox(QStringLiteral("&Move the following audio"), this);
    MoveAudioChk->setObjectName(QStringLiteral("MoveAudioChk"));
    Column->addWidget(UseTwoChk);
    Column->addWidget(MoveAudioChk);
    AddOkCancelRow(*this, *Column, OkClicked);

    EnterValTxt[1]->setText(ShownText(Shown.Start));
    EnterValTxt[2]->setText(ShownText(Shown.End));
    UseTwoChk->setChecked(Shown.UseTwo);
    MoveAudioChk->setChecked(Shown.Move);
    UseTwo(Shown.UseTwo);
    connect(UseTwoChk, &QCheckBox::toggled, this, &EntStrchFrm::UseTwo);
    connect(EnterValTxt[1], &QLineEdit::textChanged, this, [this](const QString& Text) {
        if (!UseTwoChk->isChecked())
            EnterValTxt[2]->setText(Text);
    });
    EnterValTxt[1]->selectAll();
    EnterValTxt[1]->setFocus();
}

QLineEdit* EntStrchFrm::AddValue(QGridLayout& Values, int Number, const char* Caption,
                                 const char* AccessibleName) {
    constexpr int Letters = 18; // a third of a hundred with all its digits
    auto* Desc = new QLabel(QLatin1String(Caption), this);
    Desc->setObjectName(QStringLiteral("StaEndLbl_%1").arg(Number));
    auto* Value = new QLineEdit(this);
    Value->setObjectName(QStringLiteral("EnterValTxt_%1").arg(Number));
    Value->setAccessibleName(QLatin1String(AccessibleName));
    Value->setMinimumWidth(Value->fontMetrics().averageCharWidth() * Letters);
    Desc->setBuddy(Value);
    Values.addWidget(Desc, 0, Number);
    Values.addWidget(Value, 1, Number);
    return Value;
}

void EntStrchFrm::UseTwo(bool Two) {
    EnterValTxt[2]->setEnabled(Two);
    if (!Two)
        EnterValTxt[2]->setText(EnterValTxt[1]->text());
}

StretchEntry EntStrchFrm::Entry() const {
    return {CoreText(EnterValTxt[1]->text()), CoreText(EnterValTxt[2]->text()),
            UseTwoChk->isChecked(), MoveAudioChk->isChecked()};
}

StretchAnswer StretchAsker::ShowStretch(std::int32_t Index, const StretchEntry& Shown) {
    EntStrchFrm Dialog(Index, Shown, WindowInUse());
    RunModal(Dialog);
    return {Dialog.OkClicked, Dialog.Entry()};
}

} // namespace quoril
