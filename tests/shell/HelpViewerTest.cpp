// The help window and the key F1, with the help that the build has compiled.
#include "shell/HelpViewer.h"

#include "gui/WindowFixture.h"
#include "settings/STD1.h"
#include "shell/HelpTopics.h"
#include "shell/HelpViewerFrm.h"
#include "support/TempFolder.h"
#include "view/ValueLabel.h"
#include "view/WavePanel.h"

#include <QDialog>
#include <QHelpContentWidget>
#include <QHelpIndexWidget>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QTabWidget>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>

#include <filesystem>

namespace quoril::test {

namespace {

class HelpViewerTest : public WindowTest {
  protected:
    HelpViewerTest() {
        HelpFileName = HELP_FILE;
        HelpSetUp(*Window);
    }
    ~HelpViewerTest() override { HelpTakeDown(); }

    /// The page that the help shows; empty without a window.
    static std::string Page() { return HelpWindow() == nullptr ? "" : HelpWindow()->Page(); }
    template <class Kind>
    static Kind* InHelp(const char* Name) {
        auto* Found = HelpWindow()->findChild<Kind*>(QLatin1String(Name));
        EXPECT_NE(Found, nullptr) << Name;
        return Found;
    }
    static std::string Shown() {
        return InHelp<QTextBrowser>("PageBrowser")->toPlainText().toStdString();
    }
    /// The message of a help that can not be opened from that file.
    std::string MessageFor(const std::string& File) {
        HelpFileName = File;
        EXPECT_FALSE(ShowHelp(HelpOverview));
        EXPECT_EQ(HelpWindow(), nullptr);
        const std::vector<std::string> Texts = Messages.TakeTexts();
        EXPECT_EQ(Texts.size(), 1U);
        return Texts.empty() ? std::string() : Texts.front();
    }
};

// ---- Which topic

TEST_F(HelpViewerTest, TheEntriesOfTheHelpMenuOpenTheirTopics) {
    const std::vector<std::string> Pages = {"index.html", "start.html", "mouse.html", "keys.html"};
    for (std::size_t Index = 0; Index < Pages.size(); ++Index) {
        Window->Entry("Help_Mnu_" + std::to_string(Index))->trigger();
        EXPECT_EQ(Page(), Pages[Index]);
    }
    EXPECT_TRUE(HelpWindow()->isVisible());
    EXPECT_EQ(Shown().substr(0, 4), "Keys");
}

TEST_F(HelpViewerTest, PagesShowTheirPictures) {
    ASSERT_TRUE(ShowHelp(HelpContextOf("Options_Mnu")));
    const QVariant Picture = InHelp<QTextBrowser>("PageBrowser")
                                 ->loadResource(QTextDocument::ImageResource,
                                                QUrl(QStringLiteral("../pictures/options.png")));
    EXPECT_FALSE(QImage::fromData(Picture.toByteArray()).isNull());
}

TEST_F(HelpViewerTest, F1OpensTheTopicOfTheControlThatItIsPressedOn) {
    Show();
    QTest::keyClick(Window->Wave_Pic[1], Qt::Key_F1);
    EXPECT_EQ(Page(), "window.html#waveform");
    QTest::keyClick(Window->SelectLbl[2], Qt::Key_F1);
    EXPECT_EQ(Page(), "window.html#values");
    QTest::keyClick(Window->ToolButton("ViewToolbar", "ZoomOut"), Qt::Key_F1);
    EXPECT_EQ(Page(), "view.html#zoom-out");
    QTest::keyClick(Window->ToolButton("EditToolbar", "Cut"), Qt::Key_F1);
    EXPECT_EQ(Page(), "copy.html#cut");
    QTest::keyClick(Window.get(), Qt::Key_F1);
    EXPECT_EQ(Page(), "window.html");
}

TEST_F(HelpViewerTest, F1OnAButtonWithoutATopicOpensThatOfItsToolbar) {
    Show();
    for (const char* Name : {"EditToolbar", "PlayToolbar"}) {
        auto* Toolbar = Window->findChild<QToolBar*>(QLatin1String(Name));
        ASSERT_NE(Toolbar, nullptr);
        auto* Button = new QToolButton(Toolbar);
        Button->setObjectName(QStringLiteral("UnknownBtn"));
        EXPECT_EQ(HelpContextOf(Button->objectName().toStdString()), 0);
        EXPECT_EQ(HelpContextAt(Button), HelpContextOf(Name));
        QTest::keyClick(Button, Qt::Key_F1);
        EXPECT_EQ(Page(), HelpPageOf(HelpContextOf(Name)));
    }
}

TEST_F(HelpViewerTest, F1InAnOpenMenuOpensTheTopicOfTheHighlightedEntry) {
    Show();
    QMenu* Menu = nullptr;
    for (QAction* Action : Window->menuBar()->actions())
        if (Action->objectName() == QStringLiteral("View_Menu"))
            Menu = Action->menu();
    ASSERT_NE(Menu, nullptr);
    Menu->popup(QPoint(10, 10));
    Menu->setActiveAction(Window->Entry("Zoom_Mnu_4"));
    ASSERT_EQ(QApplication::activePopupWidget(), Menu);
    QTest::keyClick(Menu, Qt::Key_F1);
    EXPECT_EQ(Page(), "view.html#one-to-one");
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(HelpViewerTest, F1OnAnEntryWithoutACommandOpensTheOverview) {
    EXPECT_EQ(HelpContextAt(Window->Entry("MnuRevSpchTech")), HelpOverview);
    EXPECT_EQ(HelpContextAt(nullptr), HelpOverview);
}

TEST_F(HelpViewerTest, F1InADialogOpensItsTopicInAWindowThatCanBeUsed) {
    Show();
    QTimer::singleShot(0, [] {
        QWidget* Dialog = QApplication::activeModalWidget();
        ASSERT_NE(Dialog, nullptr);
        QTest::keyClick(Dialog->findChild<QLineEdit*>(QStringLiteral("EnterDurTxt")), Qt::Key_F1);
        EXPECT_EQ(Page(), "dialogs.html#enter-value");
        // What belongs to the dialog is not shut out by it.
        EXPECT_EQ(HelpWindow()->parentWidget(), Dialog);
        QTest::keyClick(Dialog, Qt::Key_Escape);
    });
    Window->SelectLbl[1]->Clicked();
    ASSERT_NE(HelpWindow(), nullptr) << "the help went with the dialog";
    EXPECT_TRUE(HelpWindow()->isVisible());
    EXPECT_EQ(HelpWindow()->parentWidget(), Window.get());
}

TEST_F(HelpViewerTest, F1InADialogWithoutATopicOpensTheOverview) {
    QDialog Dialog(Window.get());
    Dialog.setObjectName(QStringLiteral("UnknownFrm"));
    EXPECT_EQ(HelpContextAt(&Dialog), HelpOverview);
}

TEST_F(HelpViewerTest, F1WithAnotherKeyIsLeftAlone) {
    Show();
    QTest::keyClick(Window->Wave_Pic[1], Qt::Key_F1, Qt::ShiftModifier);
    EXPECT_EQ(HelpWindow(), nullptr);
}

TEST_F(HelpViewerTest, ControlsNamedInTheTableAreInTheMainWindow) {
    // Parts of other windows, and what the playing brings along. Those of the recording window are
    // looked for where it is tested.
    constexpr int RecordingFirst = 372;
    constexpr int RecordingLast = 376;
    const std::vector<std::string> Others = {
        "BandPassPic", "BandPlayPic", "SpeedBoxPic", "ColorDialog", "FolderDialog", "FileDialog",
        "MsgBox",      "TabFrame_0",  "TabFrame_1",  "TabFrame_2",  "TabFrame_3",   "TabFrame_4"};
    for (const HelpPlace& Place : HelpPlaces()) {
        const QString Name = QLatin1String(Place.Control);
        const bool WindowOfItsOwn = Name.endsWith(QStringLiteral("Frm"));
        const bool OfRecording = Place.Number >= RecordingFirst && Place.Number <= RecordingLast;
        if (WindowOfItsOwn || OfRecording ||
            std::ranges::find(Others, Place.Control) != Others.end())
            continue;
        bool Found = Window->findChild<QObject*>(Name) != nullptr;
        for (int Index = 0; Index <= 2 && !Found; ++Index)
            Found = Window->findChild<QObject*>(Name + QStringLiteral("_%1").arg(Index)) != nullptr;
        EXPECT_TRUE(Found) << Place.Control;
    }
}

// ---- The window

TEST_F(HelpViewerTest, OpensEveryTopicWithItsHeading) {
    for (const HelpTopic& Topic : HelpTopics()) {
        ASSERT_TRUE(ShowHelp(Topic.Number));
        EXPECT_EQ(Page(), Topic.Page);
        EXPECT_EQ(Shown().find("The help has no page"), std::string::npos) << Topic.Page;
    }
}

TEST_F(HelpViewerTest, ATopicInTheMiddleOfAPageIsScrolledTo) {
    Show();
    ShowHelp(HelpOverview);
    HelpWindow()->resize(700, 300);
    QApplication::processEvents();
    ShowHelp(HelpContextOf("Save_Mnu_0"));
    const auto* Browser = InHelp<QTextBrowser>("PageBrowser");
    const QString Top = Browser->cursorForPosition(QPoint(20, 8)).block().text();
    EXPECT_EQ(Top.toStdString(), "Save");
}

TEST_F(HelpViewerTest, TheHeadingOfTheTopicIsMarked) {
    ShowHelp(HelpContextOf("Close_Mnu"));
    const auto* Browser = InHelp<QTextBrowser>("PageBrowser");
    ASSERT_EQ(Browser->extraSelections().size(), 1);
    EXPECT_EQ(Browser->extraSelections().first().cursor.block().text().toStdString(), "Close");
    ShowHelp(HelpOverview);
    EXPECT_EQ(Browser->extraSelections().size(), 0);
}

TEST_F(HelpViewerTest, BackAndForwardGoThroughThePagesSeen) {
    ShowHelp(HelpOverview);
    EXPECT_FALSE(InHelp<QToolButton>("BackBtn")->isEnabled());
    ShowHelp(HelpKeys);
    ASSERT_TRUE(InHelp<QToolButton>("BackBtn")->isEnabled());
    InHelp<QToolButton>("BackBtn")->click();
    EXPECT_EQ(Page(), "index.html");
    InHelp<QToolButton>("ForwardBtn")->click();
    EXPECT_EQ(Page(), "keys.html");
    InHelp<QToolButton>("HomeBtn")->click();
    EXPECT_EQ(Page(), "index.html");
}

TEST_F(HelpViewerTest, TheContentsFollowThePageAndLeadToPages) {
    ShowHelp(HelpContextOf("Zoom_Mnu_2"));
    auto* Contents = InHelp<QHelpContentWidget>("ContentsTree");
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return Contents->currentIndex().data().toString() == QStringLiteral("Zoom in"); }));
    Contents->setCurrentIndex(Contents->indexBelow(Contents->currentIndex()));
    QTest::keyClick(Contents, Qt::Key_Return);
    EXPECT_EQ(Page(), "view.html#zoom-out");
}

