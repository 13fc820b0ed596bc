// The dialog that asks for the format of a file that does not tell it.
#pragma once

#include "audiofile/RawFormat.h"

#include <QDialog>

class QButtonGroup;
class QComboBox;
class QVBoxLayout;

namespace quoril {

class RawLoadFrm final : public QDialog {
  public:
    /// Comes up with the given choice.
    explicit RawLoadFrm(const RawChoice& Chosen, QWidget* Parent = nullptr);

    bool OkClicked = false;
    [[nodiscard]] RawChoice Choice() const;

  private:
    void AddOptions(QVBoxLayout& Column);
    void AddOffset(QVBoxLayout& Column);
    void OtherClicked();
    void ShowOtherFreq();

    std::int32_t OtherFreq;
    QButtonGroup* FmtChnOpn = nullptr;
    QButtonGroup* FmtBitsOpn = nullptr;
    QButtonGroup* FmtFreqOpn = nullptr;
    QComboBox* DataOffsetCmb = nullptr;
};

/// Shows `RawLoadFrm` for the reader while it lives.
class RawLoadAsker final : public RawLoadDialog {
  public:
    RawLoadAsker() { SetRawLoadDialog(this); }
    ~RawLoadAsker() override { SetRawLoadDialog(nullptr); }
    RawLoadAsker(const RawLoadAsker&) = delete;
    RawLoadAsker& operator=(const RawLoadAsker&) = delete;
    bool ShowRawLoad(RawChoice& Choice) override;
};

} // namespace quoril
