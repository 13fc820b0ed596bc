#include "base/ProgressReport.h"

#include "base/Arithmetic.h"

namespace quoril {

namespace {

class NoProgress final : public ProgressReport {
  public:
    void SetVisible(bool) override {}
    void SetBarColor1(std::uint32_t) override {}
    void SetCurrentProgress(float Value) override { Current = Value; }
    [[nodiscard]] float CurrentProgress() const override { return Current; }
    void BlinkLamp() override {}

  private:
    float Current = 0;
};

NoProgress Fallback;
int OpenScopes = 0;

} // namespace

ProgressReport* ProgressFrm = &Fallback;

void SetProgressReport(ProgressReport* Receiver) noexcept {
    ProgressFrm = Receiver != nullptr ? Receiver : &Fallback;
}

ProgressScope::ProgressScope(std::uint32_t BarColor) {
    ++OpenScopes;
    ProgressFrm->SetVisible(true);
    ProgressFrm->SetBarColor1(BarColor);
    ProgressFrm->SetCurrentProgress(0);
}

ProgressScope::~ProgressScope() {
    Hide();
}

void ProgressScope::Hide() {
    if (!Shown)
        return;
    Shown = false;
    if (--OpenScopes == 0)
        ProgressFrm->SetVisible(false);
}

void PassProgress::Reached(std::int32_t Position, std::int32_t Count) {
    const std::int32_t Full = Position / Step;
    if (Full == Reports)
        return;
    Reports = Full;
    const double Part = static_cast<double>(Full) * Step / Count;
    ProgressFrm->SetCurrentProgress(Single(Base + Span * Part));
}

void PassProgress::PassEnd() {
    Base += Span;
    Reports = 0;
    ProgressFrm->SetCurrentProgress(Single(Base));
}

} // namespace quoril
