#include "shell/RawLoadFrm.h"

#include "base/ModalWindow.h"
#include "base/OkCancelRow.h"
#include "base/QtText.h"
#include "base/RadioFrame.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace quoril {

RawLoadFrm::RawLoadFrm(const RawChoice& Chosen, QWidget* Parent)
    : QDialog(Parent), OtherFreq(Chosen.OtherFreq) {
    setObjectName(QStringLiteral("RawLoadFrm"));
    setWindowTitle(QStringLiteral("Choose format for loading a Raw/Snd/Binary file"));
    auto* Column = new QVBoxLayout(this);
    Column->setContentsMargins(14, 12, 14, 12);
    Column->setSpacing(10);
    Column->setSizeConstraint(QLayout::SetFixedSize);
    AddOptions(*Column);
    AddOffset(*Column);
    AddOkCancelRow(*this, *Column, OkClicked);
    FmtChnOpn->button(Chosen.FmtChnOpn)->setChecked(true);
    FmtBitsOpn->button(Chosen.FmtBitsOpn)->setChecked(true);
    FmtFreqOpn->button(Chosen.FmtFreqOpn)->setChecked(true);
    DataOffsetCmb->setCurrentIndex(Chosen.DataOffsetCmb);
    ShowOtherFreq();
    FmtChnOpn->checkedButton()->setFocus();
}

void RawLoadFrm::AddOptions(QVBoxLayout& Column) {
    auto* Row = new QHBoxLayout;
    Row->setSpacing(12);
    FmtChnOpn = AddRadioFrame(*this, *Row, "Channels", "FmtChnOpn", RawChnCaptions, 0);
    FmtBitsOpn = AddRadioFrame(*this, *Row, "Bits", "FmtBitsOpn", RawBitsCaptions, 0);
    Column.addLayout(Row);
    FmtFreqOpn = AddRadioFrame(*this, Column, "Sampling rate", "FmtFreqOpn", RawFreqCaptions, 0);
    auto* FmtFreqOthBtn = new QPushButton(QStringLiteral("O&ther"), this);
    FmtFreqOthBtn->setObjectName(QStringLiteral("FmtFreqOthBtn"));
    FmtFreqOthBtn->setAccessibleName(QStringLiteral("Enter another sampling rate"));
    connect(FmtFreqOthBtn, &QPushButton::clicked, this, [this] { OtherClicked(); });
    Column.addWidget(FmtFreqOthBtn, 0, Qt::AlignLeft);
}

void RawLoadFrm::AddOffset(QVBoxLayout& Column) {
    DataOffsetCmb = new QComboBox(this);
    DataOffsetCmb->setObjectName(QStringLiteral("DataOffsetCmb"));
    DataOffsetCmb->setAccessibleName(QStringLiteral("Data read offset"));
    for (const char* Item : RawOffsetCaptions)
        DataOffsetCmb->addItem(QLatin1String(Item));
    auto* OffsetLbl = new QLabel(QStringLiteral("&Data read offset:"), this);
    OffsetLbl->setBuddy(DataOffsetCmb);
    auto* Row = new QHBoxLayout;
    Row->setSpacing(12);
    Row->addWidget(OffsetLbl);
    Row->addWidget(DataOffsetCmb, 1);
    Column.addLayout(Row);
    auto* NoteLbl = new QLabel(
        QStringLiteral("The data read offset can be zero for normal raw or snd audio."), this);
    NoteLbl->setObjectName(QStringLiteral("OffsetNoteLbl"));
    Column.addWidget(NoteLbl);
}

RawChoice RawLoadFrm::Choice() const {
    return {FmtChnOpn->checkedId(), FmtBitsOpn->checkedId(), FmtFreqOpn->checkedId(), OtherFreq,
            DataOffsetCmb->currentIndex()};
}

void RawLoadFrm::OtherClicked() {
    RawChoice Now = Choice();
    Now.AskOtherFreq();
    OtherFreq = Now.OtherFreq;
    FmtFreqOpn->button(Now.FmtFreqOpn)->setChecked(true);
    ShowOtherFreq();
}

void RawLoadFrm::ShowOtherFreq() {
    QAbstractButton* Other = FmtFreqOpn->button(RawChoice::OtherRate);
    Other->setText(ShownText(Choice().OtherCaption()));
    Other->setAccessibleName(Other->text().remove(QLatin1Char('&')));
}

bool RawLoadAsker::ShowRawLoad(RawChoice& Choice) {
    RawLoadFrm Dialog(Choice, WindowInUse());
    RunModal(Dialog);
    const RawChoice Answer = Dialog.Choice();
    if (Dialog.OkClicked)
        Choice = Answer;
    else
        Choice.OtherFreq = Answer.OtherFreq;
    return Dialog.OkClicked;
}

} // namespace quoril
