// The menus and toolbars of the main window: what there is, what it says, what can be used.
#include "WindowFixture.h"

#include "base/Failure.h"
#include "view/MenuTable.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QToolButton>
#include <QtTest>

#include <map>
#include <set>

namespace quoril::test {
namespace {

QString Plain(QString Caption) {
    return Caption.remove(QLatin1Char('&'));
}

struct NameAndCaption {
    const char* Name;
    const char* Caption;
};

class MenuTest : public WindowTest {};

TEST_F(MenuTest, TheBarHasTheUsualMenusInTheUsualOrder) {
    QStringList Titles;
    for (const QAction* Action : Window->menuBar()->actions())
        Titles << Plain(Action->text());
    EXPECT_EQ(Titles, (QStringList{"File", "Edit", "View", "Select", "Bookmark", "Format",
                                   "Effects", "Transform", "Tools", "Help"}));
}

TEST_F(MenuTest, EveryEntryBearsItsNameAndCaption) {
    const std::vector<NameAndCaption> Expected = {
        {"New_Mnu", "New"},
        {"Open_Mnu_0", "Open"},
        {"Open_Mnu_1", "Open in New Window"},
        {"Save_Mnu_0", "Save"},
        {"Save_Mnu_1", "Save As"},
        {"Save_Selected_Mnu", "Save Selected Part"},
        {"Save_Bookmark_Mnu", "Save Bookmarked Parts"},
        {"ExportWma_Mnu", "Export to Wma"},
        {"OpenAnotherMnu", "Open another Window"},
        {"FileLastFilesMnu_0", "Open Last File"},
        {"Undo_Mnu_1", "Undo [Nothing]"},
        {"Undo_Mnu_2", "Clear Undo Backup Data"},
        {"Undo_Mnu_3", "Undo On/Off"},
        {"Edit_Paste_Mnu_1", "Replace"},
        {"Edit_Paste_Mnu_2", "Insert"},
        {"Edit_Paste_Mnu_3", "Multi-Insert"},
        {"Edit_Paste_Mnu_4", "Mix"},
        {"Edit_Paste_Mnu_5", "Modulate"},
        {"Edit_Paste_Mnu_6", "Cross Fade"},
        {"Draw_Mnu_1", "Draw (with mouse)"},
        {"Draw_Mnu_2", "Draw Done"},
        {"DrawSine_Mnu", "Sine Wave"},
        {"DrawNoise_Mnu", "Noise"},
        {"ViewBookmark_Mnu", "View Bookmark"},
        {"Bookmark_Add_Mnu_0", "Add Selection (B)"},
        {"Bookmark_Add_Mnu_1", "Add View"},
        {"Bookmark_Add_Mnu_2", "Add Play"},
        {"Bookmark_Add_Mnu_3", "Add - Enter Value"},
        {"Bookmark_Delete_Mnu_0", "Delete Selected"},
        {"Bookmark_Delete_Mnu_1", "Delete one from list"},
        {"Bookmark_Goto_Mnu", "Go to"},
        {"Bookmark_Manage_Mnu", "Manage / Edit (M)"},
        {"Bookmark_Show_Mnu", "Show Bookmarks"},
        {"Format_Bit_Menu_0", "8 Bit"},
        {"Format_Bit_Menu_1", "16 Bit"},
        {"Format_FrQ_Menu_0", "11025 Hz"},
        {"Format_FrQ_Menu_1", "22050 Hz"},
        {"Format_FrQ_Menu_2", "44100 Hz"},
        {"Format_FrQ_Menu_3", "8000 Hz"},
        {"Format_FrQ_Menu_4", "12000 Hz"},
        {"Format_FrQ_Menu_5", "16000 Hz"},
        {"Format_FrQ_Menu_6", "24000 Hz"},
        {"Format_FrQ_Menu_7", "32000 Hz"},
        {"Format_FrQ_Menu_8", "48000 Hz"},
        {"Format_FrQ_Menu_10", "Other Hz"},
        {"Format_Channel_Stereo_Menu", "Stereo"},
        {"Format_Channel_Mono_Menu", "Mono"},
        {"Edit_VolFadeIn_Mnu", "Fade In"},
        {"Edit_VolFadeOut_Mnu", "Fade Out"},
        {"Edit_VolMaximize_Mnu", "Maximize"},
        {"Edit_AdjVol_Mnu_0", "Enter %"},
        {"Edit_AdjVol_Mnu_11", "200%"},
        {"Edit_AdjVol_Mnu_12", "160%"},
        {"Edit_AdjVol_Mnu_13", "120%"},
        {"Edit_AdjVol_Mnu_14", "85%"},
        {"Edit_AdjVol_Mnu_15", "70%"},
        {"Edit_AdjVol_Mnu_16", "50%"},
        {"Edit_AdjVol_Mnu_17", "25%"},
        {"Edit_VolOpt_Mnu_0", "Enter %"},
        {"Edit_VolOpt_Mnu_11", "200%"},
        {"Edit_VolOpt_Mnu_12", "160%"},
        {"Edit_VolOpt_Mnu_13", "120%"},
        {"Edit_VolOpt_Mnu_14", "85%"},
        {"Edit_VolOpt_Mnu_15", "70%"},
        {"Edit_VolOpt_Mnu_16", "50%"},
        {"Edit_VolOpt_Mnu_17", "25%"},
        {"Edit_VolOpt_Mnu_21", "100% = Maximize"},
        {"Edit_VolSilence_Mnu", "Silence"},
        {"Silence_Mnu", "Silence"},
        {"Equalize_Mnu_0", "Equalizer"},
        {"Equalize_Mnu_1", "Band Pass/Stop Filter"},
        {"EqBandSplit_Mnu", "Band Splitter"},
        {"EffectNoisReduMnu_0", "Choose Pure Noise"},
        {"EffectNoisReduMnu_1", "Apply Noise Filter"},
        {"DeleteSilence_Mnu", "Delete Silence"},
        {"Modulate_Mnu", "Modulate"},
        {"Stretch_Mnu_0", "Stretch / Shrink"},
        {"Stretch_Mnu_1", "Change Speed"},
        {"Wave_Reverse_Mnu", "Reverse"},
        {"Wave_Invert_Mnu", "Invert"},
        {"Wave_MoveUpDn_Mnu", "Move Up/Down"},
        {"Wave_MoveFoBk_Mnu", "Move Forward/Back"},
        {"Interchange_Mnu", "Interchange Left-Right"},
        {"About_Menu", "About Quoril Wave Editor"},
    };
    for (const NameAndCaption& Each : Expected) {
        auto* Action = Window->findChild<QAction*>(Each.Name);
        ASSERT_NE(Action, nullptr) << Each.Name;
        EXPECT_EQ(Plain(Action->text()), Each.Caption) << Each.Name;
        EXPECT_TRUE(Action->isVisible()) << Each.Name;
        EXPECT_EQ(Action, Window->Entry(Each.Name)) << Each.Name;
    }
}

TEST_F(MenuTest, EntriesWithoutAGivenCaptionAreThereToo) {
    for (const char* Name : {"Close_Mnu",
                             "Edit_Copy_Mnu",
                             "Edit_CopyF_Mnu",
                             "Edit_Cut_Mnu",
                             "Edit_Delete_Mnu",
                             "Edit_Trim_Mnu",
                             "Edit_Lap_Mnu",
                             "Insert_Silence_Mnu",
                             "Format_Size_Mnu",
                             "Zoom_Mnu_0",
                             "Zoom_Mnu_1",
                             "Zoom_Mnu_2",
                             "Zoom_Mnu_3",
                             "Zoom_Mnu_4",
                             "ViewAll_Mnu",
                             "ViewSelection_Mnu",
                             "Pan_Mnu",
                             "SelectReset_Mnu",
                             "SelectMouse_Mnu_0",
                             "SelectMouse_Mnu_1",
                             "SelectMouse_Mnu_2",
                             "SelectAll_Mnu",
                             "SelectView_Mnu",
                             "SelectPlay_Mnu",
                             "SelectBookmark_Mnu",
                             "SelectBoth_Mnu",
                             "SelectOther_Mnu",
                             "Format_FrQ_Menu_9",
                             "Echo_Mnu",
                             "ChannelMixMnu",
                             "Record_Mnu",
                             "SoundVolMnu",
                             "SoundTmpoMnu",
                             "Options_Mnu",
                             "MnuCDRipper",
                             "MnuWebsite_0",
                             "Help_Mnu_0",
                             "DisplayEnterValMnu",
                             "DisplayToggleMnu_0",
                             "DisplayToggleMnu_1"}) {
        auto* Action = Window->findChild<QAction*>(Name);
        ASSERT_NE(Action, nullptr) << Name;
        EXPECT_FALSE(Plain(Action->text()).isEmpty()) << Name;
        EXPECT_TRUE(Action->isVisible()) << Name;
    }
    for (const char* Name : {"Edit_VolAdj_Mnu", "Edit_VolOpti_Mnu", "EffectNoisReduMotherMnu",
                             "File_Other_Mnu", "PopMnu"})
        EXPECT_NE(Window->findChild<QMenu*>(Name), nullptr) << Name;
    EXPECT_EQ(Plain(Find<QMenu>("Edit_VolAdj_Mnu")->title()), "Change ..");
    EXPECT_EQ(Plain(Find<QMenu>("Edit_VolOpti_Mnu")->title()), "Optimize ..");
    EXPECT_EQ(Plain(Find<QMenu>("EffectNoisReduMotherMnu")->title()), "Noise Reduction");
    for (const char* Name : {"Edit_AdjVol_Mnu_10", "Edit_VolOpt_Mnu_10", "Edit_VolOpt_Mnu_20"})
        EXPECT_TRUE(Find<QAction>(Name)->isSeparator()) << Name;
}

TEST_F(MenuTest, EntriesThatHaveNoUseAreHidden) {
    for (const char* Name : {"AutoDumpMnu", "MnuRevSpchTech", "QTBoxMnu", "QTBoxZMnu"})
        EXPECT_FALSE(Find<QAction>(Name)->isVisible()) << Name;
    EXPECT_FALSE(Find<QMenu>("PopMnu")->isVisible());
}

TEST_F(MenuTest, AnEntryWithoutARoutineIsDisabled) {
    for (const MenuRow& Row : MenuTable()) {
        if (Row.Kind == MenuKind::Menu || Row.Kind == MenuKind::Separator ||
            Row.Kind == MenuKind::Sections)
            continue;
        const QAction* Action = Window->Entry(Row.Name);
        EXPECT_TRUE(Window->Commands.Has(Row.Name) || !Action->isEnabled()) << Row.Name;
    }
    EXPECT_FALSE(Window->Entry("Echo_Mnu")->isEnabled());
    EXPECT_FALSE(Window->ToolButton("FileToolbar", "New")->isEnabled());
}

TEST_F(MenuTest, ARegisteredRoutineEnablesEntryAndButtonAndRuns) {
    int Runs = 0;
    Window->Commands.Set("New_Mnu", [&] { ++Runs; });
    Window->RefreshCommands();
    EXPECT_TRUE(Window->Entry("New_Mnu")->isEnabled());
    EXPECT_TRUE(Window->ToolButton("FileToolbar", "New")->isEnabled());
    Window->Entry("New_Mnu")->trigger();
    EXPECT_EQ(Runs, 1);
    Window->ToolButton("FileToolbar", "New")->click();
    EXPECT_EQ(Runs, 2);
}

TEST_F(MenuTest, AForbiddenEntryStaysDisabledWithItsRoutine) {
    Window->Commands.Set("Edit_Copy_Mnu", [] {});
    Window->SetEntryEnabled("Edit_Copy_Mnu", false);
    EXPECT_FALSE(Window->Entry("Edit_Copy_Mnu")->isEnabled());
    EXPECT_FALSE(Window->ToolButton("EditToolbar", "Copy")->isEnabled());
    Window->SetEntryEnabled("Edit_Copy_Mnu", true);
    EXPECT_TRUE(Window->Entry("Edit_Copy_Mnu")->isEnabled());
    EXPECT_TRUE(Window->ToolButton("EditToolbar", "Copy")->isEnabled());
}

TEST_F(MenuTest, AFailureThatACommandLetsThroughIsShown) {
    Window->Commands.Set("Echo_Mnu", [] { throw Failure("Overflow"); });
    Window->RunCommand("Echo_Mnu");
    EXPECT_EQ(Messages.TakeTexts(), (std::vector<std::string>{"Overflow"}));
}

TEST_F(MenuTest, AClickLeavesACheckMarkToTheCommand) {
    Window->Commands.Set("Format_Bit_Menu_0", [] {});
    Window->RefreshCommands();
    ASSERT_FALSE(Window->EntryChecked("Format_Bit_Menu_0"));
    Window->Entry("Format_Bit_Menu_0")->trigger();
    EXPECT_FALSE(Window->EntryChecked("Format_Bit_Menu_0"));
}

TEST_F(MenuTest, NoKeyStandsForTwoEntriesAndNoneForAPlainLetter) {
    std::map<QString, std::string> Seen;
    const std::set<QString> PlainKeys = {
        "Space",     "U",        "X",         "Z",          "B",       "S",         "M",
        "\\",        "[",        "]",         "=",          "`",       "Backspace", "Esc",
        "Home",      "End",      "Left",      "Right",      "Up",      "Down",      "Return",
        "Ctrl+Home", "Ctrl+End", "Ctrl+Left", "Ctrl+Right", "Ctrl+Up", "Ctrl+Down"};
    for (const MenuRow& Row : MenuTable()) {
        if (Row.Kind == MenuKind::Menu || Row.Kind == MenuKind::Separator ||
            Row.Kind == MenuKind::Sections)
            continue;
        for (const QKeySequence& Keys : Window->Entry(Row.Name)->shortcuts()) {
            const QString Text = Keys.toString();
            EXPECT_FALSE(PlainKeys.contains(Text)) << Row.Name << " " << qPrintable(Text);
            EXPECT_TRUE(Seen.emplace(Text, Row.Name).second)
                << Row.Name << " and " << Seen[Text] << " both have " << qPrintable(Text);
        }
    }
    EXPECT_EQ(Seen["Ctrl+S"], "Save_Mnu_0");
    EXPECT_EQ(Seen["Ctrl+Shift+S"], "Save_Mnu_1");
    EXPECT_EQ(Seen["Ctrl+Z"], "Undo_Mnu_1");
    EXPECT_EQ(Seen["Ctrl+V"], "Edit_Paste_Mnu_1");
    EXPECT_EQ(Seen["F1"], "Help_Mnu_0");
}

TEST_F(MenuTest, EveryMnemonicIsAloneInItsMenu) {
    const auto Mnemonic = [](const QString& Text) {
        const int Place = int(Text.indexOf(QLatin1Char('&')));
        return Place < 0 ? QChar() : Text.at(Place + 1).toLower();
    };
    std::map<std::string, std::map<QChar, std::string>> Seen;
    for (const auto* Table : {&MenuTable(), &PopMnuTable()})
        for (const MenuRow& Row : *Table) {
            if (Row.Kind == MenuKind::Separator || Row.Kind == MenuKind::Sections || !Row.Visible)
                continue;
            const QChar Key = Mnemonic(QLatin1String(Row.Caption));
            if (Row.Name == std::string("Format_FrQ_Menu_9"))
                continue; // its caption changes with the document
            ASSERT_FALSE(Key.isNull()) << Row.Name;
            const auto [Other, IsNew] = Seen[Row.Parent].emplace(Key, Row.Name);
            EXPECT_TRUE(IsNew) << Row.Name << " and " << Other->second;
        }
}

TEST_F(MenuTest, TheUndoEntryShowsWhatItWouldTakeBack) {
    Window->Commands.Set("Undo_Mnu_1", [] {});
    Window->Commands.Set("Undo_Mnu_2", [] {});
    Window->UndoMenuChanged({"Undo [Cut & Paste]", true, true});
    EXPECT_EQ(Window->Entry("Undo_Mnu_1")->text(), "&Undo [Cut && Paste]");
    EXPECT_TRUE(Window->Entry("Undo_Mnu_1")->isEnabled());
    EXPECT_TRUE(Window->Entry("Undo_Mnu_2")->isEnabled());
    EXPECT_TRUE(Window->ToolButton("EditToolbar", "Undo")->isEnabled());
    EXPECT_TRUE(Window->EntryChecked("Undo_Mnu_3"));
    Window->UndoMenuChanged({"Undo [Off]", false, false});
    EXPECT_EQ(Window->Entry("Undo_Mnu_1")->text(), "&Undo [Off]");
    EXPECT_FALSE(Window->Entry("Undo_Mnu_1")->isEnabled());
    EXPECT_FALSE(Window->Entry("Undo_Mnu_2")->isEnabled());
    EXPECT_FALSE(Window->ToolButton("EditToolbar", "Undo")->isEnabled());
    EXPECT_FALSE(Window->EntryChecked("Undo_Mnu_3"));
}

TEST_F(MenuTest, TheStoreTellsTheUndoEntryByItself) {
    Window->Commands.Set("Undo_Mnu_1", [] {});
    WaveStore->WaveDataDelete(1, 0, 10, "Cut", true);
    EXPECT_EQ(Plain(Window->Entry("Undo_Mnu_1")->text()), "Undo [Cut]");
    EXPECT_TRUE(Window->Entry("Undo_Mnu_1")->isEnabled());
}

TEST_F(MenuTest, TheFormatMenuMarksTheCurrentFormat) {
    CurrentFormat = {2, 44100, 16};
    Window->SetMenu_To_DefaultFormat();
    std::set<std::string> Marked;
    for (const char* Name : {"Format_Bit_Menu_0", "Format_Bit_Menu_1", "Format_Channel_Mono_Menu",
                             "Format_Channel_Stereo_Menu"})
        if (Window->EntryChecked(Name))
            Marked.insert(Name);
    for (int Index = 0; Index <= 9; ++Index)
        if (Window->EntryChecked("Format_FrQ_Menu_" + std::to_string(Index)))
            Marked.insert("Format_FrQ_Menu_" + std::to_string(Index));
    EXPECT_EQ(Marked, (std::set<std::string>{"Format_Bit_Menu_1", "Format_Channel_Stereo_Menu",
                                             "Format_FrQ_Menu_2"}));
    EXPECT_EQ(Window->Entry("Format_FrQ_Menu_9")->text(), "Custom Hz");
    EXPECT_EQ(Find<QLabel>("StatusBar1_Format")->text(), "44100Hz, 16bits");
}

TEST_F(MenuTest, ARateWithoutAnEntryIsTheCustomOne) {
    Window->Commands.Set("Interchange_Mnu", [] {});
    Window->Commands.Set("Format_FrQ_Menu_9", [] {});
    CurrentFormat = {1, 37800, 8};
    Window->SetMenu_To_DefaultFormat();
    EXPECT_EQ(Window->Entry("Format_FrQ_Menu_9")->text(), "37800 Hz");
    EXPECT_TRUE(Window->Entry("Format_FrQ_Menu_9")->isEnabled());
    EXPECT_EQ(Window->Entry("Format_FrQ_Menu_9")->data().toInt(), 37800);
    EXPECT_TRUE(Window->EntryChecked("Format_FrQ_Menu_9"));
    EXPECT_FALSE(Window->EntryChecked("Format_FrQ_Menu_2"));
    EXPECT_TRUE(Window->EntryChecked("Format_Bit_Menu_0"));
    EXPECT_FALSE(Window->Entry("Interchange_Mnu")->isEnabled());
    EXPECT_EQ(Find<QLabel>("StatusBar1_Format")->text(), "37800Hz, 8bits");
    CurrentFormat = {2, 8000, 8};
    Window->SetMenu_To_DefaultFormat();
    EXPECT_EQ(Window->Entry("Format_FrQ_Menu_9")->text(), "Custom Hz");
    EXPECT_FALSE(Window->Entry("Format_FrQ_Menu_9")->isEnabled()); // it stands for no rate
    EXPECT_FALSE(Window->EntryChecked("Format_FrQ_Menu_9"));
    EXPECT_TRUE(Window->EntryChecked("Format_FrQ_Menu_3"));
    EXPECT_TRUE(Window->Entry("Interchange_Mnu")->isEnabled());
}

TEST_F(MenuTest, RecentFilesReplaceThePlaceholder) {
    EXPECT_TRUE(Window->Entry("FileLastFilesMnu_0")->isVisible());
    EXPECT_FALSE(Window->Entry("FileLastFilesMnu_0")->isEnabled());
    std::string Opened;
    for (int Index = 1; Index <= 5; ++Index) {
        const std::string Name = "FileLastFilesMnu_" + std::to_string(Index);
        Window->Commands.Set(Name, [&Opened, Name] { Opened = Name; });
    }
    Window->SetRecentFiles({"/a/one.wav", "/b/two & three.wav"});
    EXPECT_FALSE(Window->Entry("FileLastFilesMnu_0")->isVisible());
    EXPECT_EQ(Window->Entry("FileLastFilesMnu_1")->text(), "&1 /a/one.wav");
    EXPECT_EQ(Window->Entry("FileLastFilesMnu_2")->text(), "&2 /b/two && three.wav");
    EXPECT_EQ(Window->findChild<QAction*>("FileLastFilesMnu_3"), nullptr);
    Window->Entry("FileLastFilesMnu_2")->trigger();
    EXPECT_EQ(Opened, "FileLastFilesMnu_2");
    const QList<QAction*> File = Find<QMenu>("File_Menu")->actions();
    EXPECT_LT(File.indexOf(Window->Entry("FileLastFilesMnu_1")),
              File.indexOf(Window->Entry("FileLastFilesMnu_2")));
    EXPECT_LT(File.indexOf(Window->Entry("FileLastFilesMnu_2")),
              File.indexOf(Window->Entry("Close_Mnu")));
    Window->SetRecentFiles({});
    EXPECT_TRUE(Window->Entry("FileLastFilesMnu_0")->isVisible());
    EXPECT_EQ(Window->findChild<QAction*>("FileLastFilesMnu_1"), nullptr);
}

TEST_F(MenuTest, TheTitleIsTheFileThenTheProgram) {
    Window->SetDocumentTitle("take 1.wav");
    EXPECT_EQ(Window->windowTitle(), "take 1.wav [Quoril Wave Editor]");
}

TEST_F(MenuTest, CloseClosesTheWindowUnlessItIsHeldOpen) {
    Show();
    bool Hold = true;
    Window->UnloadWanted = [&] { return !Hold; };
    Window->Entry("Close_Mnu")->trigger();
    EXPECT_TRUE(Window->isVisible());
    Hold = false;
    Window->Entry("Close_Mnu")->trigger();
    EXPECT_FALSE(Window->isVisible());
}

} // namespace
} // namespace quoril::test
