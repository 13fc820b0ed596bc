#include "shell/WEditor.h"

#include "audiofile/DocumentFile.h"
#include "base/BusyPointer.h"
#include "base/CommandFailure.h"
#include "base/DocumentState.h"
#include "base/ModalWindow.h"
#include "base/MsgBoxMod.h"
#include "base/PlayState.h"
#include "base/UserFileWriting.h"
#include "edit/PrivateClipboard.h"
#include "platform/FileSystem.h"
#include "platform/ProgramPlaces.h"
#include "platform/Text.h"
#include "playback/DsPlayClass.h"
#include "playback/PlayMod.h"
#include "playback/SoundDriver.h"
#include "settings/STD1.h"
#include "settings/UserGuideMod.h"
#include "shell/CheckDx7Frm.h"
#include "shell/HelpViewer.h"
#include "shell/StartUpMod.h"
#include "shell/WebLinks.h"
#include "view/ColorSettings.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QTimer>
#include <QWindow>
#include <array>
#include <fmt/format.h>
#include <utility>

namespace quoril {

namespace {

void ShowBusyPointer(bool Busy) {
    if (Busy)
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QGuiApplication::restoreOverrideCursor();
}

} // namespace

WEditorClass::WEditorClass(WEditorSurroundings Given)
    : Around(std::move(Given)), Guides([this](const std::string& Message) {
          if (Window != nullptr)
              Window->StatusGuide(Message);
      }) {
    SetBusyPointerRoutine(&ShowBusyPointer);
}

WEditorClass::~WEditorClass() {
    MainWindowOpen = false;
    DropPlayer();
    ClearClipboard();
    Pasting.reset();
    Files.reset();
    FilesView.reset();
    Playing.reset();
    Recording.reset();
    Window.reset();
    WaveStore.reset();
}

// ---- The sequences

std::span<const WEditorClass::Step> WEditorClass::EntrySteps() {
    static constexpr std::array<Step, 14> Steps = {
        {{"fix the base paths", &WEditorClass::FixPaths},
         {"read the settings", &WEditorClass::ReadSettings},
         {"set up the session folder", &WEditorClass::SetUpWorkingFiles},
         {"fix the memory budget", &WEditorClass::FixMemoryBudget},
         {"note the sound system", &WEditorClass::NoteSoundSystem},
         {"read the colours", &WEditorClass::ReadColors},
         {"make the player", &WEditorClass::MakePlayer},
         {"make the wave store", &WEditorClass::MakeWaveStore},
         {"show the main window", &WEditorClass::ShowMainWindow},
         {"show the check marks", &WEditorClass::ShowCheckMarks},
         {"start the sound driver", &WEditorClass::StartSoundDriver},
         {"offer the check of the sound system", &WEditorClass::OfferSoundCheck},
         {"open the file on the command line", &WEditorClass::OpenCommandLineFile},
         {"show the first tip", &WEditorClass::ShowFirstTip}}};
    return Steps;
}

std::span<const WEditorClass::Step> WEditorClass::MainWindowLoadSteps() {
    static constexpr std::array<Step, 10> Steps = {
        {{"make the window and its commands", &WEditorClass::MakeMainWindow},
         {"restore its place and size", &WEditorClass::RestoreWindowPlace},
         {"set colours, note twips", &WEditorClass::LayOutMainWindow},
         {"set the format menu", &WEditorClass::ShowCurrentFormat},
         {"make a new document", &WEditorClass::MakeNewDocument},
         {"initialise the help", &WEditorClass::InitialiseHelp},
         {"show loop play", &WEditorClass::ShowLoopPlay},
         {"show the play speeds", &WEditorClass::ShowPlaySpeeds},
         {"fill the recent files", &WEditorClass::FillRecentFiles},
         {"make the play carriers", &WEditorClass::MakePlayCarriers}}};
    return Steps;
}

std::span<const WEditorClass::Step> WEditorClass::ExitSteps() {
    static constexpr std::array<Step, 12> Steps = {
        {{"hide the main window", &WEditorClass::HideMainWindow},
         {"stop recording", &WEditorClass::StopRecording},
         {"stop playback", &WEditorClass::StopPlayback},
         {"drop the clip", &WEditorClass::DropClip},
         {"stop the sound driver", &WEditorClass::StopSoundDriver},
         {"drop the player", &WEditorClass::DropPlayer},
         {"drop the wave store", &WEditorClass::DropWaveStore},
         {"write the settings", &WEditorClass::WriteSettings},
         {"store the window's place", &WEditorClass::StoreWindowPlace},
         // The help keeps its notes in the session folder.
         {"close the help", &WEditorClass::CloseHelp},
         {"remove the session folder", &WEditorClass::RemoveSessionFolder},
         {"end the process", &WEditorClass::EndProcess}}};
    return Steps;
}

void WEditorClass::RunSteps(std::span<const Step> Steps) {
    for (const Step& Each : Steps)
        (this->*Each.Run)();
}

void WEditorClass::Enter() {
    if (RunCommand({}, [this] { RunSteps(EntrySteps()); }) || MainWindowOpen)
        return;
    SessionDirRemove();
    EndProcess();
}

// ---- Entry

void WEditorClass::FixPaths() {
    PathsSetUp(Around.InstalledPath(), Around.SystemTempPath());
}

void WEditorClass::ReadSettings() {
    StartUpSettingsRead();
}

void WEditorClass::SetUpWorkingFiles() {
    WorkingFilesSetUp();
}

void WEditorClass::FixMemoryBudget() {
    if (const std::string Warning = MemoryBudgetSetUp(); !Warning.empty())
        UserGuide(Warning);
}

void WEditorClass::NoteSoundSystem() {
    SoundSystemVersionNote();
}

void WEditorClass::ReadColors() {
    ColorSettingsRead();
}

void WEditorClass::MakePlayer() {
    DsPlayer = std::make_unique<DsPlayClass>(Around.StartPlayer);
}

void WEditorClass::MakeWaveStore() {
    WaveStore = std::make_unique<FileMemoClass>();
}

void WEditorClass::ShowMainWindow() {
    RunSteps(MainWindowLoadSteps());
    Window->show();
    MainWindowOpen = true;
    // Boxes of the steps to come are to stand over a window that is on the screen.
    constexpr int MostMilliSeconds = 1000;
    QElapsedTimer Waiting;
    Waiting.start();
    do
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 20);
    while (!Window->windowHandle()->isExposed() && Waiting.elapsed() < MostMilliSeconds);
    PlaceKeeper->Settle();
}

