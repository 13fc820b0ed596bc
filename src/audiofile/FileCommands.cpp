#include "audiofile/FileCommands.h"

#include "audiofile/AudioFileNames.h"
#include "audiofile/AudioFileTypes.h"
#include "audiofile/EncoderParams.h"
#include "audiofile/RecentFiles.h"
#include "base/BusyPointer.h"
#include "base/CommandFailure.h"
#include "base/DocumentState.h"
#include "base/MsgBoxMod.h"
#include "base/ViewState.h"
#include "platform/FileSystem.h"
#include "settings/STD1.h"
#include "settings/UserGuideMod.h"
#include "storage/UndoOffScope.h"

#include <algorithm>
#include <memory>

namespace quoril {

namespace {

constexpr std::int32_t FewestNewSamples = 10000;
constexpr const char* SaveErrorTitle = "Save Error";
constexpr const char* OpenQuestion = "Open another file with out saving it?";

std::string WithAudioEnding(const std::string& FileName) {
    return IsFileTypeSupported(FileName) ? FileName : FileName + ".wav";
}

/// A path with its last ending replaced.
std::string WithWmaEnding(const std::string& Path) {
    return Path.substr(0, Path.rfind('.')) + ".wma";
}

} // namespace

bool CanBeOpened(const std::string& FileName) {
    if (IsFileTypeSupported(FileName))
        return true;
    MsgBox("Can not open this file type\n\n"
           "If you know that audio data exists in this file,\n"
           "you can rename it to .raw type and try opening it.");
    return false;
}

bool UnsavedWorkMayGo(const std::string& Question) {
    std::string What;
    if (WaveChanged)
        What = "The current waveform is changed.\n";
    else if (BookmarkChanged)
        What = "Bookmarks of the current file is changed.\n";
    else
        return true;
    return MsgBox(What + Question, {}, MsgBoxButtons::YesNo, MsgBoxAnswer::No) == MsgBoxAnswer::Yes;
}

bool OverwriteMayGo(const std::string& FileName) {
    return !FileThere(FileName) ||
           MsgBox(FileName + " already exists.\nDo you want to replace it?", {},
                  MsgBoxButtons::YesNo, MsgBoxAnswer::No) == MsgBoxAnswer::Yes;
}

void FileCommandsClass::New() {
    RunCommand({}, [this] {
        if (UnsavedWorkMayGo("Create new file with out saving it?"))
            NewDocument();
    });
}

void FileCommandsClass::NewDocument() {
    View.ReleasePlayingFiles(false);
    PlaySelStart = PlaySelEnd = 0;
    WaveStore->UndoInfoReset();
    WaveStore->StorageReset();
    WaveStore->WavFmtChannel = CurrentFormat.Channel;
    WaveStore->WavFmtFreq = CurrentFormat.Freq;
    WaveStore->WavFmtBits = CurrentFormat.Bits;

    const std::int32_t Length = std::max(CurrentFormat.Freq, FewestNewSamples);
    BlockCarrBuffClass Left;
    BlockCarrBuffClass Right;
    Left.ReDimSize(Length);
    const bool Stereo = CurrentFormat.Channel == 2;
    if (Stereo)
        Right.ReDimSize(Length);
    {
        const UndoOffScope NoUndo(*WaveStore);
        WaveStore->WaveDataInsert(1, Stereo ? 0 : 1, &Left, Stereo ? &Right : nullptr, "", false);
    }
    WaveChanged = BookmarkChanged = false;
    View.EmptyBookmarks();
    WaveFileName = "New.wav";
    WaveFilePath = WaveDir + "/" + WaveFileName;
    HasFile = false;
    View.SetDocumentTitle(WaveFileName);
    View.DocumentReplaced(Length, true);
    View.SetMenu_To_DefaultFormat();
    View.Refresh_Wave_View();
    Mp3ParamsChosen = false;
}

void FileCommandsClass::Open(bool InNewWindow) {
    RunCommand("Open Wave Error", [this, InNewWindow] {
        if (!UnsavedWorkMayGo(OpenQuestion))
            return;
        if (GuideChance(0.05))
            UserGuide("You can open multiple files by opening additional windows. Use the menu "
                      "command File - Open Another Window. This is useful for copying/pasting "
                      "between files.");
        FileDialogRequest Request;
        Request.Title = "Select a Wave file to Open";
        Request.Folder = WaveDir;
        Request.FileName = WaveFileName;
        Request.Filter = AudioFileFilter;
        Request.DefaultExtension = "wav";
        Request.FileMustExist = true;
        const std::optional<std::string> Chosen = Dialogs.OpenFile(Request);
        if (!Chosen || !CanBeOpened(*Chosen))
            return;
        if (InNewWindow)
            View.StartProgram({*Chosen});
        else
            OpenInThisWindow(*Chosen);
    });
}

void FileCommandsClass::OpenInThisWindow(const std::string& Path) {
    SelStart = SelEnd = 0;
    View.ReleasePlayingFiles(false);
    PlaySelStart = PlaySelEnd = 0;
    Open_File(FolderOfPath(Path), NameOfPath(Path));
    WaveChanged = BookmarkChanged = false;
    Mp3ParamsChosen = false;
    AddLastFile(Path);
}

void FileCommandsClass::Open_File(const std::string& FilePath, const std::string& FileName) {
    WaveDir = FilePath;
    const std::string Path = FilePath + "/" + FileName;
    bool Loaded = false;
    if (const AudioFileType* Type = AudioFileTypeOf(Path)) {
        const BusyPointer Busy;
        OpenSaveClass Files;
        (Files.*Type->Load)(*WaveStore, Path, Loaded);
    }
    if (Loaded) {
        WaveFileName = FileName;
        WaveFilePath = Path;
        HasFile = true;
        View.SetDocumentTitle(WaveFileName);
        View.EmptyBookmarks();
        View.DocumentReplaced(WaveStore->WavWaveINos, false);
        if (const std::string Bookmarks = BookmarkFileOf(Path); FileThere(Bookmarks))
            View.LoadBookmarks(Bookmarks);
        ViewAll = true;
    }
    CurrentFormat = {WaveStore->WavFmtChannel, WaveStore->WavFmtFreq, WaveStore->WavFmtBits};
    View.SetMenu_To_DefaultFormat();
    View.Refresh_Wave_View();
}

bool FileCommandsClass::Save(bool SaveAs) {
    bool Saved = false;
    RunCommand(SaveErrorTitle, [this, SaveAs, &Saved] { Saved = SaveDocument(SaveAs); });
    return Saved;
}

bool FileCommandsClass::SaveDocument(bool SaveAs) {
    const bool SameFile = !SaveAs && HasFile && FileThere(WaveFilePath);
    std::string Path = WaveFilePath;
    if (!SameFile) {
        const auto Chosen = AskSaveName("Choose wave file name to save", WaveDir, WaveFileName);
        if (!Chosen)
            return false;
        Path = *Chosen;
    }
    const AudioFileType* Type = AudioFileTypeOf(Path);
    if (Type == nullptr)
        return false;
    WaveDir = FolderOfPath(Path);
    const BusyPointer Busy;
    View.ReleasePlayingFiles(true);
    OpenSaveClass Files;
    if (!Type->Write(Files, *WaveStore, Path, {.ReuseParameters = SameFile && Mp3ParamsChosen}))
        return false; // the user has been told, and everything is as it was
    WaveChanged = false;
    WaveFileName = NameOfPath(Path);
    WaveFilePath = Path;
    HasFile = true;
    View.SetDocumentTitle(WaveFileName);
    // Until they are in their file: the writing may fail, and the sound is saved all the same.
    BookmarkChanged = true;
    RunCommand(SaveErrorTitle, [&] {
        BookmarkChanged =
            !View.SaveBookmarks(Type->HasBookmarkFile ? BookmarkFileOf(Path) : std::string());
    });
    View.SetMenu_To_DefaultFormat();
    AddLastFile(Path);
    return !BookmarkChanged;
}

std::optional<std::string> FileCommandsClass::AskSaveName(const std::string& Title,
                                                          const std::string& Folder,
                                                          const std::string& FileName) {
    FileDialogRequest Request;
    Request.Title = Title;
    Request.Folder = Folder;
    Request.FileName = FileName;
    Request.Filter = AudioFileFilter;
    Request.DefaultExtension = "wav";
    Request.PathMustExist = true;
    Request.OverwritePrompt = true;
    const std::optional<std::string> Chosen = Dialogs.SaveFile(Request);
    if (!Chosen || Chosen->empty())
        return std::nullopt;
    const std::string Path = WithAudioEnding(*Chosen);
    // The dialog has asked about the name as it was typed, not about this one.
    if (Path != *Chosen && !OverwriteMayGo(Path))
        return std::nullopt;
    return Path;
}

bool FileCommandsClass::SaveBookmarksBesideFile() {
    bool Saved = false;
    RunCommand(SaveErrorTitle, [this, &Saved] {
        Saved = View.SaveBookmarks(BookmarkFileOf(WaveFilePath));
        if (Saved)
            BookmarkChanged = false;
    });
    return Saved;
}

void FileCommandsClass::SaveSelected() {
    RunCommand(SaveErrorTitle, [this] {
        std::int32_t FromPos = 0;
        std::int32_t ToPos = 0;
        std::int32_t WorkChn = 0;
        if (!View.ConfirmSelection(FromPos, ToPos, WorkChn, 2, "Save Selected"))
            return;
        const auto Path = AskSaveName("Select file name to to save selected", SelectedDir, "");
        if (!Path)
            return;
        const AudioFileType* Type = AudioFileTypeOf(*Path);
        if (Type == nullptr)
            return;
        SelectedDir = FolderOfPath(*Path);
        const BusyPointer Busy;
        View.ReleasePlayingFiles(true);
        OpenSaveClass Files;
        (Files.*Type->WritePart)(*WaveStore, FromPos, ToPos, WorkChn, *Path);
    });
}

void FileCommandsClass::ExportWma() {
    RunCommand("Export to Wma Error", [this] {
        if (WmaBitRates(WaveStore->WavFmtFreq, WaveStore->WavFmtChannel).empty()) {
            MsgBox("Only these formats are supported for exporting to Wma, using wma8 utility\n"
                   "44100Hz, 32000Hz, 22050Hz, 16000Hz, 8000Hz,\n"
                   "48000Hz (stereo only) and 11025Hz (mono only)\n"
                   "Please change the format to one of these and try again.");
            return;
        }
        FileDialogRequest Request;
        Request.Title = "Choose a Windows media file name to export to";
        const bool RealFile = FileThere(WaveFilePath);
        Request.Folder = RealFile ? FolderOfPath(WaveFilePath) : WaveDir;
        Request.FileName = RealFile ? NameOfPath(WithWmaEnding(WaveFilePath)) : std::string();
        Request.Filter = "Windows media audio files (Wma)|*.Wma|All files (*.*)|*.*";
        Request.DefaultExtension = "wma";
        Request.PathMustExist = true;
        Request.OverwritePrompt = true;
        const std::optional<std::string> Chosen = Dialogs.SaveFile(Request);
        if (!Chosen || Chosen->empty())
            return;
        const std::string Path = EndingOfPath(*Chosen) == "wma" ? *Chosen : *Chosen + ".wma";
        if (Path != *Chosen && !OverwriteMayGo(Path))
            return;
        const BusyPointer Busy;
        View.ReleasePlayingFiles(true);
        (void)OpenSaveClass().FileWriteWma(*WaveStore, Path);
    });
}

void FileCommandsClass::OpenRecent(int Number) {
    RunCommand("Open Wave Error", [this, Number] {
        if (!UnsavedWorkMayGo(OpenQuestion))
            return;
        const auto Item = static_cast<std::size_t>(Number) - 1;
        const std::string Path = Item < MenuFiles.size() ? MenuFiles[Item] : std::string();
        if (!FileThere(Path))
            MsgBox("File not found");
        else if (CanBeOpened(Path))
            OpenInThisWindow(Path);
    });
}

void FileCommandsClass::OpenDropped(const std::string& Path) {
    RunCommand("Open Wave Error", [this, &Path] {
        if (CanBeOpened(Path))
            OpenInThisWindow(Path);
    });
}

void FileCommandsClass::OpenAnother() {
    RunCommand("Open Wave Error", [this] { View.StartProgram({}); });
}

void FileCommandsClass::AddLastFile(const std::string& FileName) {
    RecentFilesAdd(FileName);
    // What the menu shows is what a click opens, even if another window has changed the list since.
    MenuFiles.clear();
    std::vector<std::string> Captions;
    for (const std::string& Path : RecentFilesRead())
        if (!Path.empty()) {
            MenuFiles.push_back(Path);
            Captions.push_back(RecentFileCaption(Path));
        }
    View.ShowRecentFiles(Captions);
}

} // namespace quoril
