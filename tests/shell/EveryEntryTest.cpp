// What every entry and every button of the whole program runs: each is chosen
// over the same document, and what can be seen of it is held against its row.
// Two routines that change places are noticed.
#include "base/PlayState.h"
#include "base/ViewState.h"
#include "bookmarks/BookmarkRec.h"
#include "platform/FileSystem.h"
#include "platform/ProgramPlaces.h"
#include "shell/EditorFixture.h"
#include "shell/HelpTopics.h"
#include "shell/HelpViewer.h"
#include "shell/HelpViewerFrm.h"
#include "storage/FileMemoClass.h"
#include "storage/UndoListener.h"
#include "view/MenuTable.h"
#include "view/ToolbarTable.h"
#include "view/WaveEditor_Frm.h"

#include <QAction>
#include <QApplication>
#include <QDesktopServices>
#include <QFileDialog>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>
#include <QUrl>
#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace quoril::test {
namespace {

struct CommandRow {
    const char* Command;
    const char* Seen; ///< what can be seen of it, see EveryEntryTest::Run
};

const std::vector<CommandRow>& CommandRows() {
    static const std::vector<CommandRow> Table = {
        {"New_Mnu", "bookmarks: ; length: 11025; selection: 0 to 0; title: New.wav [Quoril Wave "
                    "Editor]; tool: 0, 0; undo: Undo [Nothing]; view: 1 to 11025"},
        {"Open_Mnu_0", "[Select a Wave file to Open]; bookmarks: ; length: 2000; selection: 0 to "
                       "0; tool: 0, 0; undo: Undo [Nothing]; view: 1 to 2000"},
        {"Open_Mnu_1", "[Select a Wave file to Open]; another program"},
        {"OpenAnotherMnu", "another program"},
        {"Save_Mnu_0", "file: 8040"},
        {"Save_Mnu_1", "[Choose wave file name to save]; [Choose wave file name to save]"},
        {"Save_Selected_Mnu", "[Select file name to to save selected]"},
        {"Save_Bookmark_Mnu", "[Save bookmarked parts]; \"2 part files are saved\""},
        {"ExportWma_Mnu", "\"Only these formats are supported for exporting to Wma, using\""},
        {"Close_Mnu", "exit: 1"},
        {"Undo_Mnu_1",
         "length: 2000; selection: 0 to 0; tool: 0, 0; undo: Undo [Nothing]; view: 1 to 2000"},
        {"Undo_Mnu_2", "[Clear Undo Data]"},
        {"Undo_Mnu_3", "undo: Undo [Off]; undo option: off"},
        {"Edit_Cut_Mnu",
         "[Wave samples placed in private ClipBoard]; length: 1799; undo: Undo [Cut]"},
        {"Edit_Copy_Mnu", "[Wave samples placed in private ClipBoard]"},
        {"Edit_CopyF_Mnu", "[Select a Wave file to Copy]"},
        {"Edit_Paste_Mnu_1", "[ Confirm Selection [Paste Replace]]; selection: 201 to 201; tool: "
                             "0, 0; undo: Undo [Paste Replace]"},
        {"Edit_Paste_Mnu_2", "[ Confirm Selection [Paste Insert]]; length: 2199; selection: 201 to "
                             "201; tool: 0, 0; undo: Undo [Paste Insert]"},
        {"Edit_Paste_Mnu_3",
         "[ Confirm Selection [Multi-Paste Insert]]; \"Multi-Paste Insert|Enter no of times for "
         "Multi-paste. Wave f\"; selection: 201 to 201; tool: 0, 0"},
        {"Edit_Paste_Mnu_4", "[ Confirm Selection [Paste Mix]]; selection: 201 to 201; tool: 0, 0; "
                             "undo: Undo [Paste Mix]"},
        {"Edit_Paste_Mnu_5", "[ Confirm Selection [Paste Modulate]]; selection: 201 to 201; tool: "
                             "0, 0; undo: Undo [Paste Modulate]"},
        {"Edit_Paste_Mnu_6", "[ Confirm Selection [Paste Cross Fade]]; selection: 201 to 201; "
                             "tool: 0, 0; undo: Undo [Paste Cross Fade]"},
        {"Edit_Delete_Mnu", "length: 1799; undo: Undo [Delete]"},
        {"Edit_Trim_Mnu",
         "length: 200; selection: 0 to 0; tool: 0, 0; undo: Undo [Trim]; view: 1 to 200"},
        {"Edit_Lap_Mnu", "[Lap (Cut and overlap)]; length: 1899; undo: Undo [Lap - Smooth]"},
        {"Insert_Silence_Mnu", "length: 2199; undo: Undo [Insert Silence]"},
        {"Silence_Mnu", "undo: Undo [Silence]"},
        {"Draw_Mnu_1", "tool: 7, 0"},
        {"Draw_Mnu_2", "tool: 0, 0"},
        {"DrawSine_Mnu", "[Enter Frequency]; undo: Undo [Sine]"},
        {"DrawNoise_Mnu", "\"Noise Generated|Noise Generated with all frequencies. Use Eq\"; "
                          "undo: Undo [Noise]"},
        {"Zoom_Mnu_0", "tool: 1, 4"},
        {"Zoom_Mnu_1", "tool: 1, 6"},
        {"Zoom_Mnu_2", "view: 301 to 900"},
        {"Zoom_Mnu_3", "view: 1 to 1667"},
        {"Zoom_Mnu_4", "view: 101 to 892"},
        {"ViewAll_Mnu", "view: 1 to 1999"},
        {"ViewSelection_Mnu", "view: 201 to 399"},
        {"ViewBookmark_Mnu", "[ Choose a bookmark name]; view: 251 to 350"},
        {"Pan_Mnu", "tool: 1, 8"},
        {"SelectMouse_Mnu_0", "tool: 0, 0"},
        {"SelectMouse_Mnu_1", "tool: 2, 0"},
        {"SelectMouse_Mnu_2", "tool: 3, 0"},
        {"SelectAll_Mnu", "selection: 1 to 1999; tool: 0, 0"},
        {"SelectView_Mnu", "selection: 101 to 1100; tool: 0, 0"},
        {"SelectPlay_Mnu", "selection: 501 to 600; tool: 0, 0"},
        {"SelectBookmark_Mnu", "[ Choose a bookmark name]; selection: 251 to 350"},
        {"SelectReset_Mnu", "selection: 0 to 0; tool: 0, 0"},
        {"SelectBoth_Mnu", "channel: 1"},
        {"SelectOther_Mnu", "channel: 2"},
        {"Bookmark_Add_Mnu_0",
         "[ Add New Bookmark]; bookmarks: range 251 to 350, point 601 to 601, New-3 201 to 400"},
        {"Bookmark_Add_Mnu_1",
         "[ Add New Bookmark]; bookmarks: range 251 to 350, point 601 to 601, New-3 101 to 1100"},
        {"Bookmark_Add_Mnu_2",
         "[Edit Bookmark]; bookmarks: range 251 to 350, point 601 to 601, New-3 501 to 600"},
        {"Bookmark_Add_Mnu_3",
         "[ Add New Bookmark]; bookmarks: range 251 to 350, point 601 to 601, New-3 101 to 1101"},
        {"Bookmark_Delete_Mnu_0", "bookmarks: point 601 to 601"},
        {"Bookmark_Delete_Mnu_1", "[ Choose a bookmark name]; bookmarks: point 601 to 601"},
        {"Bookmark_Goto_Mnu", "[ Choose a bookmark name]; view: 251 to 350"},
        {"Bookmark_Manage_Mnu", "[ Manage Book Marks]"},
        {"Bookmark_Show_Mnu", "bookmarks shown: no"},
        {"Format_Channel_Mono_Menu",
         "[Convert to Mono]; format: mono, 11025Hz, 16bits; undo: Undo [Mono]"},
        {"Format_Channel_Stereo_Menu",
         "\"Convert to Stereo|Do you wish to change to stereo?  (Left ch\"; format: stereo, "
         "11025Hz, 16bits; undo: Undo [Stereo]"},
        {"Format_Bit_Menu_0", "\"Changing Bit format|Do you wish to Change Bit format?\"; format: "
                              "stereo, 11025Hz, 8bits; undo: Undo [8 bits]"},
        {"Format_Bit_Menu_1", "\"Changing Bit format|Do you wish to Change Bit format?\"; format: "
                              "stereo, 11025Hz, 16bits; undo: Undo [16 bits]"},
        {"Format_FrQ_Menu_0",
         "\"Changing Sampling rate (Frequency format)|Do you wish to Cha\"; format: stereo, "
         "11025Hz, 16bits; length: 2000; undo: Undo [11025 Hz]"},
        {"Format_FrQ_Menu_1",
         "\"Changing Sampling rate (Frequency format)|Do you wish to Cha\"; format: stereo, "
         "22050Hz, 16bits; length: 3998; undo: Undo [22050 Hz]"},
        {"Format_FrQ_Menu_2",
         "\"Changing Sampling rate (Frequency format)|Do you wish to Cha\"; format: stereo, "
         "44100Hz, 16bits; length: 7994; undo: Undo [44100 Hz]"},
        {"Format_FrQ_Menu_3", "\"Changing Sampling rate (Frequency format)|Do you wish to Cha\"; "
                              "format: stereo, 8000Hz, 16bits; length: 1451; undo: Undo [8000 Hz]"},
        {"Format_FrQ_Menu_4",
         "\"Changing Sampling rate (Frequency format)|Do you wish to Cha\"; format: stereo, "
         "12000Hz, 16bits; length: 2176; undo: Undo [12000 Hz]"},
        {"Format_FrQ_Menu_5",
         "\"Changing Sampling rate (Frequency format)|Do you wish to Cha\"; format: stereo, "
         "16000Hz, 16bits; length: 2901; undo: Undo [16000 Hz]"},
        {"Format_FrQ_Menu_6",
         "\"Changing Sampling rate (Frequency format)|Do you wish to Cha\"; format: stereo, "
         "24000Hz, 16bits; length: 4351; undo: Undo [24000 Hz]"},
        {"Format_FrQ_Menu_7",
         "\"Changing Sampling rate (Frequency format)|Do you wish to Cha\"; format: stereo, "
         "32000Hz, 16bits; length: 5801; undo: Undo [32000 Hz]"},
        {"Format_FrQ_Menu_8",
         "\"Changing Sampling rate (Frequency format)|Do you wish to Cha\"; format: stereo, "
         "48000Hz, 16bits; length: 8700; undo: Undo [48000 Hz]"},
        {"Format_FrQ_Menu_9", "length: 908; undo: Undo [5000 Hz]; view: 1 to 908"},
        {"Format_FrQ_Menu_10", "\"Sampling rate|Enter other (not standard) sampling rate Hz\""},
        {"Format_Size_Mnu", "[ Change Size (Duration)]"},
        {"Edit_VolFadeIn_Mnu", "undo: Undo [Fade In]"},
        {"Edit_VolFadeOut_Mnu", "undo: Undo [Fade Out]"},
        {"Edit_VolMaximize_Mnu", "undo: Undo [Maximize]"},
        {"Edit_AdjVol_Mnu_0", "\"Enter new volume as percentage of current Volume.  You can e\""},
        {"Edit_AdjVol_Mnu_11", "undo: Undo [Chg. Vol. 200%]"},
        {"Edit_AdjVol_Mnu_12", "undo: Undo [Chg. Vol. 160%]"},
        {"Edit_AdjVol_Mnu_13", "undo: Undo [Chg. Vol. 120%]"},
        {"Edit_AdjVol_Mnu_14", "undo: Undo [Chg. Vol. 85%]"},
        {"Edit_AdjVol_Mnu_15", "undo: Undo [Chg. Vol. 70%]"},
        {"Edit_AdjVol_Mnu_16", "undo: Undo [Chg. Vol. 50%]"},
        {"Edit_AdjVol_Mnu_17", "undo: Undo [Chg. Vol. 25%]"},
        {"Edit_VolOpt_Mnu_0", "\"Enter new volume as percentage of maximum Volume.  You can e\""},
        {"Edit_VolOpt_Mnu_11", "undo: Undo [Opti.Vol.200%]"},
        {"Edit_VolOpt_Mnu_12", "undo: Undo [Opti.Vol.160%]"},
        {"Edit_VolOpt_Mnu_13", "undo: Undo [Opti.Vol.120%]"},
        {"Edit_VolOpt_Mnu_14", "undo: Undo [Opti.Vol.85%]"},
        {"Edit_VolOpt_Mnu_15", "undo: Undo [Opti.Vol.70%]"},
        {"Edit_VolOpt_Mnu_16", "undo: Undo [Opti.Vol.50%]"},
        {"Edit_VolOpt_Mnu_17", "undo: Undo [Opti.Vol.25%]"},
        {"Edit_VolOpt_Mnu_21", "undo: Undo [Opti.Vol.100%]"},
        {"Edit_VolSilence_Mnu", "undo: Undo [Silence]"},
        {"Equalize_Mnu_0", "[ Equalizer]"},
        {"Equalize_Mnu_1", "[ Band Pass Filter]"},
        {"EqBandSplit_Mnu", "[Quoril Wave Editor - Guide]"},
        {"Echo_Mnu", "[Enter Echo Parameters:]; ..."},
        {"Stretch_Mnu_0", "[Enter Percentage to Stretch/Shrink]; undo: Undo [Stretch/Shrink]"},
        {"Stretch_Mnu_1", "[Enter Percentage Tempo]; undo: Undo [Change Speed]"},
        {"EffectNoisReduMnu_0", "\"Selected length is not sufficient for the sample size 1024\""},
        {"EffectNoisReduMnu_1", "\"Please define the noise first. That is : Select a small port\""},
        {"DeleteSilence_Mnu", "[Delete Silence / Low volume]; undo: Undo [Delete Silence]"},
        {"Modulate_Mnu", "[Enter Frequency]; undo: Undo [Modulate]"},
        {"Wave_Reverse_Mnu", "undo: Undo [Reverse]"},
        {"Wave_Invert_Mnu", "undo: Undo [Invert]"},
        {"Wave_MoveUpDn_Mnu", "\"Enter Height percentage to move up or down. (-100 to 100)\""},
        {"Wave_MoveFoBk_Mnu", "[ Enter distance to move]"},
        {"Interchange_Mnu", "undo: Undo [Interchange Left-Right]"},
        {"ChannelMixMnu", "[Channel Mix]; undo: Undo [Interchange Left-Right]"},
        {"Record_Mnu", "[ Confirm Selection [Record]]; [Record]..."},
        {"SoundVolMnu", "\"The file sndvol32.exe is not found..."},
        {"SoundTmpoMnu", "speed box: shown"},
        {"MnuCDRipper", "\"This will take you to our web site to view free CD Ripper/Ex\"; \"The "
                        "page /help/pages/cd.html is not there.\""},
        {"Options_Mnu", "[Options]; tool: 0, 0"},
        {"Help_Mnu_0", "help at index.html"},
        {"Help_Mnu_1", "help at start.html"},
        {"Help_Mnu_2", "help at mouse.html"},
        {"Help_Mnu_3", "help at keys.html"},
        {"MnuWebsite_0", "\"The page /help/pages/index.html is not there.\""},
        {"MnuWebsite_1", "\"The page /help/pages/support.html is not there.\""},
        {"About_Menu", "\"About Quoril Wave Editor|Quoril Wave Editor Version 0.1.0  E\""},
        {"DisplayEnterValMnu", "[ Change Selection (Total)]"},
        {"DisplayToggleMnu_0", "labels: 0"},
        {"DisplayToggleMnu_1", "labels: 1"},
        {"PlayToolbar_PlayNew", "..."},
        {"PlayToolbar_PlayNewRev", "..."},
        {"PlayToolbar_Play", "..."},
        {"PlayToolbar_PlayRev", "..."},
        {"PlayToolbar_Pause", "..."},
        {"PlayToolbar_Stop", "..."},
        {"PlayToolbar_UTurn", "..."},
        {"PlayToolbar_Loop", "loop: on"},
        {"MouseToolbar_SelChannel", "channel: 2"}};
    return Table;
}

struct ButtonRow {
    const char* Button;
    const char* Command;
};

const std::vector<ButtonRow>& ButtonRows() {
    static const std::vector<ButtonRow> Table = {
        {"FileToolbar_New", "New_Mnu"},
        {"FileToolbar_Open", "Open_Mnu_0"},
        {"FileToolbar_OpenNew", "Open_Mnu_1"},
        {"FileToolbar_Save", "Save_Mnu_0"},
        {"FileToolbar_SaveSel", "Save_Selected_Mnu"},
        {"EditToolbar_Undo", "Undo_Mnu_1"},
        {"EditToolbar_Copy", "Edit_Copy_Mnu"},
        {"EditToolbar_Paste", "Edit_Paste_Mnu_1"},
        {"EditToolbar_Cut", "Edit_Cut_Mnu"},
        {"EditToolbar_Delete", "Edit_Delete_Mnu"},
        {"EditToolbar_Trim", "Edit_Trim_Mnu"},
        {"PlayToolbar_PlayNew", "PlayToolbar_PlayNew"},
        {"PlayToolbar_PlayNewRev", "PlayToolbar_PlayNewRev"},
        {"PlayToolbar_Play", "PlayToolbar_Play"},
        {"PlayToolbar_PlayRev", "PlayToolbar_PlayRev"},
        {"PlayToolbar_Pause", "PlayToolbar_Pause"},
        {"PlayToolbar_Stop", "PlayToolbar_Stop"},
        {"PlayToolbar_UTurn", "PlayToolbar_UTurn"},
        {"PlayToolbar_Loop", "PlayToolbar_Loop"},
        {"PlayToolbar_Record", "Record_Mnu"},
        {"MouseToolbar_Select", "SelectMouse_Mnu_0"},
        {"MouseToolbar_Start", "SelectMouse_Mnu_1"},
        {"MouseToolbar_End", "SelectMouse_Mnu_2"},
        {"MouseToolbar_SelectAll", "SelectAll_Mnu"},
        {"MouseToolbar_SelectView", "SelectView_Mnu"},
        {"MouseToolbar_SelectPlay", "SelectPlay_Mnu"},
        {"MouseToolbar_Reset", "SelectReset_Mnu"},
        {"MouseToolbar_SelChannel", "MouseToolbar_SelChannel"},
        {"ViewToolbar_Zoom", "Zoom_Mnu_0"},
        {"ViewToolbar_ZoomInM", "Zoom_Mnu_1"},
        {"ViewToolbar_ZoomIn", "Zoom_Mnu_2"},
        {"ViewToolbar_ZoomOut", "Zoom_Mnu_3"},
        {"ViewToolbar_Zoom1", "Zoom_Mnu_4"},
        {"ViewToolbar_ZoomAll", "ViewAll_Mnu"},
        {"ViewToolbar_ZoomSel", "ViewSelection_Mnu"},
        {"ViewToolbar_Pan", "Pan_Mnu"},
        {"DrawToolbar_Draw", "Draw_Mnu_1"},
        {"DrawToolbar_DrawDone", "Draw_Mnu_2"}};
    return Table;
}

/// Notes the pages that a browser would be given.
class Browser final : public QObject {
    Q_OBJECT

