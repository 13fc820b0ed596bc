#include "shell/DelSilenFrm.h"

#include "shell/WithDialog.h"
#include "support/ScriptedMessages.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <gtest/gtest.h>

#include <map>

namespace quoril::test {
namespace {

QLineEdit* Field(const QWidget* Window, const char* Name) {
    return Part<QLineEdit>(Window, Name);
}
void Choose(const QWidget* Window, int Style) {
    auto* Button = Part<QRadioButton>(Window, Style == 1 ? "DetStylOpn_1" : "DetStylOpn_2");
    QTest::mouseClick(Button, Qt::LeftButton, {}, QPoint(8, Button->height() / 2));
    EXPECT_TRUE(Button->isChecked());
}
bool Shown(const QWidget* Window, const char* Name) {
    return Part<QWidget>(Window, Name)->isVisible();
}
void Type(const QWidget* Window, const char* Name, const char* Text) {
    Field(Window, Name)->setFocus();
    Field(Window, Name)->selectAll();
    QTest::keyClicks(Field(Window, Name), Text);
}

class DelSilenFrmTest : public ::testing::Test {
  protected:
    /// Runs the dialog; it must have been closed by `Act`.
    DelSilenAnswer Run(const std::function<void(QWidget*)>& Act, const DelSilenChoice& First = {}) {
        const WithDialog Acting([&](QWidget* Window) {
            ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
            Act(Window);
        });
        return Asker.ShowDelSilen(First);
    }
    /// What is said when a field is left in that way; the focus must be back in it.
    std::vector<std::string> Left(QWidget* Window, const char* Name, const char* Text,
                                  const std::function<void()>& Leave) {
        Type(Window, Name, Text);
        Leave();
        // What calls the user back comes after the event that moved the focus.
        QApplication::processEvents();
        std::vector<std::string> Told = Messages.TakeTexts();
        EXPECT_EQ(Field(Window, Name)->hasFocus(), !Told.empty()) << Name << Text;
        EXPECT_TRUE(Window->isVisible());
        return Told;
    }

