#include "base/MsgBoxMod.h"

#include <cstdio>

namespace quoril {

namespace {

class StandardErrorMessages final : public UserMessages {
  public:
    MsgBoxAnswer MsgBox(const MsgBoxRequest& Request) override {
        std::fprintf(stderr, "%s%s%s\n", Request.Title.c_str(), Request.Title.empty() ? "" : ": ",
                     Request.Text.c_str());
        return Request.Default;
    }
    InputBoxAnswer InputBox(const std::string& Prompt, const std::string&,
                            const std::string&) override {
        std::fprintf(stderr, "%s\n", Prompt.c_str());
        return {};
    }
};

StandardErrorMessages Fallback;
UserMessages* Current = &Fallback;

} // namespace

void SetUserMessages(UserMessages* Receiver) noexcept {
    Current = Receiver != nullptr ? Receiver : &Fallback;
}

MsgBoxAnswer MsgBox(const std::string& Text, const std::string& Title, MsgBoxButtons Buttons,
                    MsgBoxAnswer Default) {
    return Current->MsgBox({Text, Title, Buttons, Default});
}

InputBoxAnswer InputBox(const std::string& Prompt, const std::string& Title,
                        const std::string& Proposed) {
    return Current->InputBox(Prompt, Title, Proposed);
}

} // namespace quoril