  public:
    Browser() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "Open"); }
    ~Browser() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }
    std::vector<std::string> Pages;

  public slots:
    void Open(const QUrl& Address) { Pages.push_back(Address.fileName().toStdString()); }
};

/// Notes the titles of the modal windows that come up. Each is answered with OK, and with the
/// first of a list or the file b.wav, if it asks for that; what has no such button, or is still
/// there then, is closed.
class WindowsAnswered {
  public:
    explicit WindowsAnswered(std::vector<std::string>& Titles) {
        QObject::connect(&Timer, &QTimer::timeout, &Timer, [this, &Titles] {
            QWidget* Modal = QApplication::activeModalWidget();
            if (Modal == nullptr || !Modal->isVisible())
                return;
            const bool IsNew = Answered.insert(Modal).second;
            if (IsNew)
                Titles.push_back("[" + Modal->windowTitle().toStdString() + "]");
            // An answer may bring up a further window, which this timer must still see.
            QTimer::singleShot(0, Modal, [Modal, IsNew] { Answer(Modal, IsNew); });
        });
        Timer.start(5);
    }

  private:
    static void Answer(QWidget* Modal, bool IsNew) {
        if (auto* File = qobject_cast<QFileDialog*>(Modal); File != nullptr && IsNew) {
            File->selectFile(QStringLiteral("b.wav"));
            QMetaObject::invokeMethod(File, "accept");
            return;
        }
        if (auto* List = Modal->findChild<QListWidget*>())
            List->setCurrentRow(0);
        auto* Ok = Modal->findChild<QPushButton*>(QStringLiteral("OkBtn"));
        if (IsNew && Ok != nullptr && Ok->isEnabled())
            Ok->click();
        else
            Modal->close();
    }

