// Stands for the window that asks for a selection.
#pragma once

#include "selection/SelectionMod.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quoril::test {

/// Chooses the option of that index, -1 cancels; and keeps what it was asked.
class ScriptedSelConf final : public SelConfDialog {
  public:
    explicit ScriptedSelConf(std::int32_t First = -1) : Index(First) { SetSelConfDialog(this); }
    ~ScriptedSelConf() override { SetSelConfDialog(nullptr); }
    ScriptedSelConf(const ScriptedSelConf&) = delete;
    ScriptedSelConf& operator=(const ScriptedSelConf&) = delete;
    std::optional<std::int32_t> ShowSelConf(const SelConfRequest& Request) override {
        Needs.push_back(Request.Need);
        Captions.push_back(Request.Caption);
        return Index < 0 ? std::nullopt : std::optional(Index);
    }

    std::int32_t Index;
    std::vector<std::int32_t> Needs;
    std::vector<std::string> Captions;
};

} // namespace quoril::test
