#include "shell/EntStrchFrm.h"

#include "shell/WithDialog.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <gtest/gtest.h>

namespace quoril::test {
namespace {

QString TextOf(const QWidget* Window, int Number) {
    return Part<QLineEdit>(Window, Number == 1 ? "EnterValTxt_1" : "EnterValTxt_2")->text();
}

TEST(EntStrchFrm, ShowsItsWordsAndTheGivenValues) {
    StretchAsker Asker;
    const QString Captions[] = {"Enter Percentage to Stretch/Shrink", "Enter Percentage Tempo"};
    for (const std::int32_t Index : {0, 1}) {
        const WithDialog Act([&](QWidget* Window) {
            EXPECT_EQ(Window->objectName(), "EntStrchFrm");
            EXPECT_EQ(Window->windowTitle(), Captions[Index]);
            EXPECT_EQ(Part<QLabel>(Window, "Label1")->text(), "Enter Percentage:\n(10 to 1000 %)");
            EXPECT_EQ(Part<QLabel>(Window, "StaEndLbl_1")->text().remove('&'), "Start:");
            EXPECT_EQ(Part<QLabel>(Window, "StaEndLbl_2")->text().remove('&'), "End:");
            EXPECT_EQ(Part<QCheckBox>(Window, "UseTwoChk")->text().remove('&'), "Use Two Values");
            EXPECT_EQ(Part<QCheckBox>(Window, "MoveAudioChk")->text().remove('&'),
                      "Move the following audio");
            EXPECT_EQ(TextOf(Window, 1), "75");
            EXPECT_EQ(TextOf(Window, 2), "83.33333333333333");
            EXPECT_TRUE(Part<QLineEdit>(Window, "EnterValTxt_2")->isEnabled());
            EXPECT_TRUE(Part<QCheckBox>(Window, "UseTwoChk")->isChecked());
            EXPECT_TRUE(Part<QCheckBox>(Window, "MoveAudioChk")->isChecked());
            for (const char* Name : {"EnterValTxt_1", "EnterValTxt_2"})
                EXPECT_FALSE(Part<QLineEdit>(Window, Name)->accessibleName().isEmpty());
            EXPECT_EQ(Part<QLabel>(Window, "StaEndLbl_2")->buddy(),
                      Part<QLineEdit>(Window, "EnterValTxt_2"));
            EXPECT_TRUE(Part<QPushButton>(Window, "OkBtn")->isDefault());
            EXPECT_EQ(Window->focusWidget(), Part<QLineEdit>(Window, "EnterValTxt_1"));
            Press(Window, "OkBtn");
        });
        const StretchEntry Shown{"75", "83.33333333333333", true, true};
        const StretchAnswer Answer = Asker.ShowStretch(Index, Shown);
        EXPECT_TRUE(Answer.OkClicked);
        EXPECT_EQ(Answer.Entry, Shown);
    }
}

TEST(EntStrchFrm, ASingleValueIsCopiedAsItIsTyped) {
    StretchAsker Asker;
    const WithDialog Act([](QWidget* Window) {
        auto* First = Part<QLineEdit>(Window, "EnterValTxt_1");
        auto* Second = Part<QLineEdit>(Window, "EnterValTxt_2");
        EXPECT_FALSE(Second->isEnabled());
        EXPECT_EQ(Second->text(), "150"); // and not what would have no effect
        QTest::keyClicks(First, "12");    // over what is selected
        EXPECT_EQ(First->text(), "12");
        EXPECT_EQ(Second->text(), "12");
        QTest::mouseClick(Part<QCheckBox>(Window, "UseTwoChk"), Qt::LeftButton, {}, QPoint(8, 8));
        EXPECT_TRUE(Second->isEnabled());
        Second->setText("300");
        QTest::keyClicks(First, "5");
        EXPECT_EQ(Second->text(), "300");
        QTest::mouseClick(Part<QCheckBox>(Window, "UseTwoChk"), Qt::LeftButton, {}, QPoint(8, 8));
        EXPECT_FALSE(Second->isEnabled());
        EXPECT_EQ(Second->text(), "125");
        Press(Window, "OkBtn");
    });
    const StretchAnswer Answer = Asker.ShowStretch(0, {"150", "400", false, false});
    EXPECT_TRUE(Answer.OkClicked);
    EXPECT_EQ(Answer.Entry, (StretchEntry{"125", "125", false, false}));
}

TEST(EntStrchFrm, IsWorkedByKeysAlone) {
    StretchAsker Asker;
    const WithDialog Act([](QWidget* Window) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
        QTest::keyClicks(QApplication::focusWidget(), "80");
        // The second value cannot be entered, so the next thing is the box.
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_TRUE(Part<QCheckBox>(Window, "UseTwoChk")->hasFocus());
        // A box that is pressed by its key shows so for a moment.
        const auto Checked = [Window](const char* Name) {
            return QTest::qWaitFor([=] { return Part<QCheckBox>(Window, Name)->isChecked(); },
                                   5000);
        };
        QTest::keyClick(Window, Qt::Key_U, Qt::AltModifier);
        EXPECT_TRUE(Checked("UseTwoChk"));
        QTest::keyClick(Window, Qt::Key_E, Qt::AltModifier);
        EXPECT_TRUE(Part<QLineEdit>(Window, "EnterValTxt_2")->hasFocus());
        Part<QLineEdit>(Window, "EnterValTxt_2")->selectAll();
        QTest::keyClicks(QApplication::focusWidget(), "90.5");
        QTest::keyClick(Window, Qt::Key_M, Qt::AltModifier);
        EXPECT_TRUE(Checked("MoveAudioChk"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QTest::keyClick(Window, Qt::Key_S, Qt::AltModifier);
        EXPECT_TRUE(Part<QLineEdit>(Window, "EnterValTxt_1")->hasFocus());
        QTest::keyClick(Window, Qt::Key_Return);
    });
    const StretchAnswer Answer = Asker.ShowStretch(1, {"120", "120", false, false});
    EXPECT_TRUE(Answer.OkClicked);
    EXPECT_EQ(Answer.Entry, (StretchEntry{"80", "90.5", true, true}));
}

TEST(EntStrchFrm, TheTabKeyGoesFromTopToBottom) {
    StretchAsker Asker;
    const WithDialog Act([](QWidget* Window) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
        for (const char* Name : {"EnterValTxt_1", "EnterValTxt_2", "UseTwoChk", "MoveAudioChk",
                                 "OkBtn", "CancelBtn", "EnterValTxt_1"}) {
            EXPECT_EQ(QApplication::focusWidget()->objectName(), Name);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        Press(Window, "CancelBtn");
    });
    (void)Asker.ShowStretch(0, {"150", "150", true, false});
}

TEST(EntStrchFrm, CancelAndEscAreNoAnswer) {
    StretchAsker Asker;
    {
        const WithDialog Act([](QWidget* Window) { Press(Window, "CancelBtn"); });
        EXPECT_FALSE(Asker.ShowStretch(0, {}).OkClicked);
    }
    const WithDialog Act([](QWidget* Window) { QTest::keyClick(Window, Qt::Key_Escape); });
    EXPECT_FALSE(Asker.ShowStretch(0, {}).OkClicked);
}

} // namespace
} // namespace quoril::test
