#include "shell/BokMrkEdtFrm.h"

#include "base/ViewState.h"
#include "shell/EditorFixture.h"
#include "shell/WithDialog.h"
#include "storage/FileMemoClass.h"
#include "support/TestSession.h"

#include <QAction>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace quoril::test {
namespace {

class BokMrkEdtFrmTest : public ::testing::Test {
  protected:
    BokMrkEdtFrmTest() {
        ViewFrom = 1;
        ViewTotal = 4000;
    }
    /// Edits a range from sample 800 to 1600 at 8000 Hz.
    BookmarkEditing Edit(std::function<void(QWidget*)> Do) {
        BookmarkRec Rec{"Verse", "first", BokRange, 800, 1600, false};
        BookmarkEditing Editing(BookmarkAsItStands, Rec, 8000);
        const WithDialog Act(std::move(Do));
        Asker.ShowBokMrkEdt(Editing);
        return Editing;
    }
    const TestSession Session;
    ScriptedMessages Messages;
    BokMrkEdtAsker Asker;
};

TEST_F(BokMrkEdtFrmTest, ShowsTheBookmarkUnderItsWords) {
    const BookmarkEditing Editing = Edit([](QWidget* Window) {
        EXPECT_EQ(Window->objectName(), "BokMrkEdtFrm");
        EXPECT_EQ(Window->windowTitle(), " Edit Bookmark");
        EXPECT_EQ(Part<QLineEdit>(Window, "NameTxt")->text(), "Verse");
        EXPECT_EQ(Part<QLineEdit>(Window, "RemarkTxt")->text(), "first");
        QStringList Headings;
        for (const QGroupBox* Box : Window->findChildren<QGroupBox*>())
            Headings << Box->title();
        EXPECT_EQ(Headings, (QStringList{"Type:", "Source:", "Positioning:"}));
        const std::pair<const char*, const char*> Rows[] = {
            {"TypOption_1", "Flag (One point)"},  {"TypOption_2", "Range (Two points)"},
            {"SrcOption_1", "Current Selection"}, {"SrcOption_2", "Current View"},
            {"SrcOption_3", "Enter Value"},       {"SrcOption_4", "Current Play"},
            {"PosOption_1", "Floating"},          {"PosOption_2", "Fixed"}};
        for (const auto& [Name, Caption] : Rows)
            EXPECT_EQ(Part<QRadioButton>(Window, Name)->text(), Caption);
        EXPECT_TRUE(Part<QRadioButton>(Window, "TypOption_2")->isChecked());
        EXPECT_TRUE(Part<QRadioButton>(Window, "SrcOption_3")->isChecked());
        EXPECT_FALSE(Part<QRadioButton>(Window, "SrcOption_1")->isEnabled());
        EXPECT_EQ(Part<QLineEdit>(Window, "EnterSamplesTxt_1")->text(), "800");
        EXPECT_EQ(Part<QLineEdit>(Window, "EnterSamplesTxt_2")->text(), "1600");
        EXPECT_EQ(Part<QLineEdit>(Window, "EnterTimeTxt_1")->text(), "0.100");
        EXPECT_EQ(Part<QLineEdit>(Window, "EnterTimeTxt_2")->text(), "0.200");
        EXPECT_TRUE(Part<QPushButton>(Window, "OkBtn")->isDefault());
        for (const QLineEdit* Box : Window->findChildren<QLineEdit*>())
            EXPECT_FALSE(Box->accessibleName().isEmpty()) << qPrintable(Box->objectName());
        QTest::keyClick(Window, Qt::Key_Escape);
    });
    EXPECT_FALSE(Editing.OkClicked);
}

TEST_F(BokMrkEdtFrmTest, TypingRewritesTheOtherBoxAndOkGivesWhatWasTyped) {
    const BookmarkEditing Editing = Edit([](QWidget* Window) {
        auto* const From = Part<QLineEdit>(Window, "EnterSamplesTxt_1");
        From->selectAll();
        QTest::keyClicks(From, "0400");
        EXPECT_EQ(From->text(), "0400") << "the box that is typed in stays";
        EXPECT_EQ(Part<QLineEdit>(Window, "EnterTimeTxt_1")->text(), "0.050");
        auto* const To = Part<QLineEdit>(Window, "EnterTimeTxt_2");
        To->selectAll();
        QTest::keyClicks(To, "1.5");
        EXPECT_EQ(Part<QLineEdit>(Window, "EnterSamplesTxt_2")->text(), "12000");
        Part<QLineEdit>(Window, "NameTxt")->setText("Refrain");
        Part<QLineEdit>(Window, "RemarkTxt")->setText("second");
        QTest::mouseClick(Part<QPushButton>(Window, "OkBtn"), Qt::LeftButton);
    });
    EXPECT_TRUE(Editing.OkClicked);
    EXPECT_EQ(Editing.Name, "Refrain");
    EXPECT_EQ(Editing.Remark, "second");
    EXPECT_EQ(Editing.PositionFrom, 400);
    EXPECT_EQ(Editing.PositionTo, 12000);
}

TEST_F(BokMrkEdtFrmTest, OnlyTypedPositionsHaveBoxesToTypeInAndAPointHasOnePair) {
    Edit([](QWidget* Window) {
        const auto Enabled = [Window](const char* Name) {
            return Part<QLineEdit>(Window, Name)->isEnabled();
        };
        Part<QRadioButton>(Window, "SrcOption_2")->click();
        for (const char* Name :
             {"EnterSamplesTxt_1", "EnterSamplesTxt_2", "EnterTimeTxt_1", "EnterTimeTxt_2"})
            EXPECT_FALSE(Enabled(Name)) << Name;
        EXPECT_EQ(Part<QLineEdit>(Window, "EnterSamplesTxt_2")->text(), "4001");
        Part<QRadioButton>(Window, "SrcOption_3")->click();
        EXPECT_EQ(Part<QLineEdit>(Window, "EnterSamplesTxt_2")->text(), "1600");
        EXPECT_TRUE(Enabled("EnterTimeTxt_2"));
        Part<QRadioButton>(Window, "TypOption_1")->click();
        EXPECT_TRUE(Enabled("EnterTimeTxt_1"));
        EXPECT_FALSE(Enabled("EnterSamplesTxt_2"));
        EXPECT_EQ(Part<QLineEdit>(Window, "EnterSamplesTxt_2")->text(), "800");
        QTest::mouseClick(Part<QPushButton>(Window, "CancelBtn"), Qt::LeftButton);
    });
}

class BookmarkMenuTest : public EditorFixture {};

TEST_F(BookmarkMenuTest, TheMenuAndTheKeyAddBookmarksToTheDocument) {
    std::string CommandLine = "\"";
    CommandLine.append(WriteWav("bookmarked.wav", 20000)).append("\"");
    Start(CommandLine);
    Menu("Bookmark_Add_Mnu_0");
    EXPECT_EQ(Messages->TakeTexts().back(), "Add BookMark Failed|No selection found");
    SelStart = 101;
    SelEnd = 200;
    const auto Press = [](QWidget* Window) {
        EXPECT_EQ(Window->windowTitle(), " Add New Bookmark");
        QTest::mouseClick(Part<QPushButton>(Window, "OkBtn"), Qt::LeftButton);
    };
    {
        const WithDialog Act(Press);
        QTest::keyClick(&Window(), Qt::Key_B);
    }
    {
        const WithDialog Act(Press);
        Menu("Bookmark_Add_Mnu_1");
    }
    ASSERT_EQ(BookmarkNos(), 2);
    EXPECT_EQ(Bookmarks[1].Name, "New-1");
    EXPECT_EQ(Bookmarks[1].From, 101);
    EXPECT_EQ(Bookmarks[1].To, 200);
    EXPECT_EQ(Bookmarks[2].To, 20000);
}

} // namespace
} // namespace quoril::test