TEST_F(HelpViewerTest, TheIndexLeadsToTheTopicOfAWord) {
    ShowHelp(HelpOverview);
    auto* List = InHelp<QHelpIndexWidget>("IndexList");
    ASSERT_TRUE(QTest::qWaitFor([&] { return List->model()->rowCount() > 50; }));
    InHelp<QTabWidget>("HelpTabs")->setCurrentIndex(1);
    auto* Text = InHelp<QLineEdit>("IndexTxt");
    QTest::keyClicks(Text, QStringLiteral("clearing undo"));
    QTest::keyClick(Text, Qt::Key_Return);
    EXPECT_EQ(Page(), "undo.html#clear");
}

TEST_F(HelpViewerTest, TheSearchFindsAWordThatStandsInOneTopicOnly) {
    ShowHelp(HelpOverview);
    QTest::keyClicks(InHelp<QLineEdit>("SearchTxt"), QStringLiteral("XDG_CONFIG"));
    const auto* Found = InHelp<QListWidget>("SearchList");
    ASSERT_EQ(Found->count(), 1);
    EXPECT_TRUE(Found->item(0)->text().startsWith(QStringLiteral("The settings file")));
    QTest::keyClick(InHelp<QLineEdit>("SearchTxt"), Qt::Key_Return);
    EXPECT_EQ(Page(), "settings.html#settings-file");
}

