// The entry sequence and the exit sequence of the program.
#pragma once

#include "playback/PlayerComponent.h"
#include "shell/BokMrkChosFrm.h"
#include "shell/BokMrkEdtFrm.h"
#include "shell/BokMrkFrm.h"
#include "shell/BokMrkSavFrm.h"
#include "shell/ChkDskSpcFrm.h"
#include "shell/ChnMixFrm.h"
#include "shell/CommandWiring.h"
#include "shell/CompMonoFrm.h"
#include "shell/CopyPasteWiring.h"
#include "shell/DelSilenFrm.h"
#include "shell/DesktopClipboard.h"
#include "shell/EchoFrm.h"
#include "shell/EncChoseAppFrm.h"
#include "shell/EncRunFrm.h"
#include "shell/EntFrqFrm.h"
#include "shell/EntStrchFrm.h"
#include "shell/EqlizFrm.h"
#include "shell/FileDialogWindows.h"
#include "shell/LapFrm.h"
#include "shell/MessageBoxes.h"
#include "shell/Mp3ParamFrm.h"
#include "shell/PlayControls.h"
#include "shell/ProgressFrm.h"
#include "shell/RawLoadFrm.h"
#include "shell/RecordWiring.h"
#include "shell/UndoClearFrm.h"
#include "shell/UserGuideFrm.h"
#include "shell/WindowPlaceKeeper.h"
#include "shell/WmaParamFrm.h"
#include "view/EntDurFrm.h"
#include "view/SelConfFrm.h"

#include <functional>
#include <memory>
#include <span>
#include <string>

class QSessionManager;

namespace quoril {

/// What the program is started with.
struct WEditorSurroundings {
    std::function<std::string()> InstalledPath;  ///< the folder of the program; may throw
    std::function<std::string()> SystemTempPath; ///< the system's place for temporary files
    std::string CommandLine;                     ///< the words after the program's name
    std::string CurrentFolder;            ///< what a relative name on the command line begins at
    std::function<void(int)> ExitProcess; ///< ends the process with an exit code
    PlayerMaker StartPlayer;              ///< starts the player; without it there is no sound
};

/// The running program: made once, after the QApplication. Everything that lives as long as the
/// main window belongs to it.
class WEditorClass {
  public:
    explicit WEditorClass(WEditorSurroundings Given);
    ~WEditorClass();
    WEditorClass(const WEditorClass&) = delete;
    WEditorClass& operator=(const WEditorClass&) = delete;

    /// The entry sequence. A failure ends it with a message; if the main window is open by then the
    /// program goes on, otherwise the process ends.
    void Enter();

    /// The main window is to close: settles unsaved work, then takes everything down and ends the
    /// process. False when the user wants to stay.
    bool Unload();
    /// Takes everything down and ends the process without a question.
    void ShutDown();
    /// The same as soon as no file of the user's is half written.
    void ShutDownWhenWritten();
    /// The desktop session is to end: settles unsaved work, and closes nothing. False when the user
    /// wants to stay.
    bool SessionEndMayGo();

    [[nodiscard]] WaveEditor_Frm* MainWindowFrm() const noexcept { return Window.get(); }

  private:
    /// A step by its name, so that the sequences can be read as lists.
    struct Step {
        const char* Name;
        void (WEditorClass::*Run)();
    };
    static std::span<const Step> EntrySteps();
    static std::span<const Step> MainWindowLoadSteps();
    static std::span<const Step> ExitSteps();
    void RunSteps(std::span<const Step> Steps);

    // Entry
    void FixPaths();
    void ReadSettings();
    void SetUpWorkingFiles();
    void FixMemoryBudget();
    void NoteSoundSystem();
    void ReadColors();
    void MakePlayer();
    void MakeWaveStore();
    void LoadMainWindow();
    void ShowMainWindow();
    void ShowCheckMarks();
    void StartSoundDriver();
    void OfferSoundCheck();
    void OpenCommandLineFile();
    void ShowFirstTip();

    // Load of the main window
    void MakeMainWindow();
    void RestoreWindowPlace();
    void LayOutMainWindow();
    void ShowCurrentFormat();
    void MakeNewDocument();
    void InitialiseHelp();
    void ShowLoopPlay();
    void ShowPlaySpeeds();
    void FillRecentFiles();
    void MakePlayCarriers();

    // Exit
    [[nodiscard]] bool UnsavedWorkSettled();
    void HideMainWindow();
    void StopRecording();
    void StopPlayback();
    void DropClip();
    void StopSoundDriver();
    void DropPlayer();
    void DropWaveStore();
    void WriteSettings();
    void StoreWindowPlace();
    void CloseHelp();
    void RemoveSessionFolder();
    void EndProcess();

    WEditorSurroundings Around;
    MessageBoxesClass Messages;
    ProgressFrmClass Progress;
    UserGuideWindows Guides;
    SelConfAsker SelectionQuestions;
    EntDurAsker DurationQuestions;
    ChkDskSpcAsker DiskSpaceQuestions;
    LapAsker LapQuestions;
    BokMrkEdtAsker BookmarkQuestions;
    ChnMixAsker ChnMixQuestions;
    CompMonoAsker CompMonoQuestions;
    EqlizAsker EqlizQuestions;
    EntFrqAsker FrequencyQuestions;
    DelSilenAsker SilenceQuestions;
    StretchAsker StretchQuestions;
    EchoAsker EchoQuestions;
    BokMrkChosAsker BookmarkChoices;
    UndoClearWindow UndoClearQuestions;
    FileDialogWindows Dialogs;
    BokMrkAsker BookmarkLists{Dialogs};
    BokMrkSavAsker BookmarkParts{Dialogs};
    RawLoadAsker RawQuestions;
    EncChoseAppAsker EncoderQuestions{Dialogs};
    Mp3ParamAsker Mp3Questions;
    WmaParamAsker WmaQuestions;
    EncoderWaiter EncoderWaits;
    std::unique_ptr<WaveEditor_Frm> Window;
    std::unique_ptr<WindowPlaceKeeper> PlaceKeeper;
    std::unique_ptr<FileCommandsWindow> FilesView;
    std::unique_ptr<FileCommandsClass> Files;
    DesktopClipboard Clipboard;
    CopyPasteWindows CopiedBox;
    std::unique_ptr<CopyPasteClass> Pasting;
    std::unique_ptr<PlayControls> Playing;
    std::unique_ptr<RecordCommands> Recording;
    bool Closing = false;
};

/// The whole program, for `main`. Ends the process by itself in the ordinary way.
int WEditorRun(int ArgumentCount, char** Arguments);

} // namespace quoril
