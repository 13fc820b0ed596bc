// The two dialogs of the view, used as a user would.
#include "WindowFixture.h"

#include "selection/SelectionMod.h"
#include "shell/WithDialog.h"
#include "view/ValueEntry.h"

#include <QAction>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

#include <optional>

namespace quoril::test {
namespace {

template <class Kind>
Kind* Part(QWidget* Dialog, const QString& Name) {
    auto* Found = Dialog->findChild<Kind*>(Name);
    if (Found == nullptr)
        ADD_FAILURE() << "no " << qPrintable(Name);
    return Found;
}

// ---- SelConfFrm

struct ConfirmRow {
    std::int32_t Need, Available;
    const char* Frame;
    const char* Option;
    const char* Caption;
    std::int32_t Start, End; ///< the selection afterwards
};

std::ostream& operator<<(std::ostream& Out, const ConfirmRow& Row) {
    return Out << Row.Option << " for a need of " << Row.Need << " with " << Row.Available;
}

// A document of 1000 samples; the point is 400, the range 300 to 500.
const std::vector<ConfirmRow> ConfirmRows = {
    {1, 0, "OneZeroFrame", "OneZeroOpn_0", "Use the Start point of the File", 1, 1},
    {1, 0, "OneZeroFrame", "OneZeroOpn_1", "Use the End point of the File", 1000, 1000},
    {1, 2, "OneTwoFrame", "OneTwoOpn_0", "Use the Start point of the Selection", 300, 300},
    {1, 2, "OneTwoFrame", "OneTwoOpn_1", "Use the End point of the Selection", 500, 500},
    {2, 0, "TwoZeroFrame", "TwoZeroOpn_0", "Use the Start and End points of the File (Select All)",
     1, 1000},
    {2, 1, "TwoOneFrame", "TwoOneOpn_0", "Select from this Point to the End of the File", 400,
     1000},
    {2, 1, "TwoOneFrame", "TwoOneOpn_1", "Select from Start of the File to this Point", 1, 400},
    {2, 1, "TwoOneFrame", "TwoOneOpn_2", "Use the Start and End points of the File (Select All)", 1,
     1000},
    {2, 1, "TwoOneFrame", "TwoOneOpn_3", "Force to select just one point as Range", 400, 400},
    {3, 0, "ThreeZeroFrame", "ThreeZeroOpn_0", "Use the Start point of the File", 1, 1},
    {3, 0, "ThreeZeroFrame", "ThreeZeroOpn_1", "Use the End point of the File", 1000, 1000},
    {3, 0, "ThreeZeroFrame", "ThreeZeroOpn_2",
     "Use the Start and End points of the File (Select All)", 1, 1000},
};

class DialogTest : public WindowTest {
  protected:
    DialogTest() { Show(); }

