// Stands for the window of the stretch.
#pragma once

#include "effects/StretchCommands.h"

#include <utility>
#include <vector>

namespace quoril::test {

/// Answers the question for the percentages, one answer after the other, and keeps what it was
/// asked with. Without an answer it is cancelled.
class ScriptedStretch final : public StretchDialog {
  public:
    ScriptedStretch() { SetStretchDialog(this); }
    ~ScriptedStretch() override { SetStretchDialog(nullptr); }
    ScriptedStretch(const ScriptedStretch&) = delete;
    ScriptedStretch& operator=(const ScriptedStretch&) = delete;
    StretchAnswer ShowStretch(std::int32_t Index, const StretchEntry& Shown) override {
        Asked.emplace_back(Index, Shown);
        if (Next == Answers.size())
            return {};
        return {true, Answers[Next++]};
    }

    void Accept(StretchEntry Entry) { Answers.push_back(std::move(Entry)); }

    std::vector<std::pair<std::int32_t, StretchEntry>> Asked;

  private:
    std::vector<StretchEntry> Answers;
    std::size_t Next = 0;
};

} // namespace quoril::test
