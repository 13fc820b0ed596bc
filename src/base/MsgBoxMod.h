// Messages and questions: how code without windows speaks to the user.
#pragma once

#include <string>

namespace quoril {

enum class MsgBoxButtons { OkOnly, OkCancel, YesNo, YesNoCancel };
enum class MsgBoxAnswer { Ok, Cancel, Yes, No };

/// One modal box. An empty title means the title of the program.
struct MsgBoxRequest {
    std::string Text;
    std::string Title;
    MsgBoxButtons Buttons = MsgBoxButtons::OkOnly;
    MsgBoxAnswer Default = MsgBoxAnswer::Ok;
};

/// One line of text asked from the user; `Accepted` is false when the box was cancelled.
struct InputBoxAnswer {
    bool Accepted = false;
    std::string Text;
};

/// Implemented by the windows, and by tests, which record the calls and answer from a script.
class UserMessages {
  public:
    virtual ~UserMessages() = default;
    virtual MsgBoxAnswer MsgBox(const MsgBoxRequest& Request) = 0;
    virtual InputBoxAnswer InputBox(const std::string& Prompt, const std::string& Title,
                                    const std::string& Proposed) = 0;
};

/// Names who shows messages from now on. The object must outlive its use; a null pointer goes
/// back to plain lines on the standard error output, with the default button as the answer.
void SetUserMessages(UserMessages* Receiver) noexcept;

MsgBoxAnswer MsgBox(const std::string& Text, const std::string& Title = {},
                    MsgBoxButtons Buttons = MsgBoxButtons::OkOnly,
                    MsgBoxAnswer Default = MsgBoxAnswer::Ok);
InputBoxAnswer InputBox(const std::string& Prompt, const std::string& Title,
                        const std::string& Proposed);

} // namespace quoril
