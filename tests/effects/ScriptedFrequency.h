// Stands for the window that asks for frequencies.
#pragma once

#include "effects/GeneratorCommands.h"

#include <deque>
#include <vector>

namespace quoril::test {

/// Answers from a script, then cancels; keeps what it was shown with.
class ScriptedFrequency final : public EntFrqDialog {
  public:
    ScriptedFrequency() { SetEntFrqDialog(this); }
    ~ScriptedFrequency() override { SetEntFrqDialog(nullptr); }
    ScriptedFrequency(const ScriptedFrequency&) = delete;
    ScriptedFrequency& operator=(const ScriptedFrequency&) = delete;
    EntFrqAnswer ShowEntFrq(const EntFrqEntry& Entry) override {
        Shown.push_back(Entry);
        if (Entries.empty())
            return {};
        const EntFrqEntry Next = Entries.front();
        Entries.pop_front();
        return {true, Next};
    }

    std::deque<EntFrqEntry> Entries;
    std::vector<EntFrqEntry> Shown;
};

} // namespace quoril::test
