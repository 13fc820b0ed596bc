// The progress window: how far a long command has come.
#pragma once

#include "base/ProgressReport.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QWidget>

namespace quoril {

/// The window behind the global `ProgressFrm`. One exists in the process; it names itself as the
/// receiver of reports while it lives.
///
/// Long commands run on the user-interface thread, so a report is also the moment at which the
/// program repaints and serves its timers. Input to any other window is discarded in that time,
/// except to a modal dialog that the running command has opened. The window comes up only when a
/// command has taken 150 ms, so that short ones do not flicker; until then input waits and is
/// not lost.
class ProgressFrmClass final : public QWidget, public ProgressReport {
  public:
    /// `MainWindow` may be null; it is kept under this window and tells whether the program is in
    /// front.
    explicit ProgressFrmClass(QWidget* MainWindow = nullptr);
    ~ProgressFrmClass() override;
    ProgressFrmClass(const ProgressFrmClass&) = delete;
    ProgressFrmClass& operator=(const ProgressFrmClass&) = delete;

    void SetMainWindow(QWidget* Window) { MainWindow = Window; }

    void SetVisible(bool Visible) override;
    void SetBarColor1(std::uint32_t Color) override;
    /// Cheap: paints and lets events through at most 30 times a second.
    void SetCurrentProgress(float Value) override;
    [[nodiscard]] float CurrentProgress() const override { return Value; }
    void BlinkLamp() override;

    /// Also while it is not on the screen yet.
    [[nodiscard]] bool IsOn() const override { return On; }

    /// The first report after the last Resume brings the window back.
    void Suspend() override;
    void Resume() override;

    static constexpr int MilliSecondsToShow = 150;
    static constexpr int MilliSecondsBetweenPaints = 33;

  protected:
    bool eventFilter(QObject* Receiver, QEvent* Event) override;
    void closeEvent(QCloseEvent* Event) override;

  private:
    class BarPicture;

    [[nodiscard]] bool DueForPaint() const;
    void Report();
    void ShowOverMainWindow();
    void KeepInFront();
    [[nodiscard]] bool MayHaveInput(QObject* Receiver) const;

    QPointer<QWidget> MainWindow;
    QPointer<QWidget> ModalAtStart; ///< the dialog that the command runs in, if any
    BarPicture* ProgBarPic;
    QWidget* BlinkImg;
    QElapsedTimer SinceOn;
    QElapsedTimer SincePaint;
    float Value = 0;
    int Suspended = 0;
    bool On = false;
    bool LampOn = false;
    bool WasInFront = false;
    bool InEvents = false;
};

} // namespace quoril