    DelSilenAsker Asker;
    ScriptedMessages Messages;
};

TEST_F(DelSilenFrmTest, ShowsItsWordsAndTheGivenValues) {
    const DelSilenChoice First = {1, 0.1, 1, 1.5, 30, 0, 100};
    const DelSilenAnswer Answer = Run(
        [](QWidget* Window) {
            EXPECT_EQ(Window->objectName(), "DelSilenFrm");
            EXPECT_EQ(Window->windowTitle(), "Delete Silence / Low volume");
            const std::map<const char*, const char*> Values = {
                {"VolTxt", "1.00"},     {"DurTxt", "0.10"},       {"BalDurTxt", "1.50"},
                {"BalPerTxt", "30.00"}, {"BalMinDurTxt", "0.00"}, {"BalMaxDurTxt", "100.00"}};
            for (const auto& [Name, Text] : Values) {
                EXPECT_EQ(Field(Window, Name)->text(), Text) << Name;
                EXPECT_FALSE(Field(Window, Name)->accessibleName().isEmpty()) << Name;
            }
            QStringList Words;
            for (const QLabel* Label : Window->findChildren<QLabel*>())
                Words << Label->text().remove('&');
            for (const char* Expected :
                 {"Volume threshold :", "(% of total waveform height)",
                  "Less then this will be considered as silence", "Duration threshold :",
                  "(Seconds)", "More then this will be taken for processing",
                  "Balance duration after deleting :", "Min.:", "Max.:",
                  "Volume should be in the range of 0~99%",
                  "Too small duration will delete part of low frequency sound", "Invalid duration",
                  "Min. Invalid", "Max. Invalid"})
                EXPECT_TRUE(Words.contains(QLatin1String(Expected))) << Expected;
            EXPECT_EQ(Part<QRadioButton>(Window, "DetStylOpn_1")->text().remove('&'),
                      "Reduce to fixed duration");
            EXPECT_EQ(Part<QRadioButton>(Window, "DetStylOpn_2")->text().remove('&'),
                      "Percentage duration");
            EXPECT_EQ(Window->focusWidget(), Field(Window, "VolTxt"));
            Press(Window, "OkBtn");
        },
        First);
    EXPECT_TRUE(Answer.OkClicked);
    EXPECT_EQ(Answer.Choice, First);
}

TEST_F(DelSilenFrmTest, EachStyleHasItsFields) {
    DelSilenChoice First;
    First.SilenDelStyl = 2;
    const DelSilenAnswer Answer = Run(
        [](QWidget* Window) {
            const QSize Size = Window->size();
            for (const int Style : {2, 1, 2, 1}) {
                Choose(Window, Style);
                EXPECT_EQ(Shown(Window, "BalDurTxt"), Style == 1);
                for (const char* Name : {"BalPerTxt", "BalMinDurTxt", "BalMaxDurTxt", "MinMaxLbl_1",
                                         "MinMaxLbl_2", "MinMaxLbl_3"})
                    EXPECT_EQ(Shown(Window, Name), Style == 2) << Name;
                auto* Unit = Part<QLabel>(Window, "BalUnitLbl");
                EXPECT_EQ(Unit->text(),
                          Style == 1 ? "(Seconds)" : "(% of original silence duration)");
                EXPECT_TRUE(Shown(Window, "VolTxt") && Shown(Window, "DurTxt"));
                QApplication::processEvents();
                EXPECT_EQ(Window->size(), Size);
            }
            Press(Window, "OkBtn");
        },
        First);
    EXPECT_EQ(Answer.Choice.SilenDelStyl, 1);
}

TEST_F(DelSilenFrmTest, ChangesShowAndHideTheLabelsOfErrors) {
    struct Row {
        int Style;
        const char* Field;
        const char* Label;
        const char* Wrong;
        const char* Right;
    };
    Run([](QWidget* Window) {
        for (const Row& Each :
             {Row{1, "VolTxt", "Err1Lbl", "100", "99.9"}, Row{1, "VolTxt", "Err1Lbl", "-1", "0"},
              Row{1, "VolTxt", "Err1Lbl", "1%", "1"}, Row{1, "DurTxt", "Err2Lbl", "0.025", "0.026"},
              Row{1, "DurTxt", "Err2Lbl", "", "1"}, Row{1, "BalDurTxt", "Err3Lbl", "-0.1", "0"},
              Row{2, "BalPerTxt", "Err3Lbl", "100", "50"},
              Row{2, "BalMinDurTxt", "Err4Lbl", "101", "100"},
              Row{2, "BalMaxDurTxt", "Err5Lbl", "0.02", "0.025"},
              Row{2, "BalMaxDurTxt", "Err5Lbl", "100.5", "100"}}) {
            Choose(Window, Each.Style);
            EXPECT_FALSE(Shown(Window, Each.Label)) << Each.Label;
            Field(Window, Each.Field)->setText(QLatin1String(Each.Wrong));
            EXPECT_TRUE(Shown(Window, Each.Label)) << Each.Field << Each.Wrong;
            for (const char* Other : {"Err1Lbl", "Err2Lbl", "Err3Lbl", "Err4Lbl", "Err5Lbl"})
                EXPECT_EQ(Shown(Window, Other), QLatin1String(Other) == QLatin1String(Each.Label));
            // Where the field is away its label is, too.
            Choose(Window, 3 - Each.Style);
            const bool Both = QLatin1String(Each.Label) < QLatin1String("Err3Lbl");
            EXPECT_EQ(Shown(Window, Each.Label), Both) << Each.Field;
            Choose(Window, Each.Style);
            EXPECT_TRUE(Shown(Window, Each.Label)) << Each.Field;
            Field(Window, Each.Field)->setText(QLatin1String(Each.Right));
            EXPECT_FALSE(Shown(Window, Each.Label)) << Each.Field << Each.Right;
        }
        Press(Window, "CancelBtn");
    });
    EXPECT_TRUE(Messages.Texts().empty());
}

TEST_F(DelSilenFrmTest, AWrongNumberCallsBackWhoLeavesIt) {
    struct Row {
        int Style;
        const char* Field;
        const char* Wrong;
        const char* Right; ///< the label may still be there
        const char* Message;
    };
    Run([this](QWidget* Window) {
        const auto Tab = [] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab); };
        for (const Row& Each :
             {Row{1, "VolTxt", "100", "99.99", "Volume threshold is not valid"},
              Row{1, "VolTxt", "x", "0", "Volume threshold is not valid"},
              Row{1, "DurTxt", "0.024", "0.025", "Duration threshold is too small"},
              Row{1, "BalDurTxt", "-1", "500", "Balance duration invalid"},
              Row{2, "BalPerTxt", "100", "99", "Balance duration % invalid"},
              Row{2, "BalMinDurTxt", "100.1", "100", "Balance Min. duration invalid"},
              Row{2, "BalMaxDurTxt", "-1", "0", "Balance Max. duration invalid"}}) {
            Choose(Window, Each.Style);
            const std::vector<std::string> Message = {Each.Message};
            EXPECT_EQ(Left(Window, Each.Field, Each.Wrong, Tab), Message);
            // From the first field that goes to "Cancel", which needs no right number.
            if (QLatin1String(Each.Field) != QLatin1String("VolTxt")) {
                EXPECT_EQ(Left(Window, Each.Field, Each.Wrong,
                               [] {
                                   QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab,
                                                   Qt::ShiftModifier);
                               }),
                          Message);
            }
            EXPECT_EQ(Left(Window, Each.Field, Each.Wrong,
                           [&] {
                               const char* Other =
                                   QLatin1String(Each.Field) == QLatin1String("VolTxt") ? "DurTxt"
                                                                                        : "VolTxt";
                               QTest::mouseClick(Field(Window, Other), Qt::LeftButton);
                           }),
                      Message);
            EXPECT_EQ(Left(Window, Each.Field, Each.Wrong, [&] { Press(Window, "OkBtn"); }),
                      Message);
            EXPECT_FALSE(Part<QPushButton>(Window, "OkBtn")->isDown());
            EXPECT_TRUE(Left(Window, Each.Field, Each.Right, Tab).empty()) << Each.Field;
        }
        Press(Window, "CancelBtn");
    });
}

