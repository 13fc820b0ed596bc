#include "shell/CompMonoFrm.h"

#include "shell/WithDialog.h"

#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <gtest/gtest.h>

namespace quoril::test {
namespace {

TEST(CompMonoFrm, ShowsItsWordsWithBothChannelsToBeMerged) {
    CompMonoAsker Asker;
    const WithDialog Act([](QWidget* Window) {
        EXPECT_EQ(Window->objectName(), "CompMonoFrm");
        EXPECT_EQ(Window->windowTitle(), "Convert to Mono");
        ASSERT_EQ(Window->findChildren<QGroupBox*>().size(), 1);
        EXPECT_EQ(Window->findChild<QGroupBox*>()->title(), "Choose your option:");
        const std::pair<const char*, const char*> Rows[] = {{"MonoOpn_0", "Trench Right Channel"},
                                                            {"MonoOpn_1", "Trench Left Channel"},
                                                            {"MonoOpn_2", "Merge Both Channels"}};
        for (const auto& [Name, Caption] : Rows) {
            const auto* Option = Part<QRadioButton>(Window, Name);
            EXPECT_EQ(Option->text().remove('&'), Caption);
            EXPECT_EQ(Option->accessibleName(), Caption);
            EXPECT_EQ(Option->isChecked(), QString(Name).endsWith("_2"));
        }
        EXPECT_TRUE(Part<QPushButton>(Window, "OkBtn")->isDefault());
        EXPECT_EQ(Window->focusWidget(), Part<QRadioButton>(Window, "MonoOpn_2"));
        Press(Window, "OkBtn");
    });
    const CompMonoAnswer Answer = Asker.ShowCompMono();
    EXPECT_TRUE(Answer.OkClicked);
    EXPECT_EQ(Answer.MonoOpn, MergeBoth);
}

TEST(CompMonoFrm, EachOptionIsChosenByMouseAndByItsKey) {
    CompMonoAsker Asker;
    for (const auto& [Name, Key, Way] : {std::tuple("MonoOpn_0", Qt::Key_R, TrenchRight),
                                         {"MonoOpn_1", Qt::Key_L, TrenchLeft},
                                         {"MonoOpn_2", Qt::Key_M, MergeBoth}})
        for (const bool ByKey : {false, true}) {
            const WithDialog Act([Name = Name, Key = Key, ByKey](QWidget* Window) {
                ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
                if (ByKey)
                    QTest::keyClick(Window, Key, Qt::AltModifier); // chosen at once
                else
                    Part<QRadioButton>(Window, Name)->click();
                QTest::keyClick(Window->focusWidget(), Qt::Key_Return);
            });
            const CompMonoAnswer Answer = Asker.ShowCompMono();
            EXPECT_TRUE(Answer.OkClicked) << Name;
            EXPECT_EQ(Answer.MonoOpn, Way) << ByKey;
        }
}

TEST(CompMonoFrm, ArrowsAndTabWorkIt) {
    CompMonoAsker Asker;
    const WithDialog Act([](QWidget* Window) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
        QTest::keyClick(Window->focusWidget(), Qt::Key_Up);
        EXPECT_TRUE(Part<QRadioButton>(Window, "MonoOpn_1")->isChecked());
        QTest::keyClick(Window->focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(Window->focusWidget(), Part<QPushButton>(Window, "OkBtn"));
        QTest::keyClick(Window->focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(Window->focusWidget(), Part<QPushButton>(Window, "CancelBtn"));
        QTest::keyClick(Window->focusWidget(), Qt::Key_Return);
        EXPECT_FALSE(Window->isVisible());
    });
    EXPECT_FALSE(Asker.ShowCompMono().OkClicked);
}

TEST(CompMonoFrm, CancelEscAndClosingAreNoAnswer) {
    CompMonoAsker Asker;
    for (const std::function<void(QWidget*)>& Away :
         {std::function<void(QWidget*)>([](QWidget* Window) { Press(Window, "CancelBtn"); }),
          std::function<void(QWidget*)>(
              [](QWidget* Window) { QTest::keyClick(Window, Qt::Key_Escape); }),
          std::function<void(QWidget*)>([](QWidget* Window) { Window->close(); })}) {
        const WithDialog Act(Away);
        EXPECT_FALSE(Asker.ShowCompMono().OkClicked);
    }
}

} // namespace
} // namespace quoril::test
