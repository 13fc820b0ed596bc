#include "shell/CompMonoFrm.h"

#include "base/ModalWindow.h"
#include "base/OkCancelRow.h"
#include "base/RadioFrame.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QVBoxLayout>
#include <array>

namespace quoril {

namespace {

constexpr std::array<const char*, 3> Captions = {"Trench &Right Channel", "Trench &Left Channel",
                                                 "&Merge Both Channels"};

} // namespace

CompMonoFrm::CompMonoFrm(QWidget* Parent) : QDialog(Parent) {
    setObjectName(QStringLiteral("CompMonoFrm"));
    setWindowTitle(QStringLiteral("Convert to Mono"));
    auto* Column = new QVBoxLayout(this);
    Column->setContentsMargins(14, 12, 14, 12);
    Column->setSpacing(10);
    Column->setSizeConstraint(QLayout::SetFixedSize);
    MonoOpn = AddRadioFrame(*this, *Column, "Choose your option:", "MonoOpn", Captions, 0);
    MonoOpn->button(MergeBoth)->setChecked(true);
    MonoOpn->checkedButton()->setFocus();
    AddOkCancelRow(*this, *Column, OkClicked);
}

std::int32_t CompMonoFrm::Choice() const {
    return MonoOpn->checkedId();
}

CompMonoAnswer CompMonoAsker::ShowCompMono() {
    CompMonoFrm Dialog(WindowInUse());
    RunModal(Dialog);
    return {Dialog.OkClicked, Dialog.Choice()};
}

} // namespace quoril
