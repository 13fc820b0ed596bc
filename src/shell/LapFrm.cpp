#include "shell/LapFrm.h"

#include "base/CommandFailure.h"
#include "base/ModalWindow.h"
#include "base/OkCancelRow.h"

#include <QButtonGroup>
#include <QGroupBox>
#include <QRadioButton>
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
        AddOptions(*Column, "Current Selection type:", "SelcOpn", LapSelcCaptions, Last.SelcOpn);
    TransOpn = AddOptions(*Column, "Transition style", "TransOpn", LapTransCaptions, Last.TransOpn);
    SelcOpn->checkedButton()->setFocus();

    AddOkCancelRow(*this, *Column, OkClicked);
}

LapFrm::~LapFrm() {
    RunCommand({}, [this] { LapSettingsWrite(Choice()); });
}

QButtonGroup* LapFrm::AddOptions(QLayout& Column, const char* Heading, const char* Name,
                                 std::span<const char* const> Captions, std::int32_t Chosen) {
    auto* Frame = new QGroupBox(QLatin1String(Heading), this);
    Frame->setAccessibleName(QLatin1String(Heading));
    auto* Rows = new QVBoxLayout(Frame);
    auto* Group = new QButtonGroup(Frame);
    int Index = 0;
    for (const char* Caption : Captions) {
        auto* Button = new QRadioButton(QLatin1String(Caption), Frame);
        Button->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(Name)).arg(Index));
        Button->setAccessibleName(QLatin1String(Caption));
        Button->setChecked(Index == Chosen);
        Group->addButton(Button, Index++);
        Rows->addWidget(Button);
    }
    Column.addWidget(Frame);
    return Group;
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
