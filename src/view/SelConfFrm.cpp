#include "view/SelConfFrm.h"

#include "base/ModalWindow.h"
#include "base/OkCancelRow.h"
#include "base/QtText.h"

#include <QButtonGroup>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

#include <string>

namespace quoril {

SelConfFrm::SelConfFrm(QWidget* Parent) : QDialog(Parent) {
    setObjectName(QStringLiteral("SelConfFrm"));
    setWindowTitle(QStringLiteral(" Confirm Selection"));
    auto* Column = new QVBoxLayout(this);
    Column->setSpacing(8);
    Column->setContentsMargins(14, 12, 14, 12);
    Column->setSizeConstraint(QLayout::SetFixedSize);

    NeedLbl = new QLabel(this);
    NeedLbl->setObjectName(QStringLiteral("NeedLbl"));
    NeedLbl->setAccessibleName(QStringLiteral("What the command needs"));
    QFont Bold = NeedLbl->font();
    Bold.setBold(true);
    NeedLbl->setFont(Bold);
    AvailLbl = new QLabel(this);
    AvailLbl->setObjectName(QStringLiteral("AvailLbl"));
    AvailLbl->setAccessibleName(QStringLiteral("What is selected now"));
    auto* HowLbl = new QLabel(QLatin1String(SelConfPrompt), this);
    HowLbl->setObjectName(QStringLiteral("HowLbl"));
    Column->addWidget(NeedLbl);
    Column->addWidget(AvailLbl);
    Column->addSpacing(4);
    Column->addWidget(HowLbl);

    for (const SelConfOption& Option : SelConfOptions) {
        QButtonGroup* Group = FrameOf(Option.Frame, this);
        auto* Button =
            new QRadioButton(QLatin1String(Option.Caption), static_cast<QWidget*>(Group->parent()));
        Button->setObjectName(
            QStringLiteral("%1_%2").arg(QLatin1String(Option.Control)).arg(Option.Index));
        Button->setAccessibleName(QLatin1String(Option.Caption));
        Group->addButton(Button, Option.Index);
        Button->parentWidget()->layout()->addWidget(Button);
    }
    Column->addStretch(1);

    AddOkCancelRow(*this, *Column, OkClicked);
    UpdateForm();
}

QButtonGroup* SelConfFrm::FrameOf(const char* Name, QWidget* Parent) {
    for (const OptionFrame& Known : Frames)
        if (std::string(Known.Name) == Name)
            return Known.Options;
    auto* Frame = new QWidget(Parent);
    Frame->setObjectName(QLatin1String(Name));
    Frame->setAccessibleName(QLatin1String(SelConfPrompt));
    auto* Rows = new QVBoxLayout(Frame);
    Rows->setContentsMargins(12, 0, 0, 0);
    auto* Group = new QButtonGroup(Frame);
    layout()->addWidget(Frame);
    Frames.push_back({Name, Frame, Group});
    return Group;
}

void SelConfFrm::UpdateForm() {
    NeedLbl->setText(ShownText(NeedLblText(SelectNeed)));
    AvailLbl->setText(ShownText(AvailLblText(SelectAvailable)));
    const char* Wanted = "";
    for (const SelConfOption& Option : SelConfOptions)
        if (Option.Need == SelectNeed && Option.Available == SelectAvailable)
            Wanted = Option.Frame;
    Visible = nullptr;
    for (const OptionFrame& Each : Frames) {
        Each.Options->button(0)->setChecked(true);
        const bool Shown = std::string(Each.Name) == Wanted;
        Each.Frame->setVisible(Shown);
        if (Shown) {
            Visible = Each.Options;
            Each.Options->button(0)->setFocus();
        }
    }
}

std::int32_t SelConfFrm::ChosenOption() const {
    return Visible == nullptr ? -1 : Visible->checkedId();
}

std::optional<std::int32_t> SelConfAsker::ShowSelConf(const SelConfRequest& Request) {
    SelConfFrm Dialog(WindowInUse());
    Dialog.setWindowTitle(ShownText(Request.Caption));
    Dialog.SelectNeed = Request.Need;
    Dialog.SelectAvailable = Request.Available;
    Dialog.UpdateForm();
    RunModal(Dialog);
    if (!Dialog.OkClicked)
        return std::nullopt;
    return Dialog.ChosenOption();
}

} // namespace quoril
