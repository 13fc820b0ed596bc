// The toolbars of the main window and their drawings.
#include "WindowFixture.h"

#include "view/ToolIcon.h"
#include "view/ToolbarTable.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QToolButton>
#include <QWindow>
#include <QtTest>

#include <map>
#include <tuple>

namespace quoril::test {
namespace {

class ToolbarTest : public WindowTest {};

TEST_F(ToolbarTest, EveryButtonHasADrawingATipAnAccessibleNameAndAHelpLine) {
    const std::map<std::string, std::vector<const char*>> Expected = {
        {"FileToolbar", {"New", "Open", "OpenNew", "Save", "SaveSel"}},
        {"EditToolbar", {"Undo", "Copy", "Paste", "Cut", "Delete", "Trim"}},
        {"MouseToolbar",
         {"Select", "Start", "End", "SelectAll", "SelectView", "SelectPlay", "Reset",
          "SelChannel"}},
        {"ViewToolbar",
         {"Zoom", "ZoomInM", "ZoomIn", "ZoomOut", "Zoom1", "ZoomAll", "ZoomSel", "Pan"}},
        {"DrawToolbar", {"Draw", "DrawDone"}},
        {"PlayToolbar",
         {"PlayNew", "PlayNewRev", "Play", "PlayRev", "Pause", "Stop", "UTurn", "Loop", "Record"}},
    };
    for (const auto& [Toolbar, Keys] : Expected)
        for (const char* Key : Keys) {
            const QToolButton* Button = Window->ToolButton(Toolbar, Key);
            EXPECT_EQ(Button->objectName().toStdString(), Toolbar + "_" + Key);
            EXPECT_FALSE(Button->icon().isNull()) << Key;
            EXPECT_FALSE(Button->toolTip().isEmpty()) << Key;
            EXPECT_FALSE(Button->accessibleName().isEmpty()) << Key;
            EXPECT_FALSE(Button->property("StatusHint").toString().isEmpty()) << Key;
            EXPECT_NE(Button->focusPolicy(), Qt::NoFocus) << Key;
        }
    EXPECT_EQ(Window->ToolButton("FileToolbar", "New")->property("StatusHint").toString(),
              "Use this button to create a new audio file");
}

TEST_F(ToolbarTest, EveryDrawingIsThereAndDrawsSomethingAtEverySize) {
    for (const ToolButtonRow& Row : ToolbarTable())
        for (const QString& Key : Row.Key == std::string("SelChannel")
                                      ? QStringList{"SelBoth", "SelSingle1", "SelSingle2"}
                                      : QStringList{Row.Key})
            for (const int Size : {16, 20, 40}) {
                const QImage Image = ToolIcon(Key)
                                         .pixmap(QSize(Size, Size), 1.0)
                                         .toImage()
                                         .convertToFormat(QImage::Format_ARGB32);
                ASSERT_EQ(Image.width(), Size) << qPrintable(Key);
                int Drawn = 0;
                for (int Y = 0; Y < Size; ++Y)
                    for (int X = 0; X < Size; ++X)
                        Drawn += qAlpha(Image.pixel(X, Y)) > 128 ? 1 : 0;
                EXPECT_GT(Drawn, Size * Size / 20) << qPrintable(Key) << " at " << Size;
            }
}

TEST_F(ToolbarTest, ADrawingFollowsTheTextColourOfTheTheme) {
    const auto Darkest = [] {
        const QImage Image = ToolIcon("Stop").pixmap(QSize(24, 24), 1.0).toImage();
        return QColor(Image.pixel(12, 12)).lightness();
    };
    QPalette Theme = QApplication::palette();
    Theme.setColor(QPalette::Window, Qt::white);
    Theme.setColor(QPalette::ButtonText, Qt::black);
    QApplication::setPalette(Theme);
    EXPECT_LT(Darkest(), 60);
    Theme.setColor(QPalette::Window, Qt::black);
    Theme.setColor(QPalette::ButtonText, Qt::white);
    QApplication::setPalette(Theme);
    EXPECT_GT(Darkest(), 200);
}

TEST_F(ToolbarTest, PlayNewRevIsHiddenAndThePlayButtonsWaitForTheFirstPlay) {
    Show();
    EXPECT_FALSE(Window->ToolButton("PlayToolbar", "PlayNewRev")->isVisible());
    EXPECT_TRUE(Window->ToolButton("PlayToolbar", "PlayNew")->isVisible());
    for (const char* Key : {"PlayNew", "Play", "PlayRev", "Pause", "Stop", "UTurn"})
        Window->Commands.Set(std::string("PlayToolbar_") + Key, [] {});
    Window->RefreshCommands();
    EXPECT_TRUE(Window->ToolButton("PlayToolbar", "PlayNew")->isEnabled());
    for (const char* Key : {"Play", "PlayRev", "Pause", "Stop", "UTurn"})
        EXPECT_FALSE(Window->ToolButton("PlayToolbar", Key)->isEnabled()) << Key;
}

TEST_F(ToolbarTest, TheEditButtonsRunTheirCommandsAndSayWhatTheyAreFor) {
    const std::tuple<const char*, const char*, const char*> Rows[] = {
        {"Undo", "Undo_Mnu_1", "Use this button to reverse the last changes to the audio/waveform"},
        {"Copy", "Edit_Copy_Mnu", "Use this button to copy the selected audio/waveform"},
        {"Paste", "Edit_Paste_Mnu_1",
         "Use this button to paste the copied audio/waveform at the selected location. Click on "
         "the arrow to choose."},
        {"Cut", "Edit_Cut_Mnu",
         "Use this button to cut the selected audio/waveform - (Delete and copy)"},
        {"Delete", "Edit_Delete_Mnu", "Use this button to delete the selected audio/waveform"},
        {"Trim", "Edit_Trim_Mnu", nullptr},
    };
    std::vector<std::string> Ran;
    for (const auto& [Key, Command, Hint] : Rows)
        Window->Commands.Set(Command, [&Ran, Name = std::string(Command)] { Ran.push_back(Name); });
    Window->SetEntryEnabled("Undo_Mnu_1", true);
    for (const auto& [Key, Command, Hint] : Rows) {
        Ran.clear();
        QToolButton* Button = Window->ToolButton("EditToolbar", Key);
        Button->click();
        EXPECT_EQ(Ran, std::vector<std::string>{Command});
        if (Hint != nullptr) {
            EXPECT_EQ(Button->property("StatusHint").toString(), Hint);
        }
    }
}

TEST_F(ToolbarTest, TheHelpLineEndsBesideTheButton) {
    Show();
    const auto MouseTo = [this](const QWidget* Where, QPoint Place) {
        QTest::mouseMove(Window->windowHandle(), Where->mapTo(Window.get(), Place));
        QApplication::processEvents();
        return Find<QLabel>("StatusBar1_UserGuide")->text();
    };
    const QToolButton* Button = Window->ToolButton("FileToolbar", "New");
    const QToolButton* Next = Window->ToolButton("FileToolbar", "Open");
    EXPECT_EQ(MouseTo(Button, {5, 5}), "Use this button to create a new audio file");
    EXPECT_EQ(MouseTo(Next, {5, 5}), "Use this button to open an existing audio file");
    // The edge of the toolbar itself.
    const QWidget* Bar = Next->parentWidget();
    ASSERT_EQ(Bar->childAt(Bar->width() / 2, Bar->height() - 1), nullptr);
    EXPECT_EQ(MouseTo(Bar, {Bar->width() / 2, Bar->height() - 1}), "");
}

TEST_F(ToolbarTest, ThePasteButtonKeepsTheModeThatWasChosenLast) {
    std::vector<std::string> Ran;
    for (int Mode = 1; Mode <= 6; ++Mode) {
        const std::string Name = "Edit_Paste_Mnu_" + std::to_string(Mode);
        Window->Commands.Set(Name, [&Ran, Name] { Ran.push_back(Name); });
    }
    Window->RefreshCommands();
    QToolButton* Paste = Window->ToolButton("EditToolbar", "Paste");
    EXPECT_EQ(Window->PasteMode(), 0);
    Paste->click();
    QStringList Entries;
    for (const QAction* Action : Paste->menu()->actions())
        Entries << Action->text();
    EXPECT_EQ(Entries,
              (QStringList{"Replace", "Insert", "MultiInsert", "Mix", "Modulate", "CrossFade"}));
    EXPECT_EQ(Paste->menu()->actions().at(5)->statusTip(),
              "Fades from the copied audio to what stands there");
    EXPECT_EQ(Ran, (std::vector<std::string>{"Edit_Paste_Mnu_1"}));
    for (const int Mode : {1, 2, 3, 5, 6, 4}) {
        Ran.clear();
        Paste->menu()->actions().at(Mode - 1)->trigger();
        EXPECT_EQ(Paste->toolTip(), QString("Paste(%1)").arg(Entries.at(Mode - 1)));
        EXPECT_EQ(Window->PasteMode(), Mode);
        Paste->click();
        const std::string Name = "Edit_Paste_Mnu_" + std::to_string(Mode);
        EXPECT_EQ(Ran, (std::vector<std::string>{Name, Name}));
    }
    EXPECT_EQ(Window->Entry("Edit_Paste_Mnu_4")->shortcut(), QKeySequence(QKeySequence::Paste));
    EXPECT_TRUE(Window->Entry("Edit_Paste_Mnu_1")->shortcut().isEmpty());
    Window->SetEntryEnabled("Edit_Paste_Mnu_1", false);
    EXPECT_TRUE(Paste->isEnabled());
    Window->SetEntryEnabled("Edit_Paste_Mnu_4", false);
    EXPECT_FALSE(Paste->isEnabled());
}

TEST_F(ToolbarTest, TheLoopButtonStaysPressedIn) {
    bool Pressed = false;
    Window->Commands.Set("PlayToolbar_Loop",
                         [&] { Pressed = Window->ToolButton("PlayToolbar", "Loop")->isChecked(); });
    Window->RefreshCommands();
    Window->ToolButton("PlayToolbar", "Loop")->click();
    EXPECT_TRUE(Pressed);
    Window->ToolButton("PlayToolbar", "Loop")->click();
    EXPECT_FALSE(Pressed);
}

TEST_F(ToolbarTest, TheChannelControlsFollowTheDocument) {
    Window->RefreshChannelSelector();
    QToolButton* Button = Window->ToolButton("MouseToolbar", "SelChannel");
    EXPECT_TRUE(Button->isEnabled());
    EXPECT_TRUE(Button->isChecked());
    EXPECT_TRUE(Window->EntryChecked("SelectBoth_Mnu"));
    EXPECT_FALSE(Window->Entry("SelectOther_Mnu")->isEnabled());
    Button->click();
    EXPECT_FALSE(SelBoth);
    EXPECT_EQ(SelSingle, 2);
    EXPECT_FALSE(Window->EntryChecked("SelectBoth_Mnu"));
    EXPECT_TRUE(Window->Entry("SelectOther_Mnu")->isEnabled());
    Window->Entry("SelectOther_Mnu")->trigger();
    EXPECT_EQ(SelSingle, 1);
    Window->Entry("SelectBoth_Mnu")->trigger();
    EXPECT_TRUE(SelBoth);
    EXPECT_TRUE(Button->isChecked());
    Document(1000, 1);
    Window->RefreshChannelSelector();
    EXPECT_FALSE(Button->isEnabled());
    EXPECT_FALSE(Window->Entry("SelectBoth_Mnu")->isEnabled());
    EXPECT_FALSE(Window->Entry("SelectOther_Mnu")->isEnabled());
}

} // namespace
} // namespace quoril::test
