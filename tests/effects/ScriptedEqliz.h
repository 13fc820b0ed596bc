// Stands for the window of the equalizer.
#pragma once

#include "effects/BandSet.h"
#include "effects/EqualizerCommands.h"

#include <functional>
#include <utility>
#include <vector>

namespace quoril::test {

/// Answers the question for the bands, and keeps the modes that it was asked in.
class ScriptedEqliz final : public EqlizDialog {
  public:
    ScriptedEqliz() { SetEqlizDialog(this); }
    ~ScriptedEqliz() override { SetEqlizDialog(nullptr); }
    ScriptedEqliz(const ScriptedEqliz&) = delete;
    ScriptedEqliz& operator=(const ScriptedEqliz&) = delete;
    void ShowEqliz(std::int32_t WorkingMode) override {
        Modes.push_back(WorkingMode);
        Found = EqBandSet;
        EqBandSet = Answer;
        if (WhenShown)
            WhenShown();
    }

    /// Bands from 1 on.
    void Accept(std::vector<std::int32_t> Bands) {
        Answer.NoOfBands = static_cast<std::int32_t>(Bands.size());
        Bands.insert(Bands.begin(), 0);
        Answer.Bands = std::move(Bands);
    }

    BandSet Answer; ///< at first that of a cancelled question
    BandSet Found;  ///< what stood there when it was asked
    std::vector<std::int32_t> Modes;
    std::function<void()> WhenShown;
};

} // namespace quoril::test