TEST_F(HelpViewerTest, TheSearchWantsAllWordsInEitherCaseAndHeadingsComeFirst) {
    ShowHelp(HelpOverview);
    auto* Text = InHelp<QLineEdit>("SearchTxt");
    const auto* Found = InHelp<QListWidget>("SearchList");
    Text->setText(QStringLiteral("SELECTED  part"));
    ASSERT_GT(Found->count(), 0);
    EXPECT_TRUE(Found->item(0)->text().startsWith(QStringLiteral("Save Selected Part")));
    Text->setText(QStringLiteral("selected qqqq"));
    EXPECT_EQ(Found->count(), 0);
    EXPECT_EQ(InHelp<QLabel>("FoundLbl")->text(), QStringLiteral("Nothing found"));
    Text->setText(QStringLiteral("  "));
    EXPECT_EQ(Found->count(), 0);
    EXPECT_EQ(InHelp<QLabel>("FoundLbl")->text(), QString());
}

TEST_F(HelpViewerTest, EscClosesItAndF1OpensItAgain) {
    ShowHelp(HelpKeys);
    QTest::keyClick(InHelp<QTextBrowser>("PageBrowser"), Qt::Key_Escape);
    ASSERT_TRUE(QTest::qWaitFor([] { return HelpWindow() == nullptr; }));
    Show();
    QTest::keyClick(Window.get(), Qt::Key_F1);
    EXPECT_EQ(Page(), "window.html");
}