    QTimer Timer;
    std::set<QWidget*> Answered;
};

class EveryEntryTest : public EditorFixture {
  protected:
    EveryEntryTest() {
        // What an entry starts as another editor is this program again: it must run
        // no test, and its report shows that it was started.
        qputenv("GTEST_FILTER", "-*");
        // No program of this machine is started.
        qputenv("PATH", QByteArray::fromStdString(Folder.Path()));
        qputenv("GTEST_OUTPUT", QByteArray::fromStdString("json:" + Started()));
    }
    [[nodiscard]] std::string Started() const { return Folder / "started.json"; }

    /// A stereo document with a selection, a range on the scale, a part of it in
    /// view, two bookmarks and one step to undo.
    void Begin() {
        if (Editor == nullptr || Exit) {
            Editor.reset();
            Messages.reset(); // at its end it would take the next one out of use
            Exit.reset();
            Start();
        }
        HelpTakeDown();
        HelpFileName = HELP_FILE;
        std::filesystem::remove(Started());
        WaveChanged = BookmarkChanged = false;
        UndoOptionON = SelBoth = true;
        SelSingle = 1;
        (void)WriteWav("b.wav", 3000);
        Window().FileDropped(WriteWav("a.wav", 2000, 2));
        WaveStore->WaveDataDelete(2000, 0, 1, "First Step", true);
        Bookmarks.resize(1);
        BookmarkAppend({"range", "", BokRange, 251, 350, false});
        BookmarkAppend({"point", "", BokPoint, 601, 601, false});
        Window().SetEntryChecked("Bookmark_Show_Mnu", true);
        WaveChanged = false;
        SelStart = 201;
        SelEnd = 400;
        PlaySelStart = 501;
        PlaySelEnd = 600;
        MouseMode = 1;
        LoopOn = false;
        ViewMouseMode = 0;
        ViewAll = false;
        ViewFrom = 101;
        ViewTotal = 1000;
        Window().Refresh_Wave_View();
        (void)Messages->TakeTexts();
    }

