#include "shell/BokMrkFrm.h"

#include "audiofile/DocumentFile.h"
#include "base/DocumentState.h"
#include "bookmarks/BookmarkEditMod.h"
#include "bookmarks/BookmarkFileMod.h"
#include "bookmarks/BookmarkRec.h"
#include "shell/EditorFixture.h"
#include "shell/WithDialog.h"
#include "storage/FileMemoClass.h"
#include "support/TestSession.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>

namespace quoril::test {
namespace {

using ::testing::ElementsAre;

class BokMrkFrmTest : public ::testing::Test, public FileDialogs, public BokMrkEdtDialog {
  protected:
    BokMrkFrmTest() {
        WaveStore = std::make_unique<FileMemoClass>();
        WaveStore->WavFmtFreq = 1000;
        WaveFileName = "song.wav";
        Bookmarks.assign(1, {});
        Bookmarks.push_back({"point", "remark", BokPoint, 1500, 1500, false});
        Bookmarks.push_back({"range", "", BokRange, 1000, 2999, false});
        SetBokMrkEdtDialog(this);
    }
    ~BokMrkFrmTest() override {
        SetBokMrkEdtDialog(nullptr);
        WaveStore.reset();
    }
    std::optional<std::string> OpenFile(const FileDialogRequest& Request) override {
        Asked = Request;
        return Path;
    }
    std::optional<std::string> SaveFile(const FileDialogRequest& Request) override {
        return OpenFile(Request);
    }
    void ShowBokMrkEdt(BookmarkEditing& Editing) override { Editing.OkClicked = true; }
    std::int32_t Show(BokMrkModes Mode, std::function<void(QWidget*)> Do) {
        const WithDialog Act(std::move(Do));
        return Asker.ShowBokMrk(Mode);
    }

