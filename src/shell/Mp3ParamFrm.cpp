#include "shell/Mp3ParamFrm.h"

#include "base/ModalWindow.h"
#include "base/OkCancelRow.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QSlider>
#include <QVBoxLayout>

namespace quoril {

Mp3ParamFrm::Mp3ParamFrm(const Mp3Params& Params, QWidget* Parent)
    : QDialog(Parent), CurrentBitRate(Params.CurrentBitRate),
      CurrentStereoMode(Params.CurrentStereoMode), CurrentFreq(Params.CurrentFreq) {
    setObjectName(QStringLiteral("Mp3ParamFrm"));
    setWindowTitle(QStringLiteral("Select Mp3 Compressing Parameters"));
    auto* Column = new QVBoxLayout(this);
    Column->setContentsMargins(14, 12, 14, 12);
    Column->setSpacing(10);
    Column->setSizeConstraint(QLayout::SetFixedSize);
    AddBitRate(*Column);
    AddStereoMode(*Column);
    AddOkCancelRow(*this, *Column, OkClicked);
    BitRateSlider->setFocus();
}

void Mp3ParamFrm::AddBitRate(QVBoxLayout& Column) {
    auto* Frame = new QGroupBox(QStringLiteral("&Encoding Bitrate"), this);
    auto* Grid = new QGridLayout(Frame);
    BitRateSlider = new QSlider(Qt::Horizontal, Frame);
    BitRateSlider->setObjectName(QStringLiteral("BitRateSlider"));
    BitRateSlider->setAccessibleName(QStringLiteral("Encoding bitrate, kilobits per second"));
    BitRateSlider->setRange(0, static_cast<int>(Mp3BitRates(CurrentFreq).size()) - 1);
    BitRateSlider->setPageStep(2);
    BitRateSlider->setTickPosition(QSlider::TicksBelow);
    BitRateSlider->setTickInterval(1);
    BitRateLbl = new QLabel(Frame);
    BitRateLbl->setObjectName(QStringLiteral("BitRateLbl"));
    BitRateLbl->setAccessibleName(QStringLiteral("Chosen bitrate"));
    BitRateLbl->setAlignment(Qt::AlignCenter);
    QFont Bold = BitRateLbl->font();
    Bold.setBold(true);
    BitRateLbl->setFont(Bold);
    auto* Poor = new QLabel(QStringLiteral("Poor Quality\nSmaller Size"), Frame);
    auto* Best = new QLabel(QStringLiteral("Best Quality\nLarger Size"), Frame);
    Best->setAlignment(Qt::AlignRight);
    Grid->addWidget(BitRateLbl, 0, 0, 1, 2);
    Grid->addWidget(BitRateSlider, 1, 0, 1, 2);
    Grid->addWidget(Poor, 2, 0);
    Grid->addWidget(Best, 2, 1);
    Column.addWidget(Frame);
    BitRateSlider->setValue(static_cast<int>(Mp3BitRatePlace(CurrentFreq, CurrentBitRate)));
    BitRateMoved(BitRateSlider->value());
    connect(BitRateSlider, &QSlider::valueChanged, this,
            [this](int Place) { BitRateMoved(Place); });
}

void Mp3ParamFrm::BitRateMoved(int Place) {
    CurrentBitRate = Mp3BitRates(CurrentFreq)[static_cast<std::size_t>(Place)];
    BitRateLbl->setText(QString::number(CurrentBitRate));
}

void Mp3ParamFrm::AddStereoMode(QVBoxLayout& Column) {
    StereoModeCmb = new QComboBox(this);
    StereoModeCmb->setObjectName(QStringLiteral("StereoModeCmb"));
    StereoModeCmb->setAccessibleName(QStringLiteral("Encoding Stereo Mode"));
    for (const char* Mode : Mp3StereoModes)
        StereoModeCmb->addItem(QLatin1String(Mode));
    if (CurrentStereoMode < 0 || CurrentStereoMode >= StereoModeCmb->count())
        CurrentStereoMode = 0;
    StereoModeCmb->setCurrentIndex(CurrentStereoMode);
    connect(StereoModeCmb, &QComboBox::currentIndexChanged, this,
            [this](int Index) { CurrentStereoMode = Index; });
    auto* Desc = new QLabel(QStringLiteral("Encoding &Stereo Mode"), this);
    Desc->setBuddy(StereoModeCmb);
    auto* Row = new QHBoxLayout;
    Row->setSpacing(12);
    Row->addWidget(Desc);
    Row->addWidget(StereoModeCmb, 1);
    Column.addLayout(Row);
}

bool Mp3ParamAsker::ShowMp3Param(Mp3Params& Params) {
    Mp3ParamFrm Dialog(Params, WindowInUse());
    RunModal(Dialog);
    if (Dialog.OkClicked)
        Params = {Dialog.CurrentBitRate, Dialog.CurrentStereoMode, Dialog.CurrentFreq};
    return Dialog.OkClicked;
}

} // namespace quoril