    /// As the menu and the status bar tell it.
    [[nodiscard]] std::string ShownFormat() const {
        const bool Stereo = Window().EntryChecked("Format_Channel_Stereo_Menu");
        EXPECT_NE(Window().EntryChecked("Format_Channel_Mono_Menu"), Stereo);
        const auto* Panel = Window().findChild<QLabel*>(QStringLiteral("StatusBar1_Format"));
        return (Stereo ? "stereo, " : "mono, ") + Panel->text().toStdString();
    }
    /// All that a command may change of the program, by names.
    [[nodiscard]] std::map<std::string, std::string> State() const {
        const auto Range = [](std::int64_t From, std::int64_t To) {
            return std::to_string(From) + " to " + std::to_string(To);
        };
        const auto* SpeedBox = Window().findChild<QWidget*>(QStringLiteral("SpeedBoxPic"));
        std::string Names;
        for (std::int32_t No = 1; No <= BookmarkNos(); ++No) {
            const BookmarkRec& Each = Bookmarks[static_cast<std::size_t>(No)];
            Names += (No > 1 ? ", " : "") + Each.Name + " " + Range(Each.From, Each.To);
        }
        if (Exit)
            return {{"exit", std::to_string(*Exit)}};
        return {{"title", Title()},
                {"file", std::to_string(std::filesystem::file_size(Music() + "/a.wav"))},
                {"format", ShownFormat()},
                {"length", std::to_string(WaveStore->WavWaveINos)},
                {"undo", WaveStore->UndoMenu().Caption},
                {"selection", Range(SelStart, SelEnd)},
                {"view", Range(ViewFrom, ViewFrom + ViewTotal - 1)},
                {"tool", std::to_string(MouseMode) + ", " + std::to_string(ViewMouseMode)},
                {"channel", SelBoth ? "both" : std::to_string(SelSingle)},
                {"speed box", SpeedBox != nullptr && SpeedBox->isVisible() ? "shown" : "none"},
                {"loop", LoopOn ? "on" : "off"},
                {"labels", std::to_string(ShowHhmmss)},
                {"bookmarks", Names},
                {"bookmarks shown", Window().EntryChecked("Bookmark_Show_Mnu") ? "yes" : "no"},
                {"undo option", UndoOptionON ? "on" : "off"}};
    }

