// How far a long command has come: the global `ProgressFrm`, seen from code without windows.
#pragma once

#include <cstdint>

namespace quoril {

/// Bar colours, 0x00BBGGRR.
inline constexpr std::uint32_t BarColorGather = 25600;  ///< dark green: gathering samples
inline constexpr std::uint32_t BarColorUndo = 0xFF0000; ///< blue: undo
inline constexpr std::uint32_t BarColorWriteFile = 255; ///< red: writing a file

/// Implemented by the progress window, and by tests.
class ProgressReport {
  public:
    virtual ~ProgressReport() = default;
    virtual void SetVisible(bool Visible) = 0;
    virtual void SetBarColor1(std::uint32_t Color) = 0;
    /// Sets and shows how much is done, from 0 to 1, and lets the system process its events.
    /// The value is not limited.
    virtual void SetCurrentProgress(float Value) = 0;
    [[nodiscard]] virtual float CurrentProgress() const = 0;
    /// Toggles the lamp, to show life in stretches without a measure.
    virtual void BlinkLamp() = 0;
    /// Whether a command has the window on, so that no other command may begin.
    [[nodiscard]] virtual bool IsOn() const { return false; }
    /// Takes the window off the screen while a dialog is open over it, and lets it come back. Calls
    /// may be nested.
    virtual void Suspend() {}
    virtual void Resume() {}
};

/// The progress window of the process. Never null: without a window nothing is shown.
extern ProgressReport* ProgressFrm;

/// Names what `ProgressFrm` is from now on; a null pointer means that nothing is shown.
void SetProgressReport(ProgressReport* Receiver) noexcept;

/// The progress window for the length of a command: shown at 0 in the given colour, hidden at the
/// end of the scope, also when a failure passes through. Scopes may stand inside one another: the
/// window is hidden by the outermost one.
class ProgressScope {
  public:
    explicit ProgressScope(std::uint32_t BarColor);
    ~ProgressScope();
    ProgressScope(const ProgressScope&) = delete;
    ProgressScope& operator=(const ProgressScope&) = delete;
    /// Hides the window before the scope ends, for a command that goes on to a dialog.
    void Hide();

  private:
    bool Shown = true;
};

/// How far a walk over samples has come: a bar made of equal passes, moved every `Step` samples of
/// a pass.
class PassProgress {
  public:
    PassProgress(double SpanOfPass, std::int32_t ReportStep) : Span(SpanOfPass), Step(ReportStep) {}
    /// The samples of this pass up to `Position` of `Count` are done.
    void Reached(std::int32_t Position, std::int32_t Count);
    /// The pass is over; the next one goes on from its end, where the bar now stands.
    void PassEnd();

  private:
    double Span;
    double Base = 0;
    std::int32_t Step;
    std::int32_t Reports = 0; ///< steps told in this pass
};

/// The progress window off the screen for the length of a scope.
class ProgressSuspension {
  public:
    ProgressSuspension() : Suspended(ProgressFrm) { Suspended->Suspend(); }
    ~ProgressSuspension() { Suspended->Resume(); }
    ProgressSuspension(const ProgressSuspension&) = delete;
    ProgressSuspension& operator=(const ProgressSuspension&) = delete;

  private:
    ProgressReport* Suspended;
};

} // namespace quoril
