#include "shell/BokMrkChosFrm.h"

#include "base/ModalWindow.h"
#include "base/OkCancelRow.h"
#include "base/QtText.h"

#include <QButtonGroup>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

namespace quoril {

BokMrkChosFrm::BokMrkChosFrm(const std::string& Label, QWidget* Parent)
    : QDialog(Parent), AddOpn(new QButtonGroup(this)) {
    setObjectName(QStringLiteral("BokMrkChosFrm"));
    setWindowTitle(QStringLiteral(" Adding New Bookmarks:"));
    auto* Column = new QVBoxLayout(this);
    Column->setContentsMargins(14, 12, 14, 12);
    Column->setSpacing(10);
    Column->setSizeConstraint(QLayout::SetFixedSize);
    auto* CountLbl = new QLabel(ShownText(Label).trimmed(), this);
    CountLbl->setObjectName(QStringLiteral("CountLbl"));
    CountLbl->setAccessibleName(QStringLiteral("How many bookmarks there are"));
    Column->addWidget(CountLbl);
    const QStringList Captions = {
        QStringLiteral("Add new ones with the current list"),
        QStringLiteral("Delete the current list and add only the new ones")};
    for (int Index = 1; Index <= 2; ++Index) {
        auto* Button = new QRadioButton(Captions.at(Index - 1), this);
        Button->setObjectName(QStringLiteral("AddOpn_%1").arg(Index));
        Button->setAccessibleName(Captions.at(Index - 1));
        AddOpn->addButton(Button, Index);
        Column->addWidget(Button);
    }
    AddOpn->button(BokMrkAppend)->setChecked(true);
    AddOpn->button(BokMrkAppend)->setFocus();
    AddOkCancelRow(*this, *Column, OkClicked);
}

BokMrkChoices BokMrkChosFrm::Choice() const {
    if (!OkClicked)
        return BokMrkNothing;
    return AddOpn->checkedId() == BokMrkReplace ? BokMrkReplace : BokMrkAppend;
}

BokMrkChoices BokMrkChosAsker::ShowBokMrkChos(const std::string& Label) {
    BokMrkChosFrm Dialog(Label, WindowInUse());
    RunModal(Dialog);
    return Dialog.Choice();
}

} // namespace quoril
