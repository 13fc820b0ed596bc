// Save Bookmarked Parts: the dialog, the names, the files of every type.
#include "audiofile/AudioFileNames.h"
#include "audiofile/FileSurroundings.h"
#include "audiofile/ScriptedDialogs.h"
#include "base/ViewState.h"
#include "bookmarks/BookmarkRec.h"
#include "shell/BokMrkSavFrm.h"
#include "shell/WithDialog.h"

#include <QListWidget>
#include <fstream>
#include <gmock/gmock.h>

namespace quoril::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* NoBookmark =
    "No bookmark found\nPlease add few bookmarks before using this command";

struct ScriptedSav final : BokMrkSavDialog {
    ScriptedSav() { SetBokMrkSavDialog(this); }
    ~ScriptedSav() override { SetBokMrkSavDialog(nullptr); }
    ScriptedSav(const ScriptedSav&) = delete;
    ScriptedSav& operator=(const ScriptedSav&) = delete;
    void ShowBokMrkSav(BokMrkSaving& Saving) override {
        Shown.push_back(Saving);
        Saving.OkClicked = Ok;
        if (!Prefix.empty())
            Saving.Prefix = Prefix;
        for (const std::size_t Line : Cleared)
            Saving.Checked.at(Line) = false;
    }
    std::vector<BokMrkSaving> Shown;
    std::string Prefix;
    std::vector<std::size_t> Cleared;
    bool Ok = true;
};

class BookmarkPartsTest : public FileCommandsFixture {
  protected:
    BookmarkPartsTest() {
        Bookmarks.resize(1);
        OpenByDialog(WriteWav("song.wav", 1000, 44100, 2));
        Around.TakeCalls();
    }
    ~BookmarkPartsTest() override { Bookmarks.resize(1); }
    static void Add(const std::string& Name, std::int32_t From, std::int32_t To) {
        BookmarkAppend({Name, "", From == To ? BokPoint : BokRange, From, To, false});
    }
    [[nodiscard]] std::string Music(const std::string& Name) const {
        return Session.Path("music/" + Name);
    }
    [[nodiscard]] std::uintmax_t SizeOf(const std::string& Name) const {
        return fs::exists(Music(Name)) ? fs::file_size(Music(Name)) : 0;
    }
    void Run() { SaveBookmarkedParts(Around); }

    ScriptedSav Dialog;
};

TEST_F(BookmarkPartsTest, EachBookmarkGoesIntoAFileOfItsOwn) {
    Add(" one", 11, 110);
    Add("Point", 500, 500);
    const Bytes Whole = TestSession::ReadFile(Music("song.wav"));
    WaveChanged = BookmarkChanged = true;
    Run();
    ASSERT_EQ(Dialog.Shown.size(), 1U);
    EXPECT_THAT(Dialog.Shown[0].Names, ElementsAre(" one", "Point"));
    EXPECT_THAT(Dialog.Shown[0].Checked, ElementsAre(true, true));
    EXPECT_EQ(Dialog.Shown[0].Prefix, Music("song.wav"));
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("2 part files are saved"));
    const Bytes One = TestSession::ReadFile(Music("song one.wav"));
    ASSERT_EQ(One.size(), 44U + 400U);
    EXPECT_TRUE(std::equal(One.begin() + 44, One.end(), Whole.begin() + 44 + 40));
    EXPECT_EQ(SizeOf("songPoint.wav"), 44U + 4U) << "a point is one sample";
    EXPECT_THAT(Around.TakeCalls(), ElementsAre("release original"));
    EXPECT_TRUE(WaveChanged);
    EXPECT_TRUE(BookmarkChanged);
    EXPECT_EQ(WaveFileName, "song.wav");
}

TEST_F(BookmarkPartsTest, TheEndingChoosesTheType) {
    Add("x", 1, 100);
    const struct {
        const char* Prefix;
        const char* File;
        std::uintmax_t Size;
    } Cases[] = {{"p.wav", "px.wav", 444}, {"p.AU", "px.au", 424}, {"p.Raw", "px.raw", 400},
                 {"p.snd", "px.snd", 400}, {"p", "px.wav", 444},   {"p.txt", "p.txtx.wav", 444}};
    for (const auto& Case : Cases) {
        Dialog.Prefix = " " + Music(Case.Prefix) + " ";
        Run();
        EXPECT_EQ(SizeOf(Case.File), Case.Size) << Case.Prefix;
        EXPECT_EQ(Messages.TakeTexts().back(), "One file saved") << Case.Prefix;
        fs::remove(Music(Case.File));
    }
}