TEST_F(DelSilenFrmTest, AHeldButtonDoesNotStayDownAfterTheMessage) {
    Run([this](QWidget* Window) {
        auto* Ok = Part<QPushButton>(Window, "OkBtn");
        EXPECT_EQ(Left(Window, "VolTxt", "100", [&] { QTest::mousePress(Ok, Qt::LeftButton); }),
                  std::vector<std::string>{"Volume threshold is not valid"});
        EXPECT_FALSE(Ok->isDown());
        QTest::mouseRelease(Ok, Qt::LeftButton);
        EXPECT_TRUE(Window->isVisible());
        Press(Window, "CancelBtn");
    });
}

TEST_F(DelSilenFrmTest, CancelAndEscNeedNoRightNumber) {
    for (const bool ByKey : {false, true}) {
        const DelSilenAnswer Answer = Run([&](QWidget* Window) {
            Type(Window, "VolTxt", "1000");
            if (ByKey)
                QTest::keyClick(Window, Qt::Key_Escape);
            else
                Press(Window, "CancelBtn");
        });
        QApplication::processEvents();
        EXPECT_FALSE(Answer.OkClicked);
        EXPECT_TRUE(Messages.TakeTexts().empty());
    }
}

TEST_F(DelSilenFrmTest, EnterWithAProblemTellsItAndTheDialogStays) {
    const DelSilenAnswer Answer = Run([this](QWidget* Window) {
        const auto Enter = [&] {
            QTest::keyClick(Window, Qt::Key_Return);
            EXPECT_TRUE(Window->isVisible());
            return Messages.TakeTexts();
        };
        Type(Window, "VolTxt", "100.5");
        EXPECT_EQ(Enter(),
                  std::vector<std::string>{
                      "Invalid entry|Volume threshold percentage should be between 0 and 100"});
        EXPECT_EQ(Field(Window, "VolTxt")->text(), "100.5");
        Type(Window, "VolTxt", "100"); // good enough for Enter
        Type(Window, "DurTxt", "101");
        EXPECT_EQ(Enter(),
                  std::vector<std::string>{
                      "Invalid entry|Duration threshold should be between 0.025 and 100 seconds"});
        Type(Window, "DurTxt", "0.5");
        Choose(Window, 2);
        Type(Window, "BalMinDurTxt", "3");
        Type(Window, "BalMaxDurTxt", "3");
        EXPECT_EQ(Enter(), std::vector<std::string>{
                               "Invalid entry|Balance Min. duration can not be more then (or equal "
                               "to) Max. duration"});
        Type(Window, "BalMaxDurTxt", "4");
        QTest::keyClick(Window, Qt::Key_Return);
    });
    EXPECT_TRUE(Answer.OkClicked);
    EXPECT_EQ(Answer.Choice, (DelSilenChoice{100, 0.5, 2, 1, 30, 3, 4}));
}

TEST_F(DelSilenFrmTest, IsWorkedByKeysAlone) {
    const DelSilenAnswer Answer = Run([](QWidget* Window) {
        const auto Key = [&](Qt::Key Letter) { QTest::keyClick(Window, Letter, Qt::AltModifier); };
        Key(Qt::Key_D);
        EXPECT_TRUE(Field(Window, "DurTxt")->hasFocus());
        Key(Qt::Key_V);
        EXPECT_TRUE(Field(Window, "VolTxt")->hasFocus());
        Key(Qt::Key_B);
        EXPECT_TRUE(Field(Window, "BalDurTxt")->hasFocus());
        Key(Qt::Key_P);
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return Part<QRadioButton>(Window, "DetStylOpn_2")->isChecked(); }));
        Key(Qt::Key_B);
        EXPECT_TRUE(Field(Window, "BalPerTxt")->hasFocus());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_TRUE(Field(Window, "BalMinDurTxt")->hasFocus());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_TRUE(Field(Window, "BalMaxDurTxt")->hasFocus());
        Key(Qt::Key_N);
        EXPECT_TRUE(Field(Window, "BalMinDurTxt")->hasFocus());
        Key(Qt::Key_X);
        EXPECT_TRUE(Field(Window, "BalMaxDurTxt")->hasFocus());
        Key(Qt::Key_R);
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return Part<QRadioButton>(Window, "DetStylOpn_1")->isChecked(); }));
        QTest::keyClick(Window, Qt::Key_Return);
    });
    EXPECT_TRUE(Answer.OkClicked);
    EXPECT_EQ(Answer.Choice, DelSilenChoice{});
}

} // namespace
} // namespace quoril::test
