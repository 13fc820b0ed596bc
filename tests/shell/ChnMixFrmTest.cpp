#include "shell/ChnMixFrm.h"

#include "shell/WithDialog.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <gtest/gtest.h>
#include <tuple>

namespace quoril::test {
namespace {

TEST(ChnMixFrm, ShowsItsWordsAndTheGivenSources) {
    ChnMixAsker Asker;
    const WithDialog Act([](QWidget* Window) {
        EXPECT_EQ(Window->objectName(), "ChnMixFrm");
        EXPECT_EQ(Window->windowTitle(), "Channel Mix");
        const QStringList Items = {"Left",         "Right",        "Average", "Left + Right",
                                   "Left - Right", "Right - Left", "Silence"};
        for (const auto& [Name, Label, Chosen] :
             {std::tuple("LeftSrcCmb", "LeftDescCmb", "Right - Left"),
              std::tuple("RightSrcCmb", "RightDescCmb", "Left")}) {
            auto* Box = Part<QComboBox>(Window, Name);
            QStringList Shown;
            for (int Index = 0; Index < Box->count(); ++Index)
                Shown << Box->itemText(Index);
            EXPECT_EQ(Shown, Items) << Name;
            EXPECT_EQ(Box->currentText(), Chosen);
            EXPECT_FALSE(Box->isEditable());
            EXPECT_FALSE(Box->accessibleName().isEmpty());
            EXPECT_EQ(Part<QLabel>(Window, Label)->buddy(), Box);
        }
        EXPECT_TRUE(Part<QPushButton>(Window, "OkBtn")->isDefault());
        EXPECT_EQ(Window->focusWidget(), Part<QComboBox>(Window, "LeftSrcCmb"));
        Press(Window, "OkBtn");
    });
    const ChnMixAnswer Answer = Asker.ShowChnMix({MixRightLessLeft, MixLeft});
    EXPECT_TRUE(Answer.OkClicked);
    EXPECT_EQ(Answer.Choice, (ChnMixChoice{MixRightLessLeft, MixLeft}));
}

TEST(ChnMixFrm, IsWorkedByKeysAlone) {
    ChnMixAsker Asker;
    const WithDialog Act([](QWidget* Window) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_End);
        QTest::keyClick(Window, Qt::Key_R, Qt::AltModifier);
        EXPECT_TRUE(Part<QComboBox>(Window, "RightSrcCmb")->hasFocus());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Home);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
        QTest::keyClick(Window, Qt::Key_Return);
    });
    const ChnMixAnswer Answer = Asker.ShowChnMix({});
    EXPECT_TRUE(Answer.OkClicked);
    EXPECT_EQ(Answer.Choice, (ChnMixChoice{MixSilence, MixRight}));
}

TEST(ChnMixFrm, CancelAndEscAreNoAnswer) {
    ChnMixAsker Asker;
    {
        const WithDialog Act([](QWidget* Window) { Press(Window, "CancelBtn"); });
        EXPECT_FALSE(Asker.ShowChnMix({}).OkClicked);
    }
    const WithDialog Act([](QWidget* Window) { QTest::keyClick(Window, Qt::Key_Escape); });
    EXPECT_FALSE(Asker.ShowChnMix({}).OkClicked);
}

} // namespace
} // namespace quoril::test
