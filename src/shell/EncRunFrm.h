// The window that stands while an encoder works, by which it can be ended.
#pragma once

#include "audiofile/EncoderRun.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QTimer>

class QLabel;

namespace quoril {

class EncRunFrm final : public QDialog {
  public:
    /// Closes by itself, as accepted, when `HasEnded` gives true; as rejected when the user wants
    /// the end.
    EncRunFrm(const std::string& Encoder, std::function<bool()> HasEnded,
              QWidget* Parent = nullptr);

  private:
    void Look();

    std::function<bool()> Ended;
    QLabel* TimeLbl;
    QTimer LookTimer;
    QElapsedTimer SinceStart;
};

/// Shows `EncRunFrm` while it lives.
class EncoderWaiter final : public EncoderWaitDialog {
  public:
    EncoderWaiter() { SetEncoderWaitDialog(this); }
    ~EncoderWaiter() override { SetEncoderWaitDialog(nullptr); }
    EncoderWaiter(const EncoderWaiter&) = delete;
    EncoderWaiter& operator=(const EncoderWaiter&) = delete;
    bool WaitForEncoder(const std::string& Encoder, const std::function<bool()>& HasEnded) override;
};

} // namespace quoril
