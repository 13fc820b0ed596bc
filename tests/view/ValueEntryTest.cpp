#include "view/ValueEntry.h"

#include "base/Failure.h"
#include "selection/ViewFixture.h"
#include "settings/STD1.h"
#include "view/ZoomMod.h"

#include <cmath>

namespace quoril {
namespace {

using Texts = std::array<std::string, LabelCount>;

class Labels : public test::ViewTest {};

TEST_F(Labels, ShowSampleNumbers) {
    ShowHhmmss = 0;
    Select(101, 300);
    View(51, 700);
    EXPECT_EQ(LabelTexts(1000), (Texts{"200", "101", "300", "700", "51", "750"}));
}

TEST_F(Labels, ShowTimesOfTheNumbersAsTheyStand) {
    Select(1500, 62000);
    View(1, 90000);
    EXPECT_EQ(LabelTexts(1000), (Texts{"01:00.50", "01.50", "01:02", "01:30", "00", "01:30"}));
}

TEST_F(Labels, WithoutASelectionTheTotalIsOne) {
    ShowHhmmss = 0;
    View(1, 1000);
    EXPECT_EQ(LabelTexts(1000), (Texts{"1", "0", "0", "1000", "1", "1000"}));
}

TEST_F(Labels, ShowTheDraggedRangeInPlaceOfTheSelection) {
    ShowHhmmss = 0;
    Select(101, 300);
    View(51, 700);
    const DragRange Drag{7, 9};
    EXPECT_EQ(LabelTexts(1000, &Drag), (Texts{"3", "7", "9", "700", "51", "750"}));
}

TEST_F(Labels, ShowAReversedSelectionAsItStands) {
    Select(600, 100);
    ShowHhmmss = 0;
    EXPECT_EQ(LabelTexts(1000)[LabelSelTotal], "-499");
    ShowHhmmss = 1;
    EXPECT_EQ(LabelTexts(1000)[LabelSelTotal], "-00.50");
}

TEST_F(Labels, AnyOtherChoiceThanOneShowsSamples) {
    ShowHhmmss = 2;
    Select(5, 5);
    EXPECT_EQ(LabelTexts(1000)[LabelSelFrom], "5");
}

TEST_F(Labels, ShowAbsurdNumbersWithoutHarm) {
    ShowHhmmss = 0;
    Select(-Most - 1, Most);
    View(Most, Most);
    const Texts Shown = LabelTexts(1000);
    EXPECT_EQ(Shown[LabelSelTotal], "4294967296");
    EXPECT_EQ(Shown[LabelViewTo], "4294967293");
    ShowHhmmss = 1;
    EXPECT_FALSE(LabelTexts(1000)[LabelSelTotal].empty());
}

TEST_F(Labels, TheSizePanelShowsLengthAndDuration) {
    EXPECT_EQ(SizePanelText({65500, 1000, 1, 16}), "Samples 65500, Duration 01:05.50");
    EXPECT_EQ(SizePanelText({0, 44100, 1, 16}), "Samples 0, Duration 00");
}

TEST_F(Labels, TheToggleChoosesShowsAndStores) {
    DisplayToggle(0);
    EXPECT_EQ(ShowHhmmss, 0);
    EXPECT_TRUE(DisplayToggleChecked(0));
    EXPECT_FALSE(DisplayToggleChecked(1));
    EXPECT_EQ(IniGet("General", "ShowHhmmss", ""), "0");
    ExpectCalls({"RefreshDisplayLabels"});
    DisplayToggle(1);
    EXPECT_EQ(ShowHhmmss, 1);
    EXPECT_TRUE(DisplayToggleChecked(1));
    EXPECT_FALSE(DisplayToggleChecked(0));
    EXPECT_EQ(IniGet("General", "ShowHhmmss", ""), "1");
}

TEST_F(Labels, TheStoredChoiceIsZeroOrOneAndOneByDefault) {
    DisplayToggleRead();
    EXPECT_EQ(ShowHhmmss, 1);
    struct Row {
        const char* Stored;
        std::int32_t Choice;
    };
    for (const Row& Each : {Row{"0", 0}, Row{"1", 1}, Row{"2", 1}, Row{"-1", 1}}) {
        IniPut("General", "ShowHhmmss", Each.Stored);
        DisplayToggleRead();
        EXPECT_EQ(ShowHhmmss, Each.Choice) << Each.Stored;
    }
}

/// Closes the dialog with a text by script; without one it cancels.
class ScriptedEntDur final : public EntDurDialog {
  public:
    ScriptedEntDur() { SetEntDurDialog(this); }
    ~ScriptedEntDur() override { SetEntDurDialog(nullptr); }
    ScriptedEntDur(const ScriptedEntDur&) = delete;
    ScriptedEntDur& operator=(const ScriptedEntDur&) = delete;
    EntDurAnswer ShowEntDur(const EntDurRequest& Request) override {
        Requests.push_back(Request);
        return Answer;
    }
    EntDurAnswer Answer;
    std::vector<EntDurRequest> Requests;
};

/// Selection 100 to 300, view of 200 samples from 50, document of 1000.
class Entry : public test::ViewTest {
  protected:
    Entry() { Start(); }
    static void Start() {
        Select(100, 300);
        View(50, 200, true);
    }
    void ExpectTaken(std::int32_t Label, double Value) {
        Start();
        LabelEntryAccept(Label, Value, 1000);
        EXPECT_TRUE(Messages.Requests.empty());
        ExpectCalls({"Refresh_Wave_View"});
        EXPECT_EQ(ViewAll, Label < LabelViewTotal);
    }
    void ExpectRefused(std::int32_t Label, double Value) {
        SCOPED_TRACE("label " + std::to_string(Label) + ", value " + std::to_string(Value));
        Start();
        LabelEntryAccept(Label, Value, 1000);
        EXPECT_EQ(Messages.TakeTexts(), std::vector<std::string>{"Out of limit"});
        ExpectCalls({});
        ExpectSelection(100, 300);
        ExpectView(50, 200);
        EXPECT_TRUE(ViewAll);
    }
};

TEST_F(Entry, SelectionTotalSetsTheEnd) {
    ExpectTaken(LabelSelTotal, 50);
    ExpectSelection(100, 149);
    ExpectTaken(LabelSelTotal, 901);
    ExpectSelection(100, 1000);
    ExpectTaken(LabelSelTotal, -98);
    ExpectSelection(100, 1);
    ExpectRefused(LabelSelTotal, 902);
    ExpectRefused(LabelSelTotal, -99);
}

TEST_F(Entry, SelectionFromSetsTheStart) {
    ExpectTaken(LabelSelFrom, 1);
    ExpectSelection(1, 300);
    ExpectTaken(LabelSelFrom, 300);
    ExpectSelection(300, 300);
    ExpectRefused(LabelSelFrom, 0);
    ExpectRefused(LabelSelFrom, 1001);
}

TEST_F(Entry, SelectionFromAboveTheEndSwapsTheEnds) {
    ExpectTaken(LabelSelFrom, 400);
    ExpectSelection(300, 400);
    ExpectTaken(LabelSelFrom, 1000);
    ExpectSelection(300, 1000);
}

TEST_F(Entry, SelectionToSetsTheEnd) {
    ExpectTaken(LabelSelTo, 1000);
    ExpectSelection(100, 1000);
    ExpectTaken(LabelSelTo, 100);
    ExpectSelection(100, 100);
    ExpectRefused(LabelSelTo, 0);
    ExpectRefused(LabelSelTo, 1001);
}

TEST_F(Entry, SelectionToBelowTheStartSwapsTheEnds) {
    ExpectTaken(LabelSelTo, 40);
    ExpectSelection(40, 100);
}

TEST_F(Entry, ViewTotalRefusesToReachTheLastSample) {
    ExpectTaken(LabelViewTotal, 949);
    ExpectView(50, 949);
    ExpectRefused(LabelViewTotal, 950);
    ExpectTaken(LabelViewTotal, 1);
    ExpectView(50, 1);
    ExpectRefused(LabelViewTotal, 0);
    ExpectRefused(LabelViewTotal, -5);
}

TEST_F(Entry, AViewTotalOf3BecomesTenInTheRefresh) {
    ExpectTaken(LabelViewTotal, 3);
    ExpectView(50, 3);
    ViewLimitsApply(1000);
    ExpectView(50, 10);
}

TEST_F(Entry, ViewFromSetsTheLeftEdge) {
    ExpectTaken(LabelViewFrom, 1);
    ExpectView(1, 200);
    ExpectTaken(LabelViewFrom, 1000);
    ExpectView(1000, 200);
    ViewLimitsApply(1000);
    ExpectView(801, 200);
    ExpectRefused(LabelViewFrom, 0);
    ExpectRefused(LabelViewFrom, 1001);
}

TEST_F(Entry, ViewToSetsTheTotal) {
    ExpectTaken(LabelViewTo, 50);
    ExpectView(50, 1);
    ExpectTaken(LabelViewTo, 1000);
    ExpectView(50, 951);
    ExpectRefused(LabelViewTo, 49);
    ExpectRefused(LabelViewTo, 1001);
}

TEST_F(Entry, AbsurdValuesAreOutOfLimit) {
    for (std::int32_t Label = LabelSelTotal; Label <= LabelViewTo; ++Label)
        for (const double Value :
             {2147483647.0, 2147483648.0, -2147483648.0, 1e300, -1e300, std::nan(""), HUGE_VAL})
            ExpectRefused(Label, Value);
}

TEST_F(Entry, AbsurdNumbersInTheViewDoNoHarm) {
    for (std::int32_t Label = LabelSelTotal; Label <= LabelViewTo; ++Label)
        for (const std::int32_t Number : {Most, -Most - 1})
            for (const double Value : {1.0, 10.0, 2147483647.0, -2147483648.0}) {
                Select(Number, Number);
                View(Number, Number);
                try {
                    LabelEntryAccept(Label, Value, Most);
                } catch (const Failure& Told) {
                    EXPECT_STREQ(Told.what(), "Overflow");
                }
            }
}

TEST_F(Entry, AsksForTheValueOfEachLabel) {
    ScriptedEntDur Dialog;
    struct Row {
        const char* Caption;
        const char* Samples;
        const char* Time;
    };
    const Row Rows[] = {
        {" Change Selection (Total)", "201", "00.20"}, {" Change Selection (From)", "100", "00.10"},
        {" Change Selection (To)", "300", "00.30"},    {" Change View (Total)", "200", "00.20"},
        {" Change View (From)", "50", "00.05"},        {" Change View (To)", "249", "00.25"}};
    for (std::int32_t Label = 0; Label < 6; ++Label) {
        LabelEntry(Label);
        const EntDurRequest& Request = Dialog.Requests.back();
        const Row& Expected = Rows[static_cast<std::size_t>(Label)];
        EXPECT_EQ(Request.Caption, Expected.Caption);
        EXPECT_EQ(Request.Prompt, "Enter new value:");
        EXPECT_EQ(Request.RefSize, "Previous value");
        EXPECT_EQ(Request.CurSizeDur, Expected.Time);
        EXPECT_EQ(Request.CurSizeSmp, Expected.Samples);
        EXPECT_EQ(Request.EnterDur, Expected.Time);
        EXPECT_EQ(Request.EnterSmp, Expected.Samples);
        EXPECT_EQ(Request.Freq, 1000);
    }
    EXPECT_EQ(Dialog.Requests.size(), 6U);
    ExpectCalls({});
    ExpectSelection(100, 300);
}

TEST_F(Entry, TakesTheRoundedSamplesOnOk) {
    ScriptedEntDur Dialog;
    Dialog.Answer = {true, "120.5 or so"};
    LabelEntry(LabelSelFrom);
    ExpectSelection(120, 300);
    Dialog.Answer = {true, "junk"};
    LabelEntry(LabelSelFrom);
    EXPECT_EQ(Messages.TakeTexts(), std::vector<std::string>{"Out of limit"});
    ExpectSelection(120, 300);
    Dialog.Answer = {false, "5"};
    LabelEntry(LabelSelFrom);
    ExpectSelection(120, 300);
}

TEST_F(Entry, OtherNumbersAreNoLabels) {
    ScriptedEntDur Dialog;
    Dialog.Answer = {true, "5"};
    LabelEntry(6);
    LabelEntry(-1);
    LabelEntryAccept(6, 5, 1000);
    EXPECT_TRUE(Dialog.Requests.empty());
    EXPECT_EQ(LabelValue(6), 0);
    ExpectCalls({});
    ExpectView(50, 200);
}

} // namespace
} // namespace quoril
