// Stands for the window that asks what becomes of two channels.
#pragma once

#include "effects/FormatCommands.h"

namespace quoril::test {

/// Answers the question, and counts how often it was asked.
class ScriptedMono final : public CompMonoDialog {
  public:
    ScriptedMono() { SetCompMonoDialog(this); }
    ~ScriptedMono() override { SetCompMonoDialog(nullptr); }
    ScriptedMono(const ScriptedMono&) = delete;
    ScriptedMono& operator=(const ScriptedMono&) = delete;
    CompMonoAnswer ShowCompMono() override {
        ++Shown;
        return Answer;
    }

    CompMonoAnswer Answer{true, MergeBoth};
    int Shown = 0;
};

} // namespace quoril::test