TEST_F(BookmarkPartsTest, Mp3PartsGoThroughTheEncoder) {
    const std::string Encoder = Session.WriteFile("enc", {});
    std::ofstream(Encoder) << "#!/bin/sh\ncp \"$3\" \"$4\"\n";
    fs::permissions(Encoder, fs::perms::owner_all);
    ChooseEncoder(EncoderMp3, Encoder);
    ScriptedEncoder Questions;
    Add("x", 1, 100);
    Dialog.Prefix = Music("p.mp3");
    Run();
    EXPECT_EQ(SizeOf("px.mp3"), 444U);
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("One file saved"));
    Questions.Ok = false;
    fs::remove(Music("px.mp3"));
    Run();
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("No file is saved"));
}

TEST_F(BookmarkPartsTest, AnEmptyPrefixIsTheNameOfTheFile) {
    EXPECT_EQ(BookmarkPartFile("", "x"), "songx.wav");
    EXPECT_EQ(BookmarkPartFile("/a.b/c", "x"), "/a.b/cx.wav");
    EXPECT_EQ(BookmarkPartFile("/a.b/c.MP3", "x.y"), "/a.b/cx.y.mp3");
}

TEST_F(BookmarkPartsTest, WithoutBookmarksTheDialogStillComesAndNothingIsWritten) {
    Run();
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(NoBookmark));
    ASSERT_EQ(Dialog.Shown.size(), 1U);
    EXPECT_THAT(Dialog.Shown[0].Names, IsEmpty());
    EXPECT_THAT(Around.TakeCalls(), IsEmpty());
}

TEST_F(BookmarkPartsTest, CancelAndNoCheckWriteNothing) {
    Add("x", 1, 100);
    Dialog.Ok = false;
    Run();
    EXPECT_THAT(Messages.Texts(), IsEmpty());
    Dialog.Ok = true;
    Dialog.Cleared = {0};
    Run();
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("No file is saved"));
    EXPECT_EQ(SizeOf("songx.wav"), 0U);
}

TEST_F(BookmarkPartsTest, FilesThatAreThereAreReplacedOnlyWhenTheUserSaysSo) {
    Add("a", 1, 100);
    Add("b", 1, 200);
    Session.WriteFile("music/songa.wav", {1, 2, 3});
    Run();
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("One of the files already exists.\nDo you want to replace it?"));
    EXPECT_EQ(SizeOf("songa.wav"), 3U);
    EXPECT_EQ(SizeOf("songb.wav"), 0U);
    Messages.Answer(MsgBoxAnswer::Yes);
    Run();
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("One of the files already exists.\nDo you want to replace it?",
                            "2 part files are saved"));
    EXPECT_EQ(SizeOf("songa.wav"), 444U);
    Run();
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("2 of the files already exist.\nDo you want to replace them?"));
}

TEST_F(BookmarkPartsTest, OfTwoWithOneNameTheLaterOneStays) {
    Add("a", 1, 100);
    Add("a", 1, 300);
    Run();
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("2 part files are saved"));
    EXPECT_EQ(SizeOf("songa.wav"), 44U + 1200U);
}

TEST_F(BookmarkPartsTest, ANameThatTheSystemRefusesIsToldAndTheOthersFollow) {
    Add("no/such", 1, 100);
    Add("good", 1, 100);
    Run();
    const std::string Bad = Music("songno/such.wav");
    EXPECT_THAT(
        Messages.TakeTexts(),
        ElementsAre("Wave file write error|No such file or directory\n" + Bad, "One file saved"));
    EXPECT_EQ(SizeOf("songgood.wav"), 444U);
}

TEST_F(BookmarkPartsTest, OneThatSticksOutOfTheDocumentMeansWhatLiesInIt) {
    Add("long", 901, 5000);
    Add("turned", 300, 201);
    Add("behind", 5000, 5000);
    Run();
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("3 part files are saved"));
    EXPECT_EQ(SizeOf("songlong.wav"), 44U + 400U);
    EXPECT_EQ(SizeOf("songturned.wav"), 44U + 400U);
    EXPECT_EQ(SizeOf("songbehind.wav"), 44U + 4U);
}

TEST_F(BookmarkPartsTest, ANamelessOneMayReplaceTheDocumentsOwnFileAndUndoStillWorks) {
    const Samples Left = LeftOf(*WaveStore);
    WaveStore->WaveDataDelete(1, 0, 500, "Delete", true);
    Add("", 1, 100);
    Messages.Answer(MsgBoxAnswer::Yes);
    Run();
    EXPECT_EQ(SizeOf("song.wav"), 444U);
    WaveStore->Undo();
    EXPECT_EQ(LeftOf(*WaveStore), Left);
}

