// Messages in tests: every call is recorded in order, and answers come from a script.
#pragma once

#include "base/MsgBoxMod.h"

#include <deque>
#include <string>
#include <vector>

namespace quoril::test {

class ScriptedMessages final : public UserMessages {
  public:
    ScriptedMessages() { SetUserMessages(this); }
    ~ScriptedMessages() override { SetUserMessages(nullptr); }
    ScriptedMessages(const ScriptedMessages&) = delete;
    ScriptedMessages& operator=(const ScriptedMessages&) = delete;

    MsgBoxAnswer MsgBox(const MsgBoxRequest& Request) override;
    InputBoxAnswer InputBox(const std::string& Prompt, const std::string& Title,
                            const std::string& Proposed) override;

    /// The answer to the next unanswered question; without one the default button is pressed.
    void Answer(MsgBoxAnswer What) { Answers.push_back(What); }
    void AnswerInput(const std::string& Text) { Inputs.push_back({true, Text}); }

    /// The texts shown so far, each as "title|text", or the plain text without a title.
    [[nodiscard]] std::vector<std::string> Texts() const;
    /// The same, and forgets them.
    [[nodiscard]] std::vector<std::string> TakeTexts();

    /// What the last input box began with; empty before the first one.
    [[nodiscard]] const std::string& LastProposed() const { return Proposal; }

    std::vector<MsgBoxRequest> Requests;

  private:
    std::string Proposal;
    std::deque<MsgBoxAnswer> Answers;
    std::deque<InputBoxAnswer> Inputs;
};

} // namespace quoril::test
