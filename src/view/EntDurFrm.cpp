#include "view/EntDurFrm.h"

#include "base/ModalWindow.h"
#include "base/OkCancelRow.h"
#include "base/QtText.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace quoril {

QLabel* EntDurFrm::AddLabel(const char* Name, const char* Accessible) {
    auto* Label = new QLabel(this);
    Label->setObjectName(QLatin1String(Name));
    Label->setAccessibleName(QLatin1String(Accessible));
    return Label;
}

QLineEdit* EntDurFrm::AddBox(const char* Name, const char* Accessible) {
    auto* Box = new QLineEdit(this);
    Box->setObjectName(QLatin1String(Name));
    Box->setAccessibleName(QLatin1String(Accessible));
    Box->setMinimumWidth(Box->fontMetrics().horizontalAdvance(QStringLiteral("0000:00:00.00")) +
                         24);
    return Box;
}

EntDurFrm::EntDurFrm(QWidget* Parent) : QDialog(Parent) {
    setObjectName(QStringLiteral("EntDurFrm"));
    setWindowTitle(QStringLiteral("Change Size"));
    PromptLbl = AddLabel("PromptLbl", "What is asked for");
    QFont Bold = PromptLbl->font();
    Bold.setBold(true);
    PromptLbl->setFont(Bold);
    RefSizeLbl = AddLabel("RefSizeLbl", "What the present values are");
    CurSizeDurLbl = AddLabel("CurSizeDurLbl", "Present duration");
    CurSizeSmpLbl = AddLabel("CurSizeSmpLbl", "Present number of samples");
    EnterDurTxt = AddBox("EnterDurTxt", "Duration, hours:minutes:seconds or seconds");
    EnterSmpTxt = AddBox("EnterSmpTxt", "Number of samples");
    auto* DurLbl = new QLabel(QStringLiteral("&Duration:"), this);
    DurLbl->setBuddy(EnterDurTxt);
    auto* SmpLbl = new QLabel(QStringLiteral("&No of Samples:"), this);
    SmpLbl->setBuddy(EnterSmpTxt);
    auto* FormLbl = new QLabel(QStringLiteral("(hh:mm:ss or seconds)"), this);
    auto* HowLbl = new QLabel(QStringLiteral("Enter duration or samples"), this);

    auto* Column = new QVBoxLayout(this);
    Column->setContentsMargins(14, 12, 14, 12);
    Column->setSizeConstraint(QLayout::SetFixedSize);
    Column->setSpacing(10);
    Column->addWidget(PromptLbl);
    auto* Grid = new QGridLayout;
    Grid->setHorizontalSpacing(10);
    Grid->setVerticalSpacing(8);
    Grid->addWidget(HowLbl, 0, 0, 1, 2);
    Grid->addWidget(RefSizeLbl, 0, 2);
    Grid->addWidget(DurLbl, 1, 0);
    Grid->addWidget(EnterDurTxt, 1, 1);
    Grid->addWidget(CurSizeDurLbl, 1, 2);
    Grid->addWidget(FormLbl, 2, 1);
    Grid->addWidget(SmpLbl, 3, 0);
    Grid->addWidget(EnterSmpTxt, 3, 1);
    Grid->addWidget(CurSizeSmpLbl, 3, 2);
    Grid->setColumnStretch(1, 1);
    Grid->setColumnMinimumWidth(2, 140);
    Column->addLayout(Grid);
    Column->addStretch(1);

    AddOkCancelRow(*this, *Column, OkClicked);
    connect(EnterDurTxt, &QLineEdit::textChanged, this, [this] { DurationEdited(); });
    connect(EnterSmpTxt, &QLineEdit::textChanged, this, [this] { SamplesEdited(); });
}

void EntDurFrm::Fill(const EntDurRequest& Request) {
    WaiteForUpdateDur = true;
    WaiteForUpdateSamp = true;
    Freq = Request.Freq;
    setWindowTitle(ShownText(Request.Caption));
    PromptLbl->setText(ShownText(Request.Prompt));
    RefSizeLbl->setText(ShownText(Request.RefSize));
    CurSizeDurLbl->setText(ShownText(Request.CurSizeDur));
    CurSizeSmpLbl->setText(ShownText(Request.CurSizeSmp));
    EnterDurTxt->setText(ShownText(Request.EnterDur));
    EnterSmpTxt->setText(ShownText(Request.EnterSmp));
    WaiteForUpdateDur = false;
    WaiteForUpdateSamp = false;
    EnterDurTxt->setFocus();
    EnterDurTxt->selectAll();
}

EntDurAnswer EntDurFrm::Answer() const {
    return {OkClicked, CoreText(EnterSmpTxt->text())};
}

void EntDurFrm::DurationEdited() {
    if (WaiteForUpdateDur)
        return;
    WaiteForUpdateSamp = true;
    EnterSmpTxt->setText(ShownText(EntDurSamplesFollow(CoreText(EnterDurTxt->text()), Freq)));
    WaiteForUpdateSamp = false;
}

void EntDurFrm::SamplesEdited() {
    if (WaiteForUpdateSamp)
        return;
    WaiteForUpdateDur = true;
    EnterDurTxt->setText(ShownText(EntDurTimeFollow(CoreText(EnterSmpTxt->text()), Freq)));
    WaiteForUpdateDur = false;
}

EntDurAnswer EntDurAsker::ShowEntDur(const EntDurRequest& Request) {
    EntDurFrm Dialog(WindowInUse());
    Dialog.Fill(Request);
    RunModal(Dialog);
    return Dialog.Answer();
}

} // namespace quoril
