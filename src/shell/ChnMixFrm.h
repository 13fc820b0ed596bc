// The dialog that asks what each channel is to be made of.
#pragma once

#include "effects/ChannelMix.h"

#include <QDialog>

class QComboBox;
class QGridLayout;

namespace quoril {

class ChnMixFrm final : public QDialog {
  public:
    /// Comes up with the given choice.
    explicit ChnMixFrm(const ChnMixChoice& Chosen, QWidget* Parent = nullptr);

    bool OkClicked = false;
    [[nodiscard]] ChnMixChoice Choice() const;

  private:
    /// A row of a label and a box with all sources. `Name` begins the names of both.
    QComboBox* AddSource(QGridLayout& Rows, const char* Name, const char* Caption,
                         const char* AccessibleName, std::int32_t Chosen);

    QComboBox* LeftSrcCmb;
    QComboBox* RightSrcCmb;
};

/// Shows `ChnMixFrm` for the command while it lives.
class ChnMixAsker final : public ChnMixDialog {
  public:
    ChnMixAsker() { SetChnMixDialog(this); }
    ~ChnMixAsker() override { SetChnMixDialog(nullptr); }
    ChnMixAsker(const ChnMixAsker&) = delete;
    ChnMixAsker& operator=(const ChnMixAsker&) = delete;
    ChnMixAnswer ShowChnMix(const ChnMixChoice& Last) override;
};

} // namespace quoril
