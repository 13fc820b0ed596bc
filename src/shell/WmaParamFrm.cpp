#include "shell/WmaParamFrm.h"

#include "base/ModalWindow.h"
#include "base/OkCancelRow.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace quoril {

WmaParamFrm::WmaParamFrm(const WmaParams& Params, QWidget* Parent)
    : QDialog(Parent), CurrentBitRate(Params.CurrentBitRate), CurrentChannel(Params.CurrentChannel),
      CurrentFreq(Params.CurrentFreq), CurChnLbl(AddLabel("CurChnLbl")),
      CurFreqLbl(AddLabel("CurFreqLbl")), BitRateList(new QListWidget(this)) {
    constexpr int LettersInLine = 52;
    constexpr int ListLines = 8;
    setObjectName(QStringLiteral("WmaParamFrm"));
    setWindowTitle(QStringLiteral("Select Wma Compressing Parameters"));
    auto* Column = new QVBoxLayout(this);
    Column->setContentsMargins(14, 12, 14, 12);
    Column->setSpacing(10);
    Column->setSizeConstraint(QLayout::SetFixedSize);
    auto* NoteLbl = AddLabel("NoteLbl");
    NoteLbl->setText(
        QStringLiteral("Supported bit rate (for the current sampling rate and channel) "
                       "are shown here. Please select one."));
    NoteLbl->setWordWrap(true);
    NoteLbl->setFixedWidth(fontMetrics().averageCharWidth() * LettersInLine);
    auto* Desc = new QLabel(QStringLiteral("Supported &Bit Rates"), this);
    Desc->setBuddy(BitRateList);
    BitRateList->setObjectName(QStringLiteral("BitRateList"));
    BitRateList->setAccessibleName(QStringLiteral("Supported Bit Rates"));
    BitRateList->setFixedHeight((fontMetrics().height() + 2) * ListLines + 8);
    for (QWidget* Each : {static_cast<QWidget*>(CurChnLbl), static_cast<QWidget*>(CurFreqLbl),
                          static_cast<QWidget*>(NoteLbl), static_cast<QWidget*>(Desc),
                          static_cast<QWidget*>(BitRateList)})
        Column->addWidget(Each);
    AddOkCancelRow(*this, *Column, OkClicked);
    InitilizeForm();
    BitRateList->setFocus();
}

QLabel* WmaParamFrm::AddLabel(const char* Name) {
    auto* Label = new QLabel(this);
    Label->setObjectName(QLatin1String(Name));
    return Label;
}

void WmaParamFrm::InitilizeForm() {
    CurFreqLbl->setText(QStringLiteral("Current Sampling rate: %1").arg(CurrentFreq));
    CurChnLbl->setText(QStringLiteral("Current Channel: ") +
                       (CurrentChannel == 1 ? QStringLiteral("Mono") : QStringLiteral("Stereo")));
    for (const std::int32_t Kilobits : WmaBitRates(CurrentFreq, CurrentChannel)) {
        const std::int32_t BitRate = Kilobits * 1000;
        auto* Line = new QListWidgetItem(QStringLiteral("%1bps (%2kbps").arg(BitRate).arg(Kilobits),
                                         BitRateList);
        Line->setData(Qt::UserRole, BitRate);
        if (BitRate == CurrentBitRate)
            BitRateList->setCurrentItem(Line);
    }
    if (BitRateList->currentRow() < 0)
        BitRateList->setCurrentRow(0);
    auto* OkBtn = findChild<QPushButton*>(QStringLiteral("OkBtn"));
    OkBtn->setEnabled(BitRateList->count() > 0);
    connect(OkBtn, &QPushButton::clicked, this,
            [this] { CurrentBitRate = BitRateList->currentItem()->data(Qt::UserRole).toInt(); });
    connect(BitRateList, &QListWidget::itemDoubleClicked, OkBtn, [OkBtn] { OkBtn->click(); });
}

bool WmaParamAsker::ShowWmaParam(WmaParams& Params) {
    WmaParamFrm Dialog(Params, WindowInUse());
    RunModal(Dialog);
    if (Dialog.OkClicked)
        Params.CurrentBitRate = Dialog.CurrentBitRate;
    return Dialog.OkClicked;
}

} // namespace quoril
