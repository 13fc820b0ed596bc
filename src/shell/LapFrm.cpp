#include "shell/LapFrm.h"

#include "base/CommandFailure.h"
#include "base/ModalWindow.h"
#include "base/OkCancelRow.h"
#include "base/RadioFrame.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QVBoxLayout>

namespace quoril {

LapFrm::LapFrm(QWidget* Parent) : QDialog(Parent) {
    setObjectName(QStringLiteral("LapFrm"));
    setWindowTitle(QStringLiteral("Lap (Cut and overlap)"));
    auto* Column = new QVBoxLayout(this);
    Column->setContentsMargins(14, 12, 14, 12);
    Column->setSpacing(10);
    Column->setSizeConstraint(QLayout::SetFixedSize);
    const LapChoice Last = LapSettingsRead();
    SelcOpn =
        AddRadioFrame(*this, *Column, "Current Selection type:", "SelcOpn", LapSelcCaptions, 0);
    TransOpn = AddRadioFrame(*this, *Column, "Transition style", "TransOpn", LapTransCaptions, 0);
    SelcOpn->button(Last.SelcOpn)->setChecked(true);
    TransOpn->button(Last.TransOpn)->setChecked(true);
    SelcOpn->checkedButton()->setFocus();

    AddOkCancelRow(*this, *Column, OkClicked);
}

LapFrm::~LapFrm() {
    RunCommand({}, [this] { LapSettingsWrite(Choice()); });
}

LapChoice LapFrm::Choice() const {
    return {SelcOpn->checkedId(), TransOpn->checkedId()};
}

LapAnswer LapAsker::ShowLap() {
    LapFrm Dialog(WindowInUse());
    RunModal(Dialog);
    return {Dialog.OkClicked, Dialog.Choice()};
}

} // namespace quoril