    const TestSession Session;
    ScriptedMessages Messages;
    BokMrkAsker Asker{*this};
    FileDialogRequest Asked;
    std::optional<std::string> Path;
};

TEST_F(BokMrkFrmTest, InChooseModeItGivesTheChosenLine) {
    EXPECT_EQ(Show(BokMrkChoose,
                   [](QWidget* Window) {
                       EXPECT_EQ(Window->windowTitle(), " Choose a bookmark name");
                       EXPECT_TRUE(Part<QWidget>(Window, "ButtonsFrame_1")->isVisible());
                       EXPECT_FALSE(Part<QWidget>(Window, "ButtonsFrame_0")->isVisible());
                       EXPECT_EQ(Part<QLabel>(Window, "NameLbl")->text(),
                                 "Select an item from list");
                       auto* List = Part<QListWidget>(Window, "BookMarkLst");
                       EXPECT_EQ(List->count(), 2);
                       List->setCurrentRow(1);
                       EXPECT_EQ(Part<QLabel>(Window, "NameLbl")->text(), "range");
                       EXPECT_EQ(Part<QLabel>(Window, "FromToLbl_2")->text(), "To:");
                       EXPECT_EQ(Part<QLabel>(Window, "PosiLbl_4")->text(), "Duration: 2.000 Sec");
                       Press(Window, "OkBtn");
                   }),
              2);
    for (const auto& By : {Press, PressByKey})
        EXPECT_EQ(Show(BokMrkChoose,
                       [By](QWidget* Window) {
                           Part<QListWidget>(Window, "BookMarkLst")->setCurrentRow(1);
                           By(Window, "CancelBtn");
                       }),
                  0);
    EXPECT_EQ(Show(BokMrkChoose, [](QWidget* Window) { Press(Window, "OkBtn"); }), 0)
        << "no line is chosen at first";
}

TEST_F(BokMrkFrmTest, ADoubleClickIsOkInChooseMode) {
    EXPECT_EQ(Show(BokMrkChoose,
                   [](QWidget* Window) {
                       auto* List = Part<QListWidget>(Window, "BookMarkLst");
                       const QPoint Place = List->visualItemRect(List->item(0)).center();
                       QTest::mouseClick(List->viewport(), Qt::LeftButton, {}, Place);
                       QTest::mouseDClick(List->viewport(), Qt::LeftButton, {}, Place);
                   }),
              1);
}

TEST_F(BokMrkFrmTest, InManageModeItsButtonsChangeTheList) {
    Show(BokMrkManage, [this](QWidget* Window) {
        EXPECT_EQ(Window->windowTitle(), " Manage Book Marks");
        EXPECT_FALSE(Part<QWidget>(Window, "ButtonsFrame_1")->isVisible());
        auto* List = Part<QListWidget>(Window, "BookMarkLst");
        Press(Window, "EditBtn");
        Press(Window, "DeleteBtn");
        EXPECT_THAT(Messages.TakeTexts(),
                    ElementsAre("Select a bookmark to edit", "Select a bookmark to delete"));
        Press(Window, "AddBtn");
        EXPECT_EQ(List->count(), 3);
        EXPECT_EQ(List->item(2)->text(), "New-3");
        List->setCurrentRow(0);
        EXPECT_EQ(Part<QLabel>(Window, "PosiLbl_4")->text(), "(One Position)");
        Messages.Answer(MsgBoxAnswer::Yes);
        Press(Window, "DeleteBtn");
        EXPECT_EQ(List->count(), 2);
        EXPECT_EQ(Part<QLabel>(Window, "NameLbl")->text(), "Select an item from list");
        Press(Window, "CloseBtn");
    });
    EXPECT_TRUE(BookmarkChanged);
}

TEST_F(BokMrkFrmTest, LoadAndSaveAskForAFileBesideTheSound) {
    Show(BokMrkManage, [this](QWidget* Window) {
        auto* List = Part<QListWidget>(Window, "BookMarkLst");
        Press(Window, "SaveBtn"); // cancelled
        EXPECT_EQ(Asked.Title, "Choose file name to save Bookmark");
        EXPECT_EQ(Asked.FileName, "song.bok");
        EXPECT_EQ(Asked.DefaultExtension, "bok");
        EXPECT_EQ(Asked.Filter, "Bookmark files (*.bok)|*.bok|All files (*.*)|*.*");
        Path = Session.Path("kept.bok");
        Press(Window, "SaveBtn");
        EXPECT_TRUE(std::filesystem::exists(*Path));
        Bookmarks.assign(1, {});
        Press(Window, "LoadBtn");
        EXPECT_EQ(Asked.Title, "Choose a file to load Bookmark");
        EXPECT_EQ(List->count(), 2);
        Path = Session.Path("nothing.bok");
        Press(Window, "LoadBtn");
        EXPECT_THAT(Messages.TakeTexts(), ElementsAre("File Not found"));
        Path = Session.Path("no folder/a.bok");
        Press(Window, "SaveBtn");
        const auto Told = Messages.TakeTexts();
        ASSERT_EQ(Told.size(), 1U);
        EXPECT_TRUE(Told[0].starts_with("Save Bookmark Error|")) << Told[0];
        Press(Window, "CloseBtn");
    });
}

TEST_F(BokMrkFrmTest, WhatIsLoadedCountsAsChanged) {
    Path = Session.Path("kept.bok");
    Show(BokMrkManage, [](QWidget* Window) {
        Press(Window, "SaveBtn");
        BookmarkChanged = false;
        Press(Window, "LoadBtn"); // nobody answers what becomes of those that are there
        EXPECT_FALSE(BookmarkChanged);
        Bookmarks.assign(1, {});
        Press(Window, "LoadBtn");
        EXPECT_EQ(BookmarkNos(), 2);
        EXPECT_TRUE(BookmarkChanged);
        Press(Window, "CloseBtn");
    });
}

TEST_F(BokMrkFrmTest, AFileThatTheDialogAskedAboutIsReplacedWithoutAnotherQuestion) {
    Path = Session.WriteFile("song.bok", {1, 2, 3});
    Show(BokMrkManage, [](QWidget* Window) {
        Press(Window, "SaveBtn");
        Press(Window, "CloseBtn");
    });
    EXPECT_TRUE(Asked.OverwritePrompt);
    EXPECT_THAT(Messages.TakeTexts(), ::testing::IsEmpty());
    Bookmarks.assign(1, {});
    LoadBookmarks(*Path);
    EXPECT_EQ(BookmarkNos(), 2);
}

} // namespace
} // namespace quoril::test
