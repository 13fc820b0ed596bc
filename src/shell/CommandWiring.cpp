#include "shell/CommandWiring.h"

#include "audiofile/OpenSaveClass.h"
#include "audiofile/RecentFiles.h"
#include "base/CommandFailure.h"
#include "base/DocumentState.h"
#include "base/Failure.h"
#include "base/MsgBoxMod.h"
#include "base/PlayState.h"
#include "base/ProgramTitle.h"
#include "base/QtText.h"
#include "base/ViewState.h"
#include "bookmarks/BookmarkEditMod.h"
#include "bookmarks/BookmarkFileMod.h"
#include "bookmarks/BookmarkListMod.h"
#include "bookmarks/BookmarkRec.h"
#include "edit/LapMod.h"
#include "edit/LengthCommands.h"
#include "edit/SystemClipboard.h"
#include "effects/FormatCommands.h"
#include "platform/ChildProcess.h"
#include "platform/ProgramPlaces.h"
#include "playback/DsPlayClass.h"
#include "playback/PlayMod.h"
#include "playback/PlaySpeed.h"
#include "playback/SoundDriver.h"
#include "selection/SelectionMod.h"
#include "settings/STD1.h"
#include "shell/BookmarkPartsMod.h"
#include "shell/OptionsFrm.h"
#include "shell/StartUpMod.h"
#include "storage/UndoClearMod.h"
#include "storage/UndoListener.h"
#include "view/ReadOutLabel.h"
#include "view/WavePanel.h"

#include <QApplication>
#include <QToolButton>

