// Which routine stands behind which menu entry, and what the commands change in the main window.
#pragma once

#include "audiofile/FileCommands.h"
#include "view/WaveEditor_Frm.h"

namespace quoril {

/// The main window as the file commands see it.
class FileCommandsWindow final : public FileCommandsView {
  public:
    explicit FileCommandsWindow(WaveEditor_Frm& MainWindow) : Window(MainWindow) {}

    bool ConfirmSelection(std::int32_t& FromPos, std::int32_t& ToPos, std::int32_t& WorkChn,
                          std::int32_t Need, const std::string& Operation) override;
    void DocumentReplaced(std::int32_t Total, bool IsNew) override;
    void SetDocumentTitle(const std::string& FileName) override;
    void SetMenu_To_DefaultFormat() override;
    void Refresh_Wave_View() override;
    void ShowRecentFiles(const std::vector<std::string>& Captions) override;
    void StartProgram(const std::vector<std::string>& Arguments) override;
    void ReleasePlayingFiles(bool OnlyOriginal) override;
    void EmptyBookmarks() override;
    void LoadBookmarks(const std::string& FileName) override;
    bool SaveBookmarks(const std::string& FileName) override;

  private:
    WaveEditor_Frm& Window;
};

/// Registers the commands on files, and the drop of a file.
void WireFileCommands(WaveEditor_Frm& Window, FileCommandsClass& Files, FileCommandsView& View);
/// Registers the entries of `Undo_Mnu`.
void WireUndoCommands(WaveEditor_Frm& Window);
/// Registers the commands on bookmarks.
void WireBookmarkCommands(WaveEditor_Frm& Window);
/// Registers trim, lap, silence and size.
void WireLengthCommands(WaveEditor_Frm& Window);
/// Registers the entries of the Format menu that change the format.
void WireFormatCommands(WaveEditor_Frm& Window);
/// Registers the commands that compute samples.
void WireEffectCommands(WaveEditor_Frm& Window);
/// Registers the options and the words about the program.
void WireToolCommands(WaveEditor_Frm& Window);

/// Shows the two play speeds.
void ShowTempos(WaveEditor_Frm& Window);

} // namespace quoril
