// Stands for the window of the shortening of silence.
#pragma once

#include "effects/DeleteSilenceCommand.h"

#include <vector>

namespace quoril::test {

/// Gives one answer to every question, and keeps what it was shown with.
class ScriptedSilence final : public DelSilenDialog {
  public:
    explicit ScriptedSilence(DelSilenAnswer First = {}) : Answer(First) { SetDelSilenDialog(this); }
    ~ScriptedSilence() override { SetDelSilenDialog(nullptr); }
    ScriptedSilence(const ScriptedSilence&) = delete;
    ScriptedSilence& operator=(const ScriptedSilence&) = delete;
    DelSilenAnswer ShowDelSilen(const DelSilenChoice& First) override {
        Shown.push_back(First);
        return Answer;
    }

    DelSilenAnswer Answer;
    std::vector<DelSilenChoice> Shown;
};

} // namespace quoril::test
