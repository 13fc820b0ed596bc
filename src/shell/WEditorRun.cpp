// How the program stands in the system: arguments, signals, the end of the desktop session.
#include "base/SafeApplication.h"
#include "base/UserFileWriting.h"
#include "platform/ProgramPlaces.h"
#include "platform/TerminationSignals.h"
#include "playback/PlayerProcess.h"
#include "settings/STD1.h"
#include "shell/WEditor.h"

#include <QSessionManager>
#include <QSocketNotifier>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <unistd.h>

namespace quoril {

namespace {

[[noreturn]] void ExitProcessNow(int Code) {
    std::fflush(nullptr);
    ::_exit(Code);
}

/// The window system can end the process from within, when the connection to it breaks. The work
/// files must not stay behind then either, nor may a file that is being saved be left in halves;
/// nothing else may run in that state.
void LostWindowSystem() {
    (void)UserFileWriting::FinishNow(); // there is nobody left to tell
    SessionDirRemove();
    ExitProcessNow(1);
}

WEditorSurroundings SurroundingsOf(int ArgumentCount, char** Arguments) {
    WEditorSurroundings Around;
    Around.InstalledPath = FolderOfProgram;
    Around.SystemTempPath = GetTempPathA;
    // The words as bytes: names of files need not be text.
    Around.CommandLine =
        CommandLineText(std::vector<std::string>(Arguments + 1, Arguments + ArgumentCount));
    std::error_code NoSuchFolder;
    Around.CurrentFolder = std::filesystem::current_path(NoSuchFolder).string();
    Around.ExitProcess = ExitProcessNow;
    Around.StartPlayer = [] { return StartPlayerProcess(); };
    return Around;
}

} // namespace

int WEditorRun(int ArgumentCount, char** Arguments) {
    SafeApplication Application(ArgumentCount, Arguments);
    QApplication::setApplicationName(QStringLiteral("quoril-wave-editor"));
    QApplication::setDesktopFileName(QStringLiteral("quoril-wave-editor"));
    // Numbers in files have a point, whatever the language of the desktop.
    std::setlocale(LC_NUMERIC, "C");

    WEditorClass Editor(SurroundingsOf(ArgumentCount, Arguments));
    const int Signals = TerminationSignalsCatch();
    QSocketNotifier EndWanted(Signals, QSocketNotifier::Read);
    QObject::connect(&EndWanted, &QSocketNotifier::activated, &Application,
                     [&Editor] { Editor.ShutDownWhenWritten(); });
    QObject::connect(
        &Application, &QGuiApplication::commitDataRequest, &Application,
        [&Editor](QSessionManager& Session) {
            if (!Session.allowsInteraction())
                return;
            if (!Editor.SessionEndMayGo())
                Session.cancel();
            Session.release();
        },
        Qt::DirectConnection);
    std::atexit(LostWindowSystem);

    Editor.Enter();
    return QApplication::exec();
}

} // namespace quoril
