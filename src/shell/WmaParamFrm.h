// The dialog that asks how a WMA file is to be encoded.
#pragma once

#include "audiofile/EncoderParams.h"

#include <QDialog>

class QLabel;
class QListWidget;

namespace quoril {

class WmaParamFrm final : public QDialog {
  public:
    explicit WmaParamFrm(const WmaParams& Params, QWidget* Parent = nullptr);

    std::int32_t CurrentBitRate; ///< bits per second
    const std::int32_t CurrentChannel;
    const std::int32_t CurrentFreq; ///< Hz
    bool OkClicked = false;

  private:
    void InitilizeForm();
    QLabel* AddLabel(const char* Name);

    QLabel* CurChnLbl;
    QLabel* CurFreqLbl;
    QListWidget* BitRateList;
};

/// Shows `WmaParamFrm` for the writer while it lives.
class WmaParamAsker final : public WmaParamDialog {
  public:
    WmaParamAsker() { SetWmaParamDialog(this); }
    ~WmaParamAsker() override { SetWmaParamDialog(nullptr); }
    WmaParamAsker(const WmaParamAsker&) = delete;
    WmaParamAsker& operator=(const WmaParamAsker&) = delete;
    bool ShowWmaParam(WmaParams& Params) override;
};

} // namespace quoril
