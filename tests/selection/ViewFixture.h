// A document of a given length for tests of selection and view, with everything recorded that the
// windows would be told.
#pragma once

#include "base/ViewState.h"
#include "selection/SelectionMod.h"
#include "selection/ViewListener.h"
#include "storage/FileMemoClass.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace quoril::test {

/// Writes down in order what the main window is told.
class RecordingView final : public ViewListener {
  public:
    RecordingView() { SetViewListener(this); }
    ~RecordingView() override { SetViewListener(nullptr); }
    RecordingView(const RecordingView&) = delete;
    RecordingView& operator=(const RecordingView&) = delete;

    void Refresh_Wave_View() override { Calls.emplace_back("Refresh_Wave_View"); }
    void RefreshMousePointer() override { Calls.emplace_back("RefreshMousePointer"); }
    void RefreshDisplayLabels(bool Dragging) override {
        Calls.emplace_back(Dragging ? "RefreshDisplayLabels(drag)" : "RefreshDisplayLabels");
    }
    void RefreshChannelSelector() override { Calls.emplace_back("RefreshChannelSelector"); }
    void ClearMouseFlags() override { Calls.emplace_back("ClearMouseFlags"); }

    std::vector<std::string> Calls;
};

/// Chooses by script; without one it cancels.
class ScriptedSelConf final : public SelConfDialog {
  public:
    ScriptedSelConf() { SetSelConfDialog(this); }
    ~ScriptedSelConf() override { SetSelConfDialog(nullptr); }
    ScriptedSelConf(const ScriptedSelConf&) = delete;
    ScriptedSelConf& operator=(const ScriptedSelConf&) = delete;

    std::optional<std::int32_t> ShowSelConf(const SelConfRequest& Request) override {
        Requests.push_back(Request);
        if (Choices.empty())
            return std::nullopt;
        const std::int32_t Choice = Choices.front();
        Choices.pop_front();
        return Choice;
    }

    std::deque<std::int32_t> Choices;
    std::vector<SelConfRequest> Requests;
};

/// The view numbers as at the start of the program, and a stereo document of 1000 samples at 1000
/// Hz. Only its figures matter here: the view touches no sample.
class ViewTest : public ::testing::Test {
  protected:
    static constexpr std::int32_t Most = 2147483647;

    ViewTest() {
        SelBoth = true;
        SelSingle = 1;
        MouseMode = ViewMouseMode = 0;
        ShowHhmmss = 1;
        WaveStore = std::make_unique<FileMemoClass>();
        Document(1000);
    }
    ~ViewTest() override { WaveStore.reset(); }

    static void Document(std::int32_t Total, std::int32_t Channel = 2, std::int32_t Freq = 1000) {
        WaveStore->WavWaveINos = Total;
        WaveStore->WavFmtChannel = Channel;
        WaveStore->WavFmtFreq = Freq;
    }
    static void Select(std::int32_t From, std::int32_t To) {
        SelStart = From;
        SelEnd = To;
    }
    static void View(std::int32_t From, std::int32_t Samples, bool All = false) {
        ViewFrom = From;
        ViewTotal = Samples;
        ViewAll = All;
    }
    static void ExpectSelection(std::int32_t From, std::int32_t To) {
        EXPECT_EQ(SelStart, From);
        EXPECT_EQ(SelEnd, To);
    }
    static void ExpectView(std::int32_t From, std::int32_t Samples) {
        EXPECT_EQ(ViewFrom, From);
        EXPECT_EQ(ViewTotal, Samples);
    }
    void ExpectCalls(const std::vector<std::string>& Expected) {
        EXPECT_EQ(Window.Calls, Expected);
        Window.Calls.clear();
    }

    const TestSession Session;
    ScriptedMessages Messages;
    RecordingView Window;
};

} // namespace quoril::test
