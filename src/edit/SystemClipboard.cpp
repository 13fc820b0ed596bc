#include "edit/SystemClipboard.h"

namespace quoril {

namespace {

class OwnSlot final : public SystemClipboard {
  public:
    [[nodiscard]] std::string Text() const override { return Held; }
    void SetText(const std::string& Text) override { Held = Text; }
    void Clear() override { Held.clear(); }

  private:
    std::string Held;
};

SystemClipboard* Current = nullptr;

} // namespace

void SetSystemClipboard(SystemClipboard* Slot) noexcept {
    Current = Slot;
}

SystemClipboard& CurrentSystemClipboard() noexcept {
    static OwnSlot Own;
    return Current != nullptr ? *Current : Own;
}

} // namespace quoril
