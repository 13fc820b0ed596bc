#include "shell/EntStrchFrm.h"

#include "base/ModalWindow.h"
#include "base/OkCancelRow.h"

#include <QCheckBox>
#include <QLabel>
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

    EnterValTxt.emplace(*this, *Column, "EnterValTxt", "Percentage", "10 to 1000",
                        TwoTexts{Shown.Start, Shown.End, Shown.UseTwo});
    MoveAudioChk = new QCheckBox(QStringLiteral("&Move the following audio"), this);
    MoveAudioChk->setObjectName(QStringLiteral("MoveAudioChk"));
    MoveAudioChk->setChecked(Shown.Move);
    Column->addWidget(MoveAudioChk);
    AddOkCancelRow(*this, *Column, OkClicked);
}

StretchEntry EntStrchFrm::Entry() const {
    const TwoTexts Texts = EnterValTxt->Texts();
    return {Texts.Start, Texts.End, Texts.UseTwo, MoveAudioChk->isChecked()};
}

StretchAnswer StretchAsker::ShowStretch(std::int32_t Index, const StretchEntry& Shown) {
    EntStrchFrm Dialog(Index, Shown, WindowInUse());
    RunModal(Dialog);
    return {Dialog.OkClicked, Dialog.Entry()};
}

} // namespace quoril