    /// What must be so for a command to do anything.
    void Prepare(const std::string& Command) const {
        if (Command == "SelectOther_Mnu")
            SelBoth = false;
        ShowNewUserGuide = Command == "EqBandSplit_Mnu";
        if (Command == "Format_Channel_Stereo_Menu")
            Window().FileDropped(Music() + "/b.wav"); // mono
        if (Command == "Format_Bit_Menu_1")
            Window().Commands.Run("Format_Bit_Menu_0");
        if (Command == "Format_FrQ_Menu_0")
            Window().Commands.Run("Format_FrQ_Menu_3");
        if (Command == "Format_FrQ_Menu_9") {
            CurrentFormat.Freq = 5000;
            Window().SetMenu_To_DefaultFormat();
        }
        (void)Messages->TakeTexts();
        // A click turns a button that stays pressed in before its command runs.
        for (const ToolButtonRow& Row : ToolbarTable())
            if (Row.Kind == ToolKind::TwoState && Command == Row.Command) {
                const QToolButton* Button = Window().ToolButton(Row.Toolbar, Row.Key);
                const_cast<QToolButton*>(Button)->setChecked(!Button->isChecked());
            }
    }

    /// Runs a command over the document of Begin(), and says what came of it: the
    /// windows, the words of messages and questions (each takes its default
    /// answer), pages, programs, and what of State() has changed.
    std::string Run(const std::string& Command) {
        Begin();
        Prepare(Command);
        const std::map<std::string, std::string> Before = State();
        const std::string Here = FolderOfPath(ProgramFile());
        std::vector<std::string> Seen;
        const Browser Web;
        {
            const WindowsAnswered Answers(Seen);
            Window().Commands.Run(Command);
        }
        for (std::string Text : Messages->TakeTexts()) {
            std::ranges::replace(Text, '\n', ' ');
            if (const std::size_t At = Text.find(Here); At != std::string::npos)
                Text.erase(At, Here.size());
            Seen.push_back("\"" + Text.substr(0, 60) + "\"");
        }
        for (const std::string& Page : Web.Pages)
            Seen.push_back("browser at " + Page);
        if (HelpWindow() != nullptr)
            Seen.push_back("help at " + HelpWindow()->Page());
        if ((Command == "OpenAnotherMnu" || Command == "Open_Mnu_1") &&
            QTest::qWaitFor([this] { return std::filesystem::exists(Started()); }, 20000))
            Seen.emplace_back("another program");
        for (const auto& [Name, Value] : State())
            if (!Before.contains(Name) || Value != Before.at(Name))
                Seen.push_back(Name + ": " + Value);
        std::string All;
        for (const std::string& Each : Seen)
            All += (All.empty() ? "" : "; ") + Each;
        return All;
    }

