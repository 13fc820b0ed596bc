#include "shell/EchoFrm.h"

#include "base/ModalWindow.h"
#include "base/OkCancelRow.h"
#include "base/QtText.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>
#include <algorithm>

namespace quoril {

namespace {

struct FieldRow {
    const char* Caption;
    const char* AccessibleName;
};
constexpr std::array<FieldRow, EchoFields> FieldRows = {{
    {"&First Delay: (Sec.)", "First delay, in seconds, above 0, at most 100"},
    {"&Next Delays: (Sec)", "Next delays, in seconds, above 0, at most 100"},
    {"No of &repeats:", "Number of repeats, 1 to 100"},
    {"&Volume Reduction: (%)\n(Over all)", "Volume reduction over all, in percent, 1 to 200"},
    {"&Delay variation: (%)", "Delay variation, in percent, 0 to 100"},
    {"Volume Reduction: (%)\n(&Hi Fi)", "Volume reduction hi fi, in percent, 1 to 200"},
}};

} // namespace

EchoFrm::EchoFrm(EchoParamsRec& Params, QWidget* Parent) : QDialog(Parent), Shown(Params) {
    setObjectName(QStringLiteral("EchoFrm"));
    setWindowTitle(QStringLiteral("Enter Echo Parameters:"));
    auto* Column = new QVBoxLayout(this);
    Column->setContentsMargins(14, 12, 14, 12);
    Column->setSpacing(14);
    Column->setSizeConstraint(QLayout::SetFixedSize);
    auto* Rows = new QGridLayout;
    Rows->setHorizontalSpacing(18);
    Rows->setVerticalSpacing(8);
    for (std::size_t Field = 0; Field < EchoFields; ++Field)
        AddField(*Rows, Field, FieldRows[Field].Caption, FieldRows[Field].AccessibleName);
    Column->addLayout(Rows);
    AddOkCancelRow(*this, *Column, OkClicked, "&Ok");
    EcoTxt[0]->selectAll();
    EcoTxt[0]->setFocus();
}

void EchoFrm::AddField(QGridLayout& Rows, std::size_t Field, const char* Caption,
                       const char* AccessibleName) {
    constexpr int Letters = 12;
    const int Number = static_cast<int>(Field) + 1;
    auto* Desc = new QLabel(QLatin1String(Caption), this);
    Desc->setObjectName(QStringLiteral("EcoLbl_%1").arg(Number));
    auto* Value = new QLineEdit(ShownText(EchoTextsOf(Shown)[Field]), this);
    Value->setObjectName(QStringLiteral("EcoTxt_%1").arg(Number));
    Value->setAccessibleName(QLatin1String(AccessibleName));
    Value->setMinimumWidth(Value->fontMetrics().averageCharWidth() * Letters);
    Desc->setBuddy(Value);
    connect(Value, &QLineEdit::editingFinished, this, [this, Field] { LeaveField(Field); });
    Rows.addWidget(Desc, Number, 0);
    Rows.addWidget(Value, Number, 1);
    EcoTxt.at(Field) = Value;
}

void EchoFrm::LeaveField(std::size_t Field) {
    EchoFieldTake(Shown, Field, CoreText(EcoTxt.at(Field)->text()));
    EcoTxt.at(Field)->setText(ShownText(EchoTextsOf(Shown).at(Field)));
}

void EchoFrm::done(int Result) {
    for (std::size_t Field = 0; Field < EchoFields; ++Field)
        LeaveField(Field);
    if (OkClicked) {
        EchoTexts Texts;
        std::ranges::transform(EcoTxt, Texts.begin(),
                               [](const QLineEdit* Each) { return CoreText(Each->text()); });
        EchoSettingWrite(Texts);
    }
    QDialog::done(Result);
}

bool EchoAsker::ShowEcho(EchoParamsRec& Params) {
    EchoFrm Dialog(Params, WindowInUse());
    RunModal(Dialog);
    return Dialog.OkClicked;
}

} // namespace quoril
