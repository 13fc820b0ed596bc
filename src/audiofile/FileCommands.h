// The commands on files: New, Open, Save, Save Selected, recent files, and what goes with them.
#pragma once

#include "audiofile/DocumentFile.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quoril {

/// What a file dialog is shown with.
struct FileDialogRequest {
    std::string Title;
    std::string Folder;
    std::string FileName; ///< proposed, without a folder
    std::string Filter;   ///< pairs of a caption and patterns, all divided by "|"
    std::string DefaultExtension;
    bool FileMustExist = false;
    bool PathMustExist = false;
    bool OverwritePrompt = false;
};

/// Implemented by the windows, and by tests. The result is a full path, or nothing when the user
/// cancelled.
class FileDialogs {
  public:
    virtual ~FileDialogs() = default;
    virtual std::optional<std::string> OpenFile(const FileDialogRequest& Request) = 0;
    virtual std::optional<std::string> SaveFile(const FileDialogRequest& Request) = 0;
};

/// What the commands change around the document. Implemented by the shell, and by tests.
class FileCommandsView {
  public:
    virtual ~FileCommandsView() = default;
    /// The gate of all commands that work on the selection.
    virtual bool ConfirmSelection(std::int32_t& FromPos, std::int32_t& ToPos, std::int32_t& WorkChn,
                                  std::int32_t Need, const std::string& Operation) = 0;
    /// Another document of `Total` samples is in the store: selection and view start anew, the line
    /// cursors and the marks of the play range go.
    virtual void DocumentReplaced(std::int32_t Total, bool IsNew) = 0;
    virtual void SetDocumentTitle(const std::string& FileName) = 0;
    /// Format menu, channel controls and the status panel "Format".
    virtual void SetMenu_To_DefaultFormat() = 0;
    virtual void Refresh_Wave_View() = 0;
    virtual void ShowRecentFiles(const std::vector<std::string>& Captions) = 0;
    /// Starts this program once more, as a process that lives on without this one. Throws Failure.
    virtual void StartProgram(const std::vector<std::string>& Arguments) = 0;

    /// The player lets go of its files; with `OnlyOriginal` only if it reads the opened file. Does
    /// nothing where there is no player.
    virtual void ReleasePlayingFiles([[maybe_unused]] bool OnlyOriginal) {}
    virtual void EmptyBookmarks() = 0;
    // Do nothing where bookmarks have no files.
    virtual void LoadBookmarks([[maybe_unused]] const std::string& FileName) {}
    /// False when the user keeps another file that bears the name.
    virtual bool SaveBookmarks([[maybe_unused]] const std::string& FileName) { return true; }
};

/// The commands. Each one tells the user what goes wrong in it, and returns.
class FileCommandsClass {
  public:
    /// Both must outlive this object.
    FileCommandsClass(FileDialogs& UsedDialogs, FileCommandsView& UsedView)
        : Dialogs(UsedDialogs), View(UsedView) {}

    void New();
    /// A new empty document in the current format, without any question: one second of silence, at
    /// least 10000 samples.
    void NewDocument();
    /// `InNewWindow`: the chosen file goes to a new process, and this one stays as it is.
    void Open(bool InNewWindow);
    /// Loads a file, and brings names, view, bookmarks and format in line with it. `FilePath` is
    /// the folder without a separator at its end. The user has agreed to lose the old document.
    void Open_File(const std::string& FilePath, const std::string& FileName);
    /// True when the document and its bookmarks are in their files: false when the user cancelled,
    /// or was told or decided that one could not be written. What was not written counts as changed
    /// as before, and the document keeps its name.
    bool Save(bool SaveAs);
    void SaveSelected();
    /// Asks for a name and writes the document there as WMA, which cannot be read again.
    void ExportWma();
    /// Item `Number` of the recent files menu, from 1.
    void OpenRecent(int Number);
    /// A file dropped on the window; no question about unsaved work.
    void OpenDropped(const std::string& Path);
    void OpenAnother();
    /// Puts a file at the head of the recent files; an empty name only fills the menu.
    void AddLastFile(const std::string& FileName);
    /// Writes the bookmark file that belongs to the document's path. False when that failed, which
    /// the user has been told, or decided: the bookmarks count as changed as before.
    bool SaveBookmarksBesideFile();

  private:
    void OpenInThisWindow(const std::string& Path);
    bool SaveDocument(bool SaveAs);
    [[nodiscard]] std::optional<std::string>
    AskSaveName(const std::string& Title, const std::string& Folder, const std::string& FileName);

    FileDialogs& Dialogs;
    FileCommandsView& View;
    std::vector<std::string> MenuFiles; ///< what the recent files menu shows, from its item 1
    bool HasFile = false;               ///< the document came from a file, or has been saved to one
};

/// True for a name that some type of audio files can read; otherwise the user is told.
[[nodiscard]] bool CanBeOpened(const std::string& FileName);

/// The question about unsaved work before a command that would lose it: true when there is none, or
/// the user answers Yes. Changed samples hide changed bookmarks.
[[nodiscard]] bool UnsavedWorkMayGo(const std::string& Question);

/// The question before a file is written over that no dialog has asked about: true when there is no
/// such file, or the user answers Yes.
[[nodiscard]] bool OverwriteMayGo(const std::string& FileName);

} // namespace quoril
