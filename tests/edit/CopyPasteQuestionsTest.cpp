// What the commands of copy, cut, delete and paste ask before they begin, and say in the end.
#include "audiofile/WavMaker.h"
#include "base/Failure.h"
#include "edit/ClipMarker.h"
#include "edit/CopyPasteFixture.h"
#include "selection/ScriptedSelConf.h"
#include "selection/SelectionMod.h"
#include "selection/ViewListener.h"

#include <functional>

namespace quoril::test {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct Tips final : UserGuideWindow {
    Tips() {
        ShowNewUserGuide = true;
        SetUserGuideWindow(this);
    }
    ~Tips() override { SetUserGuideWindow(nullptr); }
    Tips(const Tips&) = delete;
    Tips& operator=(const Tips&) = delete;
    bool ShowGuideTip(const GuideTip& Tip) override {
        Shown.push_back(Tip.Message);
        return false;
    }
    void ShowStatusGuide(const std::string&) override {}
    std::vector<std::string> Shown;
};

class CopyPasteQuestions : public CopyPasteFixture {};

TEST_F(CopyPasteQuestions, EachCommandNamesItselfAndDoesNothingWhenCancelled) {
    Clip({10, 20});
    const std::string Line = Slot.Held;
    Document({1, 2, 3}, {4, 5, 6});
    WaveChanged = false;
    Windows.Copied.clear();
    ScriptedSelConf Dialog;
    const std::vector<std::function<void()>> Runs = {[this] { Commands.Copy(); },
                                                     [this] { Commands.Cut(); },
                                                     [this] { Commands.Delete(); },
                                                     [this] { Commands.Paste(PasteReplace); },
                                                     [this] { Commands.Paste(PasteInsert); },
                                                     [this] { Commands.Paste(PasteMultiInsert); },
                                                     [this] { Commands.Paste(PasteMix); },
                                                     [this] { Commands.Paste(PasteModulate); },
                                                     [this] { Commands.Paste(PasteCrossFade); }};
    for (const auto& Run : Runs)
        Run();
    EXPECT_THAT(Dialog.Needs, ElementsAre(2, 2, 2, 1, 1, 1, 1, 1, 1));
    EXPECT_THAT(Dialog.Captions,
                ElementsAre(" Confirm Selection [Copy]", " Confirm Selection [Copy]",
                            " Confirm Selection [Delete]", " Confirm Selection [Paste Replace]",
                            " Confirm Selection [Paste Insert]",
                            " Confirm Selection [Multi-Paste Insert]",
                            " Confirm Selection [Paste Mix]", " Confirm Selection [Paste Modulate]",
                            " Confirm Selection [Paste Cross Fade]"));
    EXPECT_THAT(Left(), ElementsAre(1, 2, 3));
    EXPECT_THAT(Right(), ElementsAre(4, 5, 6));
    EXPECT_FALSE(WaveChanged);
    EXPECT_EQ(WaveStore->UndoCount(), 0);
    EXPECT_EQ(Slot.Held, Line);
    EXPECT_THAT(Messages.Texts(), IsEmpty());
    EXPECT_THAT(Windows.Copied, IsEmpty());
}

/// The fourth offer to a point is the point as a range.
TEST_F(CopyPasteQuestions, OneSampleCanBeCopiedCutAndDeleted) {
    ScriptedSelConf Dialog;
    Dialog.Index = 3;
    Document({1, 2, 3});
    Select(3, 3);
    Commands.Copy();
    EXPECT_EQ(ClipMarkerRead(Slot.Held)->Length, 1);
    EXPECT_EQ(Windows.Copied.back().First, "Samples: 1 (From 3 to 3)");
    Commands.Cut();
    EXPECT_EQ(Windows.Copied.back().First, "Samples: 1 (3 to 3)");
    EXPECT_THAT(Left(), ElementsAre(1, 2));
    Select(1, 1);
    Commands.Delete();
    EXPECT_THAT(Left(), ElementsAre(2));
}

/// A paste at a range, too, goes to one point of it.
TEST_F(CopyPasteQuestions, APasteAtARangeTakesTheEndThatWasChosen) {
    Clip({10, 20});
    ScriptedSelConf Dialog;
    for (const std::int32_t End : {0, 1}) {
        Dialog.Index = End;
        Document({1, 2, 3, 4});
        Select(2, 4);
        Commands.Paste(PasteInsert);
        if (End == 0)
            EXPECT_THAT(Left(), ElementsAre(1, 10, 20, 2, 3, 4));
        else
            EXPECT_THAT(Left(), ElementsAre(1, 2, 3, 10, 20, 4));
        EXPECT_EQ(SelStart, End == 0 ? 2 : 4);
        EXPECT_EQ(SelEnd, SelStart);
    }
}

struct RefreshCount final : ViewListener {
    RefreshCount() { SetViewListener(this); }
    ~RefreshCount() override { SetViewListener(nullptr); }
    RefreshCount(const RefreshCount&) = delete;
    RefreshCount& operator=(const RefreshCount&) = delete;
    void Refresh_Wave_View() override { ++Count; }
    void RefreshMousePointer() override {}
    void RefreshDisplayLabels(bool) override {}
    void RefreshChannelSelector() override {}
    void ClearMouseFlags() override {}
    int Count = 0;
};

TEST_F(CopyPasteQuestions, WhatChangesTheSoundShowsItOnceAndACopyDoesNot) {
    Clip({10, 20});
    Document({1, 2, 3, 4, 5, 6});
    RefreshCount View;
    Select(2, 3);
    Commands.Copy();
    EXPECT_EQ(View.Count, 0);
    Commands.Cut();
    EXPECT_EQ(View.Count, 1);
    Commands.Delete();
    EXPECT_EQ(View.Count, 2);
    EXPECT_EQ(SelStart, 2);
    EXPECT_EQ(SelEnd, 3);
    for (std::int32_t Mode = PasteReplace; Mode <= PasteCrossFade; ++Mode) {
        View.Count = 0;
        Messages.AnswerInput("2");
        PasteAt(Mode, 2);
        EXPECT_EQ(View.Count, 1) << Mode;
        EXPECT_EQ(SelStart, 2);
        EXPECT_EQ(SelEnd, 2);
    }
}

TEST_F(CopyPasteQuestions, ACopyThatWentWellOffersTheTipAndAFailedOneDoesNot) {
    const Tips Guide;
    Document({1, 2, 3});
    Select(1, 2);
    Commands.Copy();
    const char* Tip = "If you want to copy part of the file to a new file use \"Save Selected\" "
                      "command (under File menu / Tool button)";
    EXPECT_THAT(Guide.Shown, ElementsAre(Tip));
    const std::string Folder = AppPath;
    AppPath = Session.Path("missing");
    Commands.Copy();
    AppPath = Folder;
    EXPECT_EQ(Messages.TakeTexts().back(), "Copying failed");
    EXPECT_EQ(Guide.Shown.size(), 1U);
}

/// Breaks off as soon as somebody tells it how far he has come.
struct BrokenProgress final : ProgressReport {
    BrokenProgress() { SetProgressReport(this); }
    ~BrokenProgress() override { SetProgressReport(nullptr); }
    BrokenProgress(const BrokenProgress&) = delete;
    BrokenProgress& operator=(const BrokenProgress&) = delete;
    void SetVisible(bool Visible) override { Shown = Visible; }
    void SetBarColor1(std::uint32_t Color) override { BarColor = Color; }
    void SetCurrentProgress(float Value) override {
        if (Value > 0 && (OnlyColor == 0 || BarColor == OnlyColor))
            throw Failure("Broken off");
    }
    [[nodiscard]] float CurrentProgress() const override { return 0; }
    void BlinkLamp() override {}
    std::uint32_t BarColor = 0;
    std::uint32_t OnlyColor = 0;
    bool Shown = false;
};

TEST_F(CopyPasteQuestions, ACopyThatBreaksOffWhileItGathersSaysThatItFailed) {
    Clip({7, 8});
    const std::string Line = Slot.Held;
    Document({1, 2, 3});
    WaveChanged = false;
    Windows.Copied.clear();
    Windows.Choice = Session.WriteFile(
        "m.wav", WavFile{.Rate = 1000, .Data = AudioBytes({1, -128}, 16)}.Whole());
    const BrokenProgress Progress;
    Select(1, 2);
    Commands.Copy();
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Broken off", "Copying failed"));
    Commands.Cut();
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("Broken off", "Copying failed,\nDeleting not done."));
    Commands.CopyFile();
    EXPECT_EQ(Messages.TakeTexts().back(), "Copying failed");
    EXPECT_THAT(Left(), ElementsAre(1, 2, 3));
    EXPECT_FALSE(WaveChanged);
    EXPECT_EQ(Slot.Held, Line);
    EXPECT_THAT(Windows.Copied, IsEmpty());
    EXPECT_FALSE(Progress.Shown);
}

TEST_F(CopyPasteQuestions, APasteThatBreaksOffWhileItComputesShowsTheError) {
    const std::vector<std::int16_t> Long(150000, 3);
    Clip(Long);
    Document(Long);
    WaveChanged = false;
    BrokenProgress Progress;
    Progress.OnlyColor = 8421376;
    for (const std::int32_t Mode : {PasteMix, PasteModulate, PasteCrossFade}) {
        PasteAt(Mode, 1);
        EXPECT_FALSE(Progress.Shown);
        EXPECT_EQ(BusyDepth, 0);
    }
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("Paste Mix|Broken off", "Paste Modulate|Broken off",
                            "Paste Cross Fade|Broken off"));
    EXPECT_TRUE(Left() == Long);
    EXPECT_FALSE(WaveChanged);
    EXPECT_EQ(WaveStore->UndoCount(), 0);
    EXPECT_EQ(BrokenRule(*WaveStore, {ClipCarrL.get()}), "");
}

} // namespace

} // namespace quoril::test