    /// The entries and the buttons' own names that have a routine, in the order
    /// of the screen.
    [[nodiscard]] std::vector<std::string> Commands() const {
        std::vector<std::string> Found;
        for (const std::vector<MenuRow>* Table : {&MenuTable(), &PopMnuTable()})
            for (const MenuRow& Row : *Table)
                if (Window().Commands.Has(Row.Name))
                    Found.emplace_back(Row.Name);
        for (const ToolButtonRow& Row : ToolbarTable())
            if (Window().Commands.Has(Row.Command) && MenuRowOf(Row.Command) == nullptr)
                Found.emplace_back(Row.Command);
        return Found;
    }
};

TEST_F(EveryEntryTest, EveryEntryRunsWhatItsRowSays) {
    std::map<std::string, std::string> Expected;
    for (const CommandRow& Row : CommandRows())
        EXPECT_TRUE(Expected.emplace(Row.Command, Row.Seen).second) << Row.Command;
    Begin();
    for (const std::string& Command : Commands()) {
        const std::string Seen = Run(Command);
        EXPECT_FALSE(Seen.empty()) << Command;
        // What follows three points depends on the machine.
        const std::string& Row = Expected[Command];
        const std::size_t Points = std::min(Row.find("..."), Row.size());
        EXPECT_EQ(Seen.substr(0, Points), Row.substr(0, Points)) << Command;
        EXPECT_EQ(Seen.size() > Points, Row.size() > Points) << Command;
        Expected.erase(Command);
    }
    for (const auto& [Command, Seen] : Expected)
        ADD_FAILURE() << Command << " has a row and no routine";
}