void WEditorClass::ShowCheckMarks() {
    WaveStore->UndoInfoUpdateMenu();
    Window->RefreshDisplayToggle();
}

void WEditorClass::StartSoundDriver() {
    const BusyPointer Busy;
    SoundDriverSwitch(SoundDriverOn);
}

void WEditorClass::OfferSoundCheck() {
    OfferDx7Check();
}

void WEditorClass::OpenCommandLineFile() {
    if (Trim(Around.CommandLine).empty())
        return;
    const auto Path = CommandLineFile(Around.CommandLine, Around.CurrentFolder, FileThere);
    if (Path)
        Files->Open_File(FolderOfPath(*Path), NameOfPath(*Path));
    else
        MsgBox("Command line string is not a wave file name to open\n" + Around.CommandLine);
}

void WEditorClass::ShowFirstTip() {
    UserGuide("Move the mouse pointer over any button to read a short description in the status "
              "bar at the bottom of the main window.");
}

// ---- Load of the main window

void WEditorClass::MakeMainWindow() {
    Window = std::make_unique<WaveEditor_Frm>();
    Progress.SetMainWindow(Window.get());
    FilesView = std::make_unique<FileCommandsWindow>(*Window);
    Files = std::make_unique<FileCommandsClass>(Dialogs, *FilesView);
    WireFileCommands(*Window, *Files, *FilesView);
    Pasting = std::make_unique<CopyPasteClass>(Dialogs, CopiedBox);
    WireCopyPasteCommands(*Window, *Pasting);
    WireUndoCommands(*Window);
    WireLengthCommands(*Window);
    WireFormatCommands(*Window);
    WireEffectCommands(*Window);
    WireBookmarkCommands(*Window);
    WireToolCommands(*Window);
    WireWebLinks(*Window, QUORIL_WEB_SITE, FolderOfPath(ProgramFile()));
    Playing = std::make_unique<PlayControls>(*Window);
    Recording = std::make_unique<RecordCommands>(*Window);
    WireRecordCommands(*Window, *Recording);
    Window->RefreshCommands();
    Window->UnloadWanted = [this] { return Unload(); };
}

void WEditorClass::RestoreWindowPlace() {
    PlaceKeeper = std::make_unique<WindowPlaceKeeper>(*Window);
    PlaceKeeper->Restore();
    Window->PlaceChanged = [this] { PlaceKeeper->Record(); };
}

