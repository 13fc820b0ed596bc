// The dialog that asks how an MP3 file is to be encoded.
#pragma once

#include "audiofile/EncoderParams.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QSlider;
class QVBoxLayout;

namespace quoril {

class Mp3ParamFrm final : public QDialog {
  public:
    explicit Mp3ParamFrm(const Mp3Params& Params, QWidget* Parent = nullptr);

    std::int32_t CurrentBitRate;    ///< kilobits per second
    std::int32_t CurrentStereoMode; ///< index in `StereoModeCmb`
    const std::int32_t CurrentFreq; ///< Hz
    bool OkClicked = false;

  private:
    void AddBitRate(QVBoxLayout& Column);
    void AddStereoMode(QVBoxLayout& Column);
    void BitRateMoved(int Place);

    QSlider* BitRateSlider = nullptr;
    QLabel* BitRateLbl = nullptr;
    QComboBox* StereoModeCmb = nullptr;
};

/// Shows `Mp3ParamFrm` for the writers while it lives.
class Mp3ParamAsker final : public Mp3ParamDialog {
  public:
    Mp3ParamAsker() { SetMp3ParamDialog(this); }
    ~Mp3ParamAsker() override { SetMp3ParamDialog(nullptr); }
    Mp3ParamAsker(const Mp3ParamAsker&) = delete;
    Mp3ParamAsker& operator=(const Mp3ParamAsker&) = delete;
    bool ShowMp3Param(Mp3Params& Params) override;
};

} // namespace quoril
