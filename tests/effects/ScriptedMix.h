// Stands for the window of the channel mix.
#pragma once

#include "effects/ChannelMix.h"

#include <vector>

namespace quoril::test {

/// Answers the question for the sources, and keeps what it began with.
class ScriptedMix final : public ChnMixDialog {
  public:
    explicit ScriptedMix(ChnMixAnswer First = {}) : Answer(First) { SetChnMixDialog(this); }
    ~ScriptedMix() override { SetChnMixDialog(nullptr); }
    ScriptedMix(const ScriptedMix&) = delete;
    ScriptedMix& operator=(const ScriptedMix&) = delete;
    ChnMixAnswer ShowChnMix(const ChnMixChoice& Last) override {
        Offered.push_back(Last);
        return Answer;
    }

    ChnMixAnswer Answer;
    std::vector<ChnMixChoice> Offered;
};

} // namespace quoril::test