TEST_F(HelpViewerTest, AllItsControlsHaveNamesForAssistiveTools) {
    ShowHelp(HelpOverview);
    for (const char* Name : {"PageBrowser", "HelpTabs", "ContentsTree", "IndexTxt", "IndexList",
                             "SearchTxt", "SearchList", "BackBtn", "ForwardBtn", "HomeBtn"})
        EXPECT_FALSE(InHelp<QWidget>(Name)->accessibleName().isEmpty()) << Name;
}

TEST_F(HelpViewerTest, ItGoesWhenTheMainWindowIsHidden) {
    Show();
    ShowHelp(HelpOverview);
    Window->hide();
    EXPECT_EQ(HelpWindow(), nullptr);
}

// ---- The file

TEST_F(HelpViewerTest, AMissingFileGivesAMessageThatNamesIt) {
    const std::string File = Session.Path("none.qch");
    EXPECT_EQ(MessageFor(File), "Help|There is no help file " + File + ".");
}

TEST_F(HelpViewerTest, ADamagedFileGivesAMessageThatNamesIt) {
    const TempFolder Folder;
    const std::string Whole = TempFolder::Read(HELP_FILE);
    std::string Mixed = Whole;
    for (std::size_t Place = 2048; Place < Mixed.size(); Place += 3)
        Mixed[Place] = static_cast<char>(~Mixed[Place]);
    for (const std::string& Bytes :
         {std::string(), std::string("no help"), Whole.substr(0, 5000), Mixed}) {
        const std::string File = Folder.Write("help.qch", Bytes);
        EXPECT_EQ(MessageFor(File),
                  "Help|The help file " + File + " is damaged or not a help file of this program.")
            << Bytes.size();
    }
}

TEST_F(HelpViewerTest, AFolderThatTakesNoFileGivesAMessage) {
    SessionDir = Session.Path("gone");
    EXPECT_EQ(MessageFor(HELP_FILE),
              "Help|The help can not be shown: no file can be made in " + SessionDir + ".");
}

TEST_F(HelpViewerTest, NeitherTheHelpNorItsFolderIsWrittenTo) {
    namespace fs = std::filesystem;
    const TempFolder Folder;
    const std::string Bytes = TempFolder::Read(HELP_FILE);
    HelpFileName = Folder.Write("help/quoril.qch", Bytes);
    fs::permissions(HelpFileName, fs::perms::owner_read);
    fs::permissions(Folder / "help", fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_TRUE(ShowHelp(HelpKeys));
    EXPECT_EQ(Shown().substr(0, 4), "Keys");
    // A second editor with the same file.
    HelpViewerFrm Second;
    EXPECT_NO_THROW(Second.Load(HelpFileName, SessionDir));
    HelpTakeDown();
    fs::permissions(Folder / "help", fs::perms::owner_all);
    EXPECT_EQ(TempFolder::Read(Folder / "help/quoril.qch"), Bytes);
    EXPECT_EQ(std::distance(fs::directory_iterator(Folder / "help"), fs::directory_iterator()), 1);
}

TEST_F(HelpViewerTest, NothingOfItStaysInTheSessionFolder) {
    const std::vector<std::string> Before = TestSession::SessionFiles();
    ShowHelp(HelpOverview);
    InHelp<QLineEdit>("SearchTxt")->setText(QStringLiteral("undo"));
    EXPECT_GT(TestSession::SessionFiles().size(), Before.size());
    for (const auto& Entry : std::filesystem::directory_iterator(SessionDir))
        EXPECT_TRUE(Entry.is_regular_file()) << Entry.path() << " keeps the folder from going";
    HelpTakeDown();
    EXPECT_EQ(TestSession::SessionFiles(), Before);
    EXPECT_EQ(HelpFileName, "");
}

TEST(HelpFileTest, LiesBesideTheProgramOrWhereAnInstallationHasIt) {
    const TempFolder Folder;
    Folder.Write("bin/program", "");
    EXPECT_EQ(HelpFileBeside(Folder / "bin"), Folder / "bin/quoril-wave-editor.qch");
    const std::string Installed =
        Folder.Write("share/quoril-wave-editor/quoril-wave-editor.qch", "");
    EXPECT_EQ(HelpFileBeside(Folder / "bin"), Installed);
    const std::string Beside = Folder.Write("bin/quoril-wave-editor.qch", "");
    EXPECT_EQ(HelpFileBeside(Folder / "bin"), Beside);
}

} // namespace

} // namespace quoril::test