namespace quoril {

bool FileCommandsWindow::ConfirmSelection(std::int32_t& FromPos, std::int32_t& ToPos,
                                          std::int32_t& WorkChn, std::int32_t Need,
                                          const std::string& Operation) {
    return quoril::ConfirmSelection(FromPos, ToPos, WorkChn, Need, Operation);
}

void FileCommandsWindow::DocumentReplaced(std::int32_t Total, bool IsNew) {
    ViewStateReset(Total, IsNew);
    for (const std::size_t Panel : {1U, 2U})
        Window.Wave_Pic.at(Panel)->MouseLine->hide();
    Window.ClearMouseFlags();
    Window.RefreshMousePointer();
}

void FileCommandsWindow::SetDocumentTitle(const std::string& FileName) {
    Window.SetDocumentTitle(FileName);
}

void FileCommandsWindow::SetMenu_To_DefaultFormat() {
    Window.SetMenu_To_DefaultFormat();
    Window.RefreshChannelSelector();
}

void FileCommandsWindow::Refresh_Wave_View() {
    Window.Refresh_Wave_View();
}

void FileCommandsWindow::ShowRecentFiles(const std::vector<std::string>& Captions) {
    Window.SetRecentFiles(Captions);
}

void FileCommandsWindow::StartProgram(const std::vector<std::string>& Arguments) {
    std::vector<std::string> Words = {ProgramFile()};
    Words.insert(Words.end(), Arguments.begin(), Arguments.end());
    const ChildResult Result = StartDetached(Words);
    if (!Result.Started)
        throw Failure(Result.StartError);
}

void FileCommandsWindow::ReleasePlayingFiles(bool OnlyOriginal) {
    // Saving is not heard. Another document ends the sound of this one.
    if (!OnlyOriginal && PlayIsOn())
        PlayCommand(PlayCodeStop, 0);
    quoril::ReleasePlayingFiles(OnlyOriginal);
}

void FileCommandsWindow::EmptyBookmarks() {
    Bookmarks.resize(1);
}

void FileCommandsWindow::LoadBookmarks(const std::string& FileName) {
    quoril::LoadBookmarks(FileName);
}

bool FileCommandsWindow::SaveBookmarks(const std::string& FileName) {
    return quoril::SaveBookmarks(FileName);
}

void WireFileCommands(WaveEditor_Frm& Window, FileCommandsClass& Files, FileCommandsView& View) {
    CommandTable& Commands = Window.Commands;
    Commands.Set("New_Mnu", [&Files] { Files.New(); });
    Commands.Set("Open_Mnu_0", [&Files] { Files.Open(false); });
    Commands.Set("Open_Mnu_1", [&Files] { Files.Open(true); });
    Commands.Set("OpenAnotherMnu", [&Files] { Files.OpenAnother(); });
    Commands.Set("Save_Mnu_0", [&Files] { Files.Save(false); });
    Commands.Set("Save_Mnu_1", [&Files] { Files.Save(true); });
    Commands.Set("Save_Selected_Mnu", [&Files] { Files.SaveSelected(); });
    Commands.Set("Save_Bookmark_Mnu",
                 [&View] { RunCommand({}, [&View] { SaveBookmarkedParts(View); }); });
    Commands.Set("ExportWma_Mnu", [&Files] { Files.ExportWma(); });
    // It takes the place of a clip that other windows were offered.
    SetCommandLineRoutine([](const std::string& Shown) {
        CurrentSystemClipboard().Clear();
        CurrentSystemClipboard().SetText(Shown);
    });
    for (int Number = 1; Number <= RecentFileCount; ++Number)
        Commands.Set("FileLastFilesMnu_" + std::to_string(Number),
                     [&Files, Number] { Files.OpenRecent(Number); });
    Window.FileDropped = [&Files](const std::string& Path) {
        // A drop reaches the window past a dialog, whose command may hold a part of the document.
        if (QApplication::activeModalWidget() == nullptr)
            Files.OpenDropped(Path);
    };
}

void WireUndoCommands(WaveEditor_Frm& Window) {
    Window.Commands.Set("Undo_Mnu_1", [&Window] {
        ViewAll = false;
        WaveStore->Undo();
        Window.Refresh_Wave_View();
    });
    Window.Commands.Set("Undo_Mnu_2", [] {
        if (WaveStore->UndoMenu().Enabled)
            UndoClearFiles_UserAssisted(*WaveStore);
        else
            MsgBox("Nothing to clear");
    });
    Window.Commands.Set("Undo_Mnu_3", [] {
        UndoOptionON = !UndoOptionON;
        if (UndoOptionON)
            WaveStore->UndoInfoUpdateMenu();
        else
            WaveStore->UndoInfoReset();
    });
}

void WireLengthCommands(WaveEditor_Frm& Window) {
    const auto Register = [&Window](const char* Name, void (*Command)()) {
        Window.Commands.Set(Name, [Command] { RunCommand({}, Command); });
    };
    Register("Edit_Trim_Mnu", EditTrim);
    Register("Edit_Lap_Mnu", EditLap);
    Register("Insert_Silence_Mnu", InsertSilence);
    Register("Format_Size_Mnu", ChangeSize);
}

void WireFormatCommands(WaveEditor_Frm& Window) {
    Window.Commands.Set("Format_Channel_Mono_Menu", &FormatChannelMono);
    Window.Commands.Set("Format_Channel_Stereo_Menu", &FormatChannelStereo);
    for (const std::int32_t Index : {0, 1})
        Window.Commands.Set("Format_Bit_Menu_" + std::to_string(Index),
                            [Index] { FormatBit(Index); });
    for (std::int32_t Index = 0; Index <= 10; ++Index)
        Window.Commands.Set("Format_FrQ_Menu_" + std::to_string(Index),
                            [Index] { FormatFrQ(Index); });
}

void WireBookmarkCommands(WaveEditor_Frm& Window) {
    for (const std::int32_t Index : {0, 1, 2, 3})
        Window.Commands.Set("Bookmark_Add_Mnu_" + std::to_string(Index),
                            [Index] { RunCommand({}, [Index] { BookmarkAdd(Index); }); });
    for (const std::int32_t Index : {0, 1})
        Window.Commands.Set("Bookmark_Delete_Mnu_" + std::to_string(Index),
                            [Index] { RunCommand({}, [Index] { BookmarkDelete(Index); }); });
    const auto Register = [&Window](const char* Name, void (*Command)()) {
        Window.Commands.Set(Name, [Command] { RunCommand({}, Command); });
    };
    Register("Bookmark_Goto_Mnu", BookmarkGoto);
    Register("ViewBookmark_Mnu", BookmarkGoto);
    Register("Bookmark_Manage_Mnu", BookmarkManage);
    Register("SelectBookmark_Mnu", BookmarkSelect);
}

void WireToolCommands(WaveEditor_Frm& Window) {
    Window.Commands.Set("Options_Mnu", [&Window] {
        OptionsEffects Effects;
        // A player that does not answer keeps nobody from the options after it.
        Effects.SetLoopONOFF = [] { RunCommand("Play failed", SetLoopONOFF); };
        Effects.TemposChanged = [&Window] { ShowTempos(Window); };
        Effects.SoundDriverSwitch = [](bool On) {
            SoundDriverSwitch(On ? SoundDriverOn : SoundDriverOff);
        };
        ShowOptions(Effects);
        Window.ApplyColorSettings();
        Window.Refresh_Wave_View();
    });
    Window.Commands.Set("About_Menu", [] {
        const std::string Title = ProgramTitle;
        MsgBox(Title + "\nVersion " + QUORIL_VERSION +
                   "\n\nEdits, records and plays audio waveforms of any length.",
               "About " + Title);
    });
}

void ShowTempos(WaveEditor_Frm& Window) {
    Window.SpeedDispLbl.at(1)->setText(ShownText(PlaySpeedText(TempoFor)));
    Window.SpeedDispLbl.at(2)->setText(ShownText(PlaySpeedText(TempoRev)));
}

} // namespace quoril
