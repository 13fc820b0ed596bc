// Messages and questions of the program as modal boxes.
#pragma once

#include "base/MsgBoxMod.h"

namespace quoril {

/// Shows what the routines of base/MsgBoxMod.h are given; names itself as their receiver while it
/// lives. A box stands over the window in use. While it is open the wait cursor and the progress
/// window are out of the way. Esc presses Cancel where there is one, else No, else OK.
class MessageBoxesClass final : public UserMessages {
  public:
    MessageBoxesClass();
    ~MessageBoxesClass() override;
    MessageBoxesClass(const MessageBoxesClass&) = delete;
    MessageBoxesClass& operator=(const MessageBoxesClass&) = delete;

    MsgBoxAnswer MsgBox(const MsgBoxRequest& Request) override;
    InputBoxAnswer InputBox(const std::string& Prompt, const std::string& Title,
                            const std::string& Proposed) override;
};

} // namespace quoril
