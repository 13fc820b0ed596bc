// Progress and messages in tests, as one list: what comes before what.
#pragma once

#include "base/MsgBoxMod.h"
#include "base/ProgressReport.h"

#include <fmt/format.h>

#include <cstdint>
#include <string>
#include <vector>

namespace quoril::test {

/// Progress and messages in the order in which they come: "show", "color 255", "0.500", "hide",
/// "message title|text". The default button is pressed.
class OrderLog final : public ProgressReport, public UserMessages {
  public:
    OrderLog() {
        SetProgressReport(this);
        SetUserMessages(this);
    }
    ~OrderLog() override {
        SetProgressReport(nullptr);
        SetUserMessages(nullptr);
    }
    OrderLog(const OrderLog&) = delete;
    OrderLog& operator=(const OrderLog&) = delete;

    void SetVisible(bool Visible) override { Lines.emplace_back(Visible ? "show" : "hide"); }
    void SetBarColor1(std::uint32_t Color) override {
        Lines.push_back("color " + std::to_string(Color));
    }
    void SetCurrentProgress(float Value) override {
        Current = Value;
        Lines.push_back(fmt::format("{:.3f}", Value));
    }
    [[nodiscard]] float CurrentProgress() const override { return Current; }
    void BlinkLamp() override {}
    MsgBoxAnswer MsgBox(const MsgBoxRequest& Request) override {
        Lines.push_back("message " + Request.Title + "|" + Request.Text);
        return Request.Default;
    }
    InputBoxAnswer InputBox(const std::string&, const std::string&, const std::string&) override {
        return {};
    }

    std::vector<std::string> Lines;

  private:
    float Current = 0;
};

} // namespace quoril::test
