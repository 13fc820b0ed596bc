#include "support/ScriptedMessages.h"

namespace quoril::test {

MsgBoxAnswer ScriptedMessages::MsgBox(const MsgBoxRequest& Request) {
    Requests.push_back(Request);
    if (Request.Buttons == MsgBoxButtons::OkOnly || Answers.empty())
        return Request.Default;
    const MsgBoxAnswer What = Answers.front();
    Answers.pop_front();
    return What;
}

InputBoxAnswer ScriptedMessages::InputBox(const std::string& Prompt, const std::string& Title,
                                          const std::string& Proposed) {
    Proposal = Proposed;
    Requests.push_back({Prompt, Title, MsgBoxButtons::OkCancel, MsgBoxAnswer::Ok});
    if (Inputs.empty())
        return {};
    InputBoxAnswer What = Inputs.front();
    Inputs.pop_front();
    return What;
}

std::vector<std::string> ScriptedMessages::Texts() const {
    std::vector<std::string> Result;
    Result.reserve(Requests.size());
    for (const MsgBoxRequest& Request : Requests)
        Result.push_back(Request.Title.empty() ? Request.Text : Request.Title + "|" + Request.Text);
    return Result;
}

std::vector<std::string> ScriptedMessages::TakeTexts() {
    std::vector<std::string> Result = Texts();
    Requests.clear();
    return Result;
}

} // namespace quoril::test
