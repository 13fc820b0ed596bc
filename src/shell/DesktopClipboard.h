// The desktop's clipboard as the slot for text that the running copies of the program share.
#pragma once

#include "edit/SystemClipboard.h"

namespace quoril {

/// Names itself as the slot while it lives. Used only while the application object lives.
class DesktopClipboard final : public SystemClipboard {
  public:
    DesktopClipboard() { SetSystemClipboard(this); }
    ~DesktopClipboard() override { SetSystemClipboard(nullptr); }
    DesktopClipboard(const DesktopClipboard&) = delete;
    DesktopClipboard& operator=(const DesktopClipboard&) = delete;

    [[nodiscard]] std::string Text() const override;
    void SetText(const std::string& Text) override;
    void Clear() override;
};

} // namespace quoril
