#include "shell/EntFrqFrm.h"

#include "shell/WithDialog.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <gtest/gtest.h>

namespace quoril::test {
namespace {

QLineEdit* Box(const QWidget* Window, int Index) {
    return Part<QLineEdit>(Window, Index == 1 ? "EnterFrqTxt_1" : "EnterFrqTxt_2");
}
QCheckBox* UseTwo(const QWidget* Window) {
    return Part<QCheckBox>(Window, "UseTwoChk");
}

TEST(EntFrqFrm, ShowsItsWordsAndTheGivenEntry) {
    EntFrqAsker Asker;
    const WithDialog Act([](QWidget* Window) {
        EXPECT_EQ(Window->objectName(), "EntFrqFrm");
        EXPECT_EQ(Window->windowTitle(), "Enter Frequency");
        EXPECT_EQ(Part<QLabel>(Window, "Label1_1")->text(), "Frequency (Hz):");
        EXPECT_EQ(Part<QLabel>(Window, "Label1_2")->text(), "(2 to 20000 Hz)");
        EXPECT_EQ(Part<QLabel>(Window, "StaEndLbl_1")->text().remove('&'), "Start:");
        EXPECT_EQ(Part<QLabel>(Window, "StaEndLbl_2")->text().remove('&'), "End:");
        EXPECT_EQ(UseTwo(Window)->text().remove('&'), "Use Two Values");
        for (const int Index : {1, 2}) {
            EXPECT_FALSE(Box(Window, Index)->accessibleName().isEmpty());
            EXPECT_TRUE(Box(Window, Index)->isEnabled());
        }
        EXPECT_TRUE(UseTwo(Window)->isChecked());
        EXPECT_EQ(Box(Window, 1)->text(), "31.5");
        EXPECT_EQ(Box(Window, 2)->text(), "x");
        EXPECT_EQ(Window->focusWidget(), Box(Window, 1));
        EXPECT_EQ(Box(Window, 1)->selectedText(), "31.5");
        EXPECT_TRUE(Part<QPushButton>(Window, "OkBtn")->isDefault());
        Press(Window, "OkBtn");
    });
    const EntFrqAnswer Answer = Asker.ShowEntFrq({"31.5", "x", true});
    EXPECT_TRUE(Answer.OkClicked);
    EXPECT_EQ(Answer.Entry, (EntFrqEntry{"31.5", "x", true}));
}

TEST(EntFrqFrm, WithoutTwoValuesTheEndFollowsTheStart) {
    EntFrqAsker Asker;
    const WithDialog Act([](QWidget* Window) {
        EXPECT_FALSE(Box(Window, 2)->isEnabled());
        EXPECT_EQ(Box(Window, 2)->text(), "200") << "from the beginning";
        QTest::keyClicks(Box(Window, 1), "35");
        EXPECT_EQ(Box(Window, 2)->text(), "35");
        QTest::mouseClick(UseTwo(Window), Qt::LeftButton, {},
                          QPoint(8, UseTwo(Window)->height() / 2));
        EXPECT_TRUE(Box(Window, 2)->isEnabled());
        QTest::keyClicks(Box(Window, 1), "7");
        EXPECT_EQ(Box(Window, 2)->text(), "35") << "two values are free of each other";
        Box(Window, 2)->selectAll();
        QTest::keyClicks(Box(Window, 2), "99");
        UseTwo(Window)->setChecked(false);
        EXPECT_EQ(Box(Window, 2)->text(), "357");
        EXPECT_FALSE(Box(Window, 2)->isEnabled());
        QTest::keyClick(Window, Qt::Key_Return);
    });
    const EntFrqAnswer Answer = Asker.ShowEntFrq({"200", "1000", false});
    EXPECT_TRUE(Answer.OkClicked);
    EXPECT_EQ(Answer.Entry, (EntFrqEntry{"357", "357", false}));
}

TEST(EntFrqFrm, IsWorkedByKeysAlone) {
    EntFrqAsker Asker;
    const WithDialog Act([](QWidget* Window) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
        QTest::keyClicks(QApplication::focusWidget(), "50");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QTest::keyClicks(QApplication::focusWidget(), "60");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_TRUE(UseTwo(Window)->hasFocus());
        for (const bool Ticked : {false, true}) {
            QTest::keyClick(Window, Qt::Key_U, Qt::AltModifier);
            EXPECT_TRUE(QTest::qWaitFor([&] { return UseTwo(Window)->isChecked() == Ticked; }));
        }
        QTest::keyClick(Window, Qt::Key_E, Qt::AltModifier);
        EXPECT_TRUE(Box(Window, 2)->hasFocus());
        QTest::keyClicks(QApplication::focusWidget(), "61");
        QTest::keyClick(Window, Qt::Key_Return);
    });
    EXPECT_EQ(Asker.ShowEntFrq({}).Entry, (EntFrqEntry{"50", "61", true}));
}

TEST(EntFrqFrm, CancelAndEscAreNoAnswer) {
    EntFrqAsker Asker;
    {
        const WithDialog Act([](QWidget* Window) { Press(Window, "CancelBtn"); });
        EXPECT_FALSE(Asker.ShowEntFrq({}).OkClicked);
    }
    const WithDialog Act([](QWidget* Window) { QTest::keyClick(Window, Qt::Key_Escape); });
    EXPECT_FALSE(Asker.ShowEntFrq({}).OkClicked);
}

} // namespace
} // namespace quoril::test
