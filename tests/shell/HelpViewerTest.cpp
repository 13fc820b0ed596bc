#include "shell/HelpViewer.h"
#include "shell/HelpTopics.h"
#include "shell/HelpViewerFrm.h"
#include "support/ScriptedMessages.h"
#include "support/TempFolder.h"
#include "support/TestSession.h"

#include <QTextBrowser>
#include <gtest/gtest.h>

namespace quoril {

namespace {

class HelpViewerTest : public ::testing::Test {
  protected:
    HelpViewerTest() { HelpFileName = HELP_FILE; }
    ~HelpViewerTest() override { HelpTakeDown(); }

    const test::TestSession Session;
    test::ScriptedMessages Messages;
};

TEST_F(HelpViewerTest, opens_at_the_page_of_the_topic) {
    ASSERT_TRUE(ShowHelp(HelpKeys));
    ASSERT_NE(HelpWindow(), nullptr);
    EXPECT_EQ(HelpWindow()->Page(), "keys.html");
    EXPECT_TRUE(HelpWindow()->isVisible());
    const auto* Page = HelpWindow()->findChild<QTextBrowser*>(QStringLiteral("PageBrowser"));
    EXPECT_TRUE(Page->toPlainText().startsWith(QStringLiteral("Keys")));
}

TEST_F(HelpViewerTest, a_missing_file_gives_a_message_that_names_it) {
    HelpFileName = Session.Path("none.qch");
    EXPECT_FALSE(ShowHelp(HelpKeys));
    EXPECT_EQ(HelpWindow(), nullptr);
    EXPECT_EQ(Messages.TakeTexts(),
              (std::vector<std::string>{"Help|There is no help file " + HelpFileName + "."}));
}

} // namespace

} // namespace quoril