TEST_F(EveryEntryTest, EveryEntryWithARoutineHasAHintAndAHelpTopic) {
    Begin();
    for (const std::string& Command : Commands()) {
        const MenuRow* Row = MenuRowOf(Command);
        if (Row == nullptr)
            continue; // a button, see below
        EXPECT_STRNE(Row->Hint, "") << Command;
        EXPECT_NE(HelpContextOf(Command), 0) << Command;
    }
}

TEST_F(EveryEntryTest, EveryButtonRunsTheCommandOfItsRowAndHasAHintAndAHelpTopic) {
    std::map<std::string, std::string> Expected;
    for (const ButtonRow& Row : ButtonRows())
        EXPECT_TRUE(Expected.emplace(Row.Button, Row.Command).second) << Row.Button;
    Begin();
    for (const ToolButtonRow& Row : ToolbarTable()) {
        const std::string Name = std::string(Row.Toolbar) + "_" + Row.Key;
        const bool HasRoutine = Window().Commands.Has(Row.Command);
        std::vector<std::string> Ran;
        Window().Commands.Set(Row.Command, [&] { Ran.emplace_back(Row.Command); });
        Window().RefreshCommands();
        QToolButton* Button = Window().ToolButton(Row.Toolbar, Row.Key);
        Button->setEnabled(true);
        Button->click();
        EXPECT_EQ(Ran, std::vector<std::string>{Expected[Name]}) << Name;
        EXPECT_STRNE(Row.Hint, "") << Name;
        // A button without a topic of its own has that of its toolbar.
        EXPECT_FALSE(HasRoutine && HelpContextOf(Name) == 0 && HelpContextOf(Row.Toolbar) == 0)
            << Name;
        Expected.erase(Name);
    }
    for (const auto& [Button, Command] : Expected)
        ADD_FAILURE() << Button << " has a row and is no button";
}

} // namespace
} // namespace quoril::test

#include "EveryEntryTest.moc"