    static void SelectFor(std::int32_t Available) {
        SelStart = Available == 0 ? 0 : Available == 1 ? 400 : 300;
        SelEnd = Available == 0 ? 0 : Available == 1 ? 400 : 500;
    }
};

class ConfirmRowTest : public DialogTest, public ::testing::WithParamInterface<ConfirmRow> {};

TEST_P(ConfirmRowTest, TheOptionMakesTheSelection) {
    const ConfirmRow& Row = GetParam();
    SelectFor(Row.Available);
    MouseMode = 2;
    const WithDialog Dialog([&](QWidget* Asked) {
        EXPECT_EQ(Asked->objectName(), "SelConfFrm");
        EXPECT_EQ(Asked->windowTitle(), " Confirm Selection [Lap]");
        for (const char* Frame :
             {"OneZeroFrame", "OneTwoFrame", "TwoZeroFrame", "TwoOneFrame", "ThreeZeroFrame"})
            EXPECT_EQ(Part<QWidget>(Asked, Frame)->isVisible(), std::string(Frame) == Row.Frame)
                << Frame;
        auto* Option = Part<QRadioButton>(Asked, Row.Option);
        EXPECT_EQ(Option->text(), Row.Caption);
        const QString First = QString(Row.Option).chopped(1) + "0";
        EXPECT_TRUE(Part<QRadioButton>(Asked, First)->isChecked());
        Option->click();
        Part<QPushButton>(Asked, "OkBtn")->click();
    });
    std::int32_t Start = 0;
    std::int32_t End = 0;
    std::int32_t WorkChn = -1;
    EXPECT_TRUE(ConfirmSelection(Start, End, WorkChn, Row.Need, "Lap"));
    EXPECT_EQ(Start, Row.Start);
    EXPECT_EQ(End, Row.End);
    EXPECT_EQ(SelStart, Row.Start);
    EXPECT_EQ(SelEnd, Row.End);
    EXPECT_EQ(WorkChn, 0);
    EXPECT_EQ(MouseMode, 0);
}

INSTANTIATE_TEST_SUITE_P(All, ConfirmRowTest, ::testing::ValuesIn(ConfirmRows));

TEST_F(DialogTest, TheTextsOfTheConfirmDialogTellNeedAndSelection) {
    struct Texts {
        std::int32_t Need, Available;
        const char* NeedText;
        const char* AvailText;
    };
    for (const Texts& What :
         {Texts{1, 0, "This needs One Point", "Currently you have not selected any Point/Range"},
          Texts{2, 1, "This needs Two Points/Range Selection", "Currently you selected One Point"},
          Texts{1, 2, "This needs One Point", "Currently you selected Two Points/Range"},
          Texts{3, 0, "This needs One or Two Points Selection",
                "Currently you have not selected any Point/Range"}}) {
        SelectFor(What.Available);
        const WithDialog Dialog([&](QWidget* Asked) {
            EXPECT_EQ(Part<QLabel>(Asked, "NeedLbl")->text(), What.NeedText);
            EXPECT_EQ(Part<QLabel>(Asked, "AvailLbl")->text(), What.AvailText);
            EXPECT_EQ(Part<QLabel>(Asked, "HowLbl")->text(), "How to select ?");
            EXPECT_EQ(Asked->windowTitle(), " Confirm Selection");
            QTest::keyClick(Asked, Qt::Key_Escape);
        });
        std::int32_t Start = -1;
        std::int32_t End = -1;
        std::int32_t WorkChn = -1;
        EXPECT_FALSE(ConfirmSelection(Start, End, WorkChn, What.Need, ""));
        EXPECT_EQ(Start, -1) << "a cancelled dialog writes nothing";
    }
}

TEST_F(DialogTest, CancelLeavesTheSelectionAlone) {
    SelectFor(2);
    const WithDialog Dialog([](QWidget* Asked) {
        Part<QRadioButton>(Asked, "OneTwoOpn_1")->click();
        Part<QPushButton>(Asked, "CancelBtn")->click();
    });
    std::int32_t Start = 0;
    std::int32_t End = 0;
    std::int32_t WorkChn = 0;
    EXPECT_FALSE(ConfirmSelection(Start, End, WorkChn, 1, "Copy"));
    EXPECT_EQ(SelStart, 300);
    EXPECT_EQ(SelEnd, 500);
}

TEST_F(DialogTest, EnterTakesTheOptionThatIsChosenAtFirst) {
    SelectFor(0);
    const WithDialog Dialog([](QWidget* Asked) { QTest::keyClick(Asked, Qt::Key_Return); });
    std::int32_t Start = 0;
    std::int32_t End = 0;
    std::int32_t WorkChn = 0;
    EXPECT_TRUE(ConfirmSelection(Start, End, WorkChn, 2, "Copy"));
    EXPECT_EQ(SelStart, 1);
    EXPECT_EQ(SelEnd, 1000);
}

TEST_F(DialogTest, WhatFitsTheNeedAsksNothing) {
    std::int32_t Start = 0;
    std::int32_t End = 0;
    std::int32_t WorkChn = 0;
    for (const auto& [Need, Available] :
         {std::pair{3, 1}, std::pair{3, 2}, std::pair{1, 1}, std::pair{2, 2}, std::pair{0, 1}}) {
        SelectFor(Available);
        EXPECT_TRUE(ConfirmSelection(Start, End, WorkChn, Need, "Copy")) << Need << Available;
    }
}

// ---- EntDurFrm

struct EntryRow {
    int Index;
    const char* Label;
    const char* Caption;
    const char* Old;
    const char* New;
    std::int32_t Start, End, From, Total;
};

std::ostream& operator<<(std::ostream& Out, const EntryRow& Row) {
    return Out << Row.Caption;
}

// Selection 101 to 300, view 201 to 700.
const std::vector<EntryRow> EntryRows = {
    {0, "SelectLbl_0", " Change Selection (Total)", "200", "50", 101, 150, 201, 500},
    {1, "SelectLbl_1", " Change Selection (From)", "101", "400", 300, 400, 201, 500},
    {2, "SelectLbl_2", " Change Selection (To)", "300", "301", 101, 301, 201, 500},
    {3, "ViewLbl_0", " Change View (Total)", "500", "600", 101, 300, 201, 600},
    {4, "ViewLbl_1", " Change View (From)", "201", "11", 101, 300, 11, 500},
    {5, "ViewLbl_2", " Change View (To)", "700", "400", 101, 300, 201, 200},
};

class EntryRowTest : public DialogTest, public ::testing::WithParamInterface<EntryRow> {};

TEST_P(EntryRowTest, AClickOnTheLabelAsksAndTakesTheValue) {
    const EntryRow& Row = GetParam();
    SelStart = 101;
    SelEnd = 300;
    ViewAll = false;
    ViewFrom = 201;
    ViewTotal = 500;
    Window->Refresh_Wave_View();
    {
        const WithDialog Dialog([&](QWidget* Entry) {
            EXPECT_EQ(Entry->objectName(), "EntDurFrm");
            EXPECT_EQ(Entry->windowTitle(), Row.Caption);
            EXPECT_EQ(Part<QLabel>(Entry, "PromptLbl")->text(), "Enter new value:");
            EXPECT_EQ(Part<QLabel>(Entry, "RefSizeLbl")->text(), "Previous value");
            EXPECT_EQ(Part<QLabel>(Entry, "CurSizeSmpLbl")->text(), Row.Old);
            auto* Samples = Part<QLineEdit>(Entry, "EnterSmpTxt");
            EXPECT_EQ(Samples->text(), Row.Old);
            Samples->setText(Row.New);
            QTest::keyClick(Samples, Qt::Key_Return);
        });
        QTest::mouseClick(Find<QLabel>(Row.Label), Qt::LeftButton);
    }
    EXPECT_EQ(SelStart, Row.Start);
    EXPECT_EQ(SelEnd, Row.End);
    EXPECT_EQ(ViewFrom, Row.From);
    EXPECT_EQ(ViewTotal, Row.Total);
    EXPECT_TRUE(Messages.TakeTexts().empty());
}

INSTANTIATE_TEST_SUITE_P(All, EntryRowTest, ::testing::ValuesIn(EntryRows));

TEST_F(DialogTest, TheTwoBoxesFollowEachOther) {
    const WithDialog Dialog([](QWidget* Entry) {
        auto* Time = Part<QLineEdit>(Entry, "EnterDurTxt");
        auto* Samples = Part<QLineEdit>(Entry, "EnterSmpTxt");
        EXPECT_EQ(Time->text(), "01");
        EXPECT_EQ(Samples->text(), "1000");
        EXPECT_EQ(Entry->focusWidget(), Time);
        QTest::keyClicks(Time, "1:05.5");
        EXPECT_EQ(Time->text(), "1:05.5") << "typing replaces what was selected";
        EXPECT_EQ(Samples->text(), "65500");
        Samples->setText("3605000");
        EXPECT_EQ(Time->text(), "1:00:05");
        Samples->setText("");
        EXPECT_EQ(Time->text(), "00");
        Part<QPushButton>(Entry, "CancelBtn")->click();
    });
    LabelEntry(LabelViewTotal);
    EXPECT_EQ(ViewTotal, 1000);
}

/// With 1000 samples a second, the last figures pass 32 bits, and then single precision.
TEST_F(DialogTest, ATimeThatIsTooLongIsNotTakenForTheLastOneThatWasNot) {
    SelStart = SelEnd = 10;
    for (const char* Typed : {"5000000", "9e37", "1e39"}) {
        const WithDialog Dialog([&](QWidget* Entry) {
            auto* Time = Part<QLineEdit>(Entry, "EnterDurTxt");
            QTest::keyClicks(Time, "0.5");
            EXPECT_EQ(Part<QLineEdit>(Entry, "EnterSmpTxt")->text(), "500");
            Time->setText(Typed);
            EXPECT_NE(Part<QLineEdit>(Entry, "EnterSmpTxt")->text(), "500") << Typed;
            EXPECT_EQ(Time->text(), Typed);
            QTest::keyClick(Time, Qt::Key_Return);
        });
        LabelEntry(LabelSelTo);
        EXPECT_EQ(Messages.TakeTexts(), (std::vector<std::string>{"Out of limit"})) << Typed;
        EXPECT_EQ(SelEnd, 10);
    }
}

TEST_F(DialogTest, AValueOutOfLimitIsRefusedWithAMessage) {
    const WithDialog Dialog([](QWidget* Entry) {
        Part<QLineEdit>(Entry, "EnterSmpTxt")->setText("1001");
        Part<QPushButton>(Entry, "OkBtn")->click();
    });
    SelStart = SelEnd = 10;
    LabelEntry(LabelSelTo);
    EXPECT_EQ(Messages.TakeTexts(), (std::vector<std::string>{"Out of limit"}));
    EXPECT_EQ(SelEnd, 10);
}

TEST_F(DialogTest, EnterOnALabelAsksAsAClickDoes) {
    const WithDialog Dialog([](QWidget* Entry) {
        EXPECT_EQ(Entry->windowTitle(), " Change View (From)");
        QTest::keyClick(Entry, Qt::Key_Escape);
    });
    Find<QLabel>("ViewLbl_1")->setFocus();
    QTest::keyClick(Find<QLabel>("ViewLbl_1"), Qt::Key_Return);
}

TEST_F(DialogTest, TheEntryOfTheMenuAsksForTheLabelThatWasRightClicked) {
    auto* Where = Find<QLabel>("SelectLbl_2");
    QContextMenuEvent Event(QContextMenuEvent::Mouse, QPoint(3, 3),
                            Where->mapToGlobal(QPoint(3, 3)));
    QApplication::sendEvent(Where, &Event);
    Find<QMenu>("PopMnu")->hide();
    const WithDialog Dialog([](QWidget* Entry) {
        EXPECT_EQ(Entry->windowTitle(), " Change Selection (To)");
        QTest::keyClick(Entry, Qt::Key_Escape);
    });
    Window->Entry("DisplayEnterValMnu")->trigger();
}

} // namespace
} // namespace quoril::test
