// Stands for the window of the echo.
#pragma once

#include "effects/EchoCommands.h"

#include <optional>
#include <vector>

namespace quoril::test {

/// Answers the question for the echo, and keeps what it began with.
class ScriptedEcho final : public EchoDialog {
  public:
    ScriptedEcho() { SetEchoDialog(this); }
    ~ScriptedEcho() override { SetEchoDialog(nullptr); }
    ScriptedEcho(const ScriptedEcho&) = delete;
    ScriptedEcho& operator=(const ScriptedEcho&) = delete;
    bool ShowEcho(EchoParamsRec& Params) override {
        Found.push_back(Params);
        if (Left)
            Params = *Left;
        return Ok;
    }

    bool Ok = true;
    std::optional<EchoParamsRec> Left; ///< what is left in the fields; nothing: what was there
    std::vector<EchoParamsRec> Found;
};

} // namespace quoril::test