// ---- The window

struct ScriptedFiles final : FileDialogs {
    std::optional<std::string> OpenFile(const FileDialogRequest&) override { return {}; }
    std::optional<std::string> SaveFile(const FileDialogRequest& Request) override {
        Last = Request;
        return Chosen;
    }
    FileDialogRequest Last;
    std::optional<std::string> Chosen;
};

class BokMrkSavFrmTest : public ::testing::Test {
  protected:
    static QListWidget* List(const QWidget* Window) {
        return Part<QListWidget>(Window, "BokMrkLst");
    }
    BokMrkSaving Saving{{"a", "\xC3\xA4 b", "c"}, {true, true, true}, "/m/caf\xE9.wav", false};
    ScriptedFiles Files;
    BokMrkSavAsker Asker{Files};
};

TEST_F(BokMrkSavFrmTest, ShowsTheBookmarksAndKeepsWhatIsCheckedAndThePrefix) {
    const WithDialog Act([](QWidget* Window) {
        EXPECT_EQ(Window->windowTitle(), "Save bookmarked parts");
        ASSERT_EQ(List(Window)->count(), 3);
        EXPECT_EQ(List(Window)->item(1)->text().toStdString(), "\xC3\xA4 b");
        ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
        EXPECT_TRUE(List(Window)->hasFocus());
        QTest::keyClick(List(Window), Qt::Key_Down);
        QTest::keyClick(List(Window), Qt::Key_Space);
        QTest::keyClick(Window, Qt::Key_Return);
    });
    Asker.ShowBokMrkSav(Saving);
    EXPECT_TRUE(Saving.OkClicked);
    EXPECT_THAT(Saving.Checked, ElementsAre(true, false, true));
    EXPECT_EQ(Saving.Prefix, "/m/caf\xE9.wav") << "bytes that are no text come back as they were";
}

TEST_F(BokMrkSavFrmTest, ButtonsCheckAndClearAll) {
    const WithDialog Act([](QWidget* Window) {
        EXPECT_EQ(Part<QPushButton>(Window, "SelectBtn_0")->text().remove('&'), "Select all");
        EXPECT_EQ(Part<QPushButton>(Window, "SelectBtn_1")->text().remove('&'), "Clear all");
        Press(Window, "SelectBtn_1");
        for (int Row = 0; Row < 3; ++Row)
            EXPECT_EQ(List(Window)->item(Row)->checkState(), Qt::Unchecked);
        PressByKey(Window, "SelectBtn_0");
        EXPECT_TRUE(Window->isVisible());
        for (int Row = 0; Row < 3; ++Row)
            EXPECT_EQ(List(Window)->item(Row)->checkState(), Qt::Checked);
        QTest::keyClick(Window, Qt::Key_Escape);
    });
    Asker.ShowBokMrkSav(Saving);
    EXPECT_FALSE(Saving.OkClicked);
}

TEST_F(BokMrkSavFrmTest, BrowseTakesANameAsThePrefix) {
    Files.Chosen = "/other/name";
    const WithDialog Act([](QWidget* Window) {
        Press(Window, "BrowseBtn");
        Press(Window, "OkBtn");
    });
    Asker.ShowBokMrkSav(Saving);
    EXPECT_EQ(Files.Last.Title, "Select a wave file name as a prefix name to save");
    EXPECT_EQ(Files.Last.Folder, "/m");
    EXPECT_EQ(Files.Last.FileName, "caf\xE9.wav");
    EXPECT_EQ(Files.Last.DefaultExtension, "wav");
    EXPECT_EQ(Files.Last.Filter, AudioFileFilter);
    EXPECT_EQ(Saving.Prefix, "/other/name.wav");
}

TEST_F(BokMrkSavFrmTest, WithoutBookmarksTheListSaysSoAndIsDisabled) {
    Saving = {};
    const WithDialog Act([](QWidget* Window) {
        ASSERT_EQ(List(Window)->count(), 1);
        EXPECT_EQ(List(Window)->item(0)->text(), "No bookmarks");
        EXPECT_FALSE(List(Window)->isEnabled());
        Press(Window, "SelectBtn_0");
        Press(Window, "OkBtn");
    });
    Asker.ShowBokMrkSav(Saving);
    EXPECT_TRUE(Saving.OkClicked);
    EXPECT_THAT(Saving.Checked, IsEmpty());
}

} // namespace
} // namespace quoril::test
