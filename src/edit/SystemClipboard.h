// The one slot for text that the running copies of the program share: the desktop's clipboard.
#pragma once

#include <string>

namespace quoril {

/// Implemented by the windows, and by tests.
class SystemClipboard {
  public:
    virtual ~SystemClipboard() = default;
    /// The text that is there; empty when there is none.
    [[nodiscard]] virtual std::string Text() const = 0;
    virtual void SetText(const std::string& Text) = 0;
    virtual void Clear() = 0;
};

/// Names what holds the text from now on. The object must outlive its use; with null the process
/// has a slot of its own.
void SetSystemClipboard(SystemClipboard* Slot) noexcept;
[[nodiscard]] SystemClipboard& CurrentSystemClipboard() noexcept;

} // namespace quoril