void WEditorClass::LayOutMainWindow() {
    constexpr double TwipsPerInch = 1440.0;
    Window->ApplyColorSettings();
    IniPut("General", "TwipsX", fmt::format("{:g}", TwipsPerInch / Window->logicalDpiX()));
    IniPut("General", "TwipsY", fmt::format("{:g}", TwipsPerInch / Window->logicalDpiY()));
}

void WEditorClass::ShowCurrentFormat() {
    FilesView->SetMenu_To_DefaultFormat();
}

void WEditorClass::MakeNewDocument() {
    Files->NewDocument();
}

void WEditorClass::InitialiseHelp() {
    HelpSetUp(*Window);
}

void WEditorClass::ShowLoopPlay() {
    SetLoopONOFF();
}

void WEditorClass::ShowPlaySpeeds() {
    ShowTempos(*Window);
}

void WEditorClass::FillRecentFiles() {
    Files->AddLastFile({});
}

void WEditorClass::MakePlayCarriers() {
    PlayBuffL = std::make_unique<BlockCarrBuffClass>();
    PlayBuffR = std::make_unique<BlockCarrBuffClass>();
}

// ---- Exit

bool WEditorClass::Unload() {
    if (Closing)
        return true;
    // A close that comes in the midst of a command is not the user's answer to it.
    if (Progress.IsOn() || !UnsavedWorkSettled())
        return false;
    ShutDown();
    return true;
}

bool WEditorClass::SessionEndMayGo() {
    // A take that is not in the document yet would go without a question.
    const bool Recorded = Recording != nullptr && Recording->HoldsTake();
    return !Progress.IsOn() && !Recorded && UnsavedWorkSettled();
}

bool WEditorClass::UnsavedWorkSettled() {
    const auto Ask = [](const std::string& What) {
        return MsgBox(What + "\nDo you want to save it?", {}, MsgBoxButtons::YesNoCancel,
                      MsgBoxAnswer::No);
    };
    if (WaveChanged) {
        const MsgBoxAnswer Answer = Ask("The current waveform is changed.");
        if (Answer == MsgBoxAnswer::Yes)
            return Files->Save(false);
        return Answer != MsgBoxAnswer::Cancel;
    }
    if (BookmarkChanged) {
        const MsgBoxAnswer Answer = Ask("Bookmarks of the current file is changed.");
        if (Answer == MsgBoxAnswer::Yes)
            return Files->SaveBookmarksBesideFile();
        return Answer != MsgBoxAnswer::Cancel;
    }
    return true;
}

void WEditorClass::ShutDown() {
    if (std::exchange(Closing, true))
        return;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    // What fails here must not keep the steps after it from being done.
    for (const Step& Each : ExitSteps())
        RunCommand({}, [this, &Each] { (this->*Each.Run)(); });
}

void WEditorClass::ShutDownWhenWritten() {
    constexpr int MilliSecondsBetweenLooks = 20;
    if (UserFileWriting::IsOn())
        QTimer::singleShot(MilliSecondsBetweenLooks, Window.get(),
                           [this] { ShutDownWhenWritten(); });
    else
        ShutDown();
}

void WEditorClass::HideMainWindow() {
    if (Window != nullptr)
        Window->hide();
}

void WEditorClass::StopRecording() {
    if (Recording != nullptr)
        Recording->TakeDown();
}

void WEditorClass::StopPlayback() {
    // With the driver off nothing plays, and the command would only say so.
    if (SoundDriverState != 0)
        PlayCommand(PlayStopAndRelease, 0);
    ReleasePlayingFiles(false);
}

void WEditorClass::DropClip() {
    ClearClipboard();
}

void WEditorClass::StopSoundDriver() {
    if (SoundDriverState != 0)
        SoundDriverSwitch(SoundDriverOff);
}

void WEditorClass::DropPlayer() {
    PlayBuffL.reset();
    PlayBuffR.reset();
    DsPlayer.reset();
}

void WEditorClass::DropWaveStore() {
    WaveStore.reset();
}

void WEditorClass::WriteSettings() {
    ShutDownSettingsWrite();
}

void WEditorClass::StoreWindowPlace() {
    if (PlaceKeeper != nullptr)
        PlaceKeeper->Store();
}

void WEditorClass::CloseHelp() {
    HelpTakeDown();
}

void WEditorClass::RemoveSessionFolder() {
    SessionDirRemove();
}

void WEditorClass::EndProcess() {
    constexpr int ExitCode = 1;
    Around.ExitProcess(ExitCode);
}

} // namespace quoril
