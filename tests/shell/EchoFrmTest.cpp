#include "shell/EchoFrm.h"

#include "settings/STD1.h"
#include "shell/WithDialog.h"
#include "support/TestSession.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <gtest/gtest.h>

namespace quoril::test {
namespace {

class EchoFrmTest : public ::testing::Test {
  protected:
    static QLineEdit* Field(const QWidget* Window, int Number) {
        return Part<QLineEdit>(Window, qPrintable(QStringLiteral("EcoTxt_%1").arg(Number)));
    }
    /// Types over what a field shows, and leaves it.
    static void Enter(QWidget* Window, int Number, const char* Text) {
        Field(Window, Number)->setFocus();
        Field(Window, Number)->selectAll();
        QTest::keyClicks(Field(Window, Number), Text);
        Field(Window, Number == 1 ? 2 : 1)->setFocus();
    }
    static std::string Setting() { return IniGet("Effects", "Echo", "none"); }

    const TestSession Session;
    EchoAsker Asker;
    EchoParamsRec Params;
};

TEST_F(EchoFrmTest, ShowsItsWordsAndTheGivenValues) {
    Params = {0.25F, 1.5F, 12, 95, 0, 42};
    const WithDialog Act([](QWidget* Window) {
        EXPECT_EQ(Window->objectName(), "EchoFrm");
        EXPECT_EQ(Window->windowTitle(), "Enter Echo Parameters:");
        const QString Captions[] = {"First Delay: (Sec.)",  "Next Delays: (Sec)",
                                    "No of repeats:",       "Volume Reduction: (%)\n(Over all)",
                                    "Delay variation: (%)", "Volume Reduction: (%)\n(Hi Fi)"};
        const QString Values[] = {"0.25", "1.5", "12", "95", "0", "42"};
        for (int Number = 1; Number <= 6; ++Number) {
            auto* Label = Part<QLabel>(Window, qPrintable(QStringLiteral("EcoLbl_%1").arg(Number)));
            EXPECT_EQ(Label->text().remove('&'), Captions[Number - 1]);
            EXPECT_EQ(Label->buddy(), Field(Window, Number));
            EXPECT_EQ(Field(Window, Number)->text(), Values[Number - 1]);
            EXPECT_FALSE(Field(Window, Number)->accessibleName().isEmpty());
        }
        EXPECT_EQ(Part<QPushButton>(Window, "OkBtn")->text().remove('&'), "Ok");
        EXPECT_EQ(Part<QPushButton>(Window, "CancelBtn")->text().remove('&'), "Cancel");
        EXPECT_TRUE(Part<QPushButton>(Window, "OkBtn")->isDefault());
        EXPECT_EQ(Window->focusWidget(), Field(Window, 1));
        Press(Window, "OkBtn");
    });
    EXPECT_TRUE(Asker.ShowEcho(Params));
    EXPECT_EQ(Params, (EchoParamsRec{0.25F, 1.5F, 12, 95, 0, 42}));
    EXPECT_EQ(Setting(), "0.25,1.5,12,95,0,42");
}

TEST_F(EchoFrmTest, AValueThatPassesIsStoredWhenItsFieldIsLeft) {
    const WithDialog Act([this](QWidget* Window) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
        Enter(Window, 1, "0.5");
        EXPECT_EQ(Params.FirstDelay, 0.5F);
        Enter(Window, 3, "7");
        EXPECT_EQ(Params.Repeats, 7);
        EXPECT_EQ(Setting(), "none");
        Press(Window, "OkBtn");
    });
    EXPECT_TRUE(Asker.ShowEcho(Params));
    EXPECT_EQ(Setting(), "0.5,0.06,7,80,10,100");
}

TEST_F(EchoFrmTest, AValueThatMakesNoSenseIsPutBackWhenItsFieldIsLeft) {
    const WithDialog Act([this](QWidget* Window) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
        const char* Wrong[] = {"0", "100.5", "101", "201", "-1", "x"};
        const char* Shown[] = {"0.08", "0.06", "5", "80", "10", "100"};
        for (int Number = 1; Number <= 6; ++Number) {
            Enter(Window, Number, Wrong[Number - 1]);
            EXPECT_EQ(Field(Window, Number)->text(), Shown[Number - 1]);
        }
        // The same value in other words is put back, too.
        Enter(Window, 4, "80.0");
        EXPECT_EQ(Field(Window, 4)->text(), "80");
        EXPECT_EQ(Params, EchoParamsRec{});
        Press(Window, "OkBtn");
    });
    EXPECT_TRUE(Asker.ShowEcho(Params));
    EXPECT_EQ(Setting(), "0.08,0.06,5,80,10,100");
}

TEST_F(EchoFrmTest, ReturnInAFieldLeavesItAndAccepts) {
    const WithDialog Act([](QWidget* Window) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
        QTest::keyClicks(QApplication::focusWidget(), "0.3");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    });
    EXPECT_TRUE(Asker.ShowEcho(Params));
    EXPECT_EQ(Setting(), "0.3,0.06,5,80,10,100");
}

TEST_F(EchoFrmTest, TheKeyOfTheButtonLeavesTheFieldToo) {
    const WithDialog Act([](QWidget* Window) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
        QTest::keyClick(Window, Qt::Key_H, Qt::AltModifier);
        EXPECT_TRUE(Field(Window, 6)->hasFocus());
        QTest::keyClicks(QApplication::focusWidget(), "77");
        QTest::keyClick(Window, Qt::Key_O, Qt::AltModifier);
    });
    EXPECT_TRUE(Asker.ShowEcho(Params));
    EXPECT_EQ(Params.VolReduceHiFi, 77);
    EXPECT_EQ(Setting(), "0.08,0.06,5,80,10,77");
}

TEST_F(EchoFrmTest, CancelAndEscKeepWhatWasLeftAndWriteNoSetting) {
    for (const bool ByKey : {false, true}) {
        const WithDialog Act([=](QWidget* Window) {
            ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
            QTest::keyClicks(QApplication::focusWidget(), ByKey ? "2" : "3");
            if (ByKey)
                QTest::keyClick(Window, Qt::Key_Escape);
            else
                Press(Window, "CancelBtn");
        });
        EXPECT_FALSE(Asker.ShowEcho(Params));
        EXPECT_EQ(Params.FirstDelay, ByKey ? 2 : 3);
        EXPECT_EQ(Setting(), "none");
    }
}

TEST_F(EchoFrmTest, TheTabKeyGoesFromTopToBottom) {
    const WithDialog Act([](QWidget* Window) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
        for (const char* Name : {"EcoTxt_1", "EcoTxt_2", "EcoTxt_3", "EcoTxt_4", "EcoTxt_5",
                                 "EcoTxt_6", "OkBtn", "CancelBtn", "EcoTxt_1"}) {
            EXPECT_EQ(QApplication::focusWidget()->objectName(), Name);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        Press(Window, "CancelBtn");
    });
    EXPECT_FALSE(Asker.ShowEcho(Params));
}

} // namespace
} // namespace quoril::test
