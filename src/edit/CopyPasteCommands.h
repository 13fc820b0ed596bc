// The commands of the Edit menu that move sound through the private clipboard.
#pragma once

#include "audiofile/FileCommands.h"
#include "storage/BlockCarrBuffClass.h"

#include <cstdint>
#include <memory>
#include <string>

namespace quoril {

/// What the window "Wave samples placed in private ClipBoard" says. An empty line is not shown.
struct CopiedLines {
    std::string First;
    std::string Second;
    std::string Note;
};

/// What the commands need of the windows. Implemented by the shell, and by tests.
class CopyPasteView {
  public:
    virtual ~CopyPasteView() = default;
    /// Shows the lines modally.
    virtual void ShowCopied(const CopiedLines& Lines) = 0;
};

/// Index of `Edit_Paste_Mnu`.
enum PasteModes : std::int32_t {
    PasteReplace = 1,
    PasteInsert = 2,
    PasteMultiInsert = 3,
    PasteMix = 4,
    PasteModulate = 5,
    PasteCrossFade = 6
};

inline constexpr std::int32_t MostPasteTimes = 10000;

/// The commands. Each is one undo step on `WaveStore`, tells the user what goes wrong in it, and
/// returns. None reads a sample but for the pastes 4 to 6 and for a change of bits.
class CopyPasteClass {
  public:
    /// Both must outlive this object.
    CopyPasteClass(FileDialogs& UsedDialogs, CopyPasteView& UsedView)
        : Dialogs(UsedDialogs), View(UsedView) {}

    void Copy();
    /// The whole of another file, which the user chooses; the document stays as it is.
    void CopyFile();
    void Cut();
    void Delete();
    /// `Mode`: one of `PasteModes`.
    void Paste(std::int32_t Mode);

    std::int32_t MultiPasteTimes = 0; ///< the last answer of Multi-Insert; below 1 none yet

  private:
    using Carrier = std::unique_ptr<BlockCarrBuffClass>;
    /// False when nothing was copied: the user has been told why, but not that.
    [[nodiscard]] bool CopyRange(std::int32_t From, std::int32_t To, std::int32_t WorkChn);
    void CopyNamedFile(const std::string& FileName);
    void PasteAt(std::int32_t Mode, std::int32_t Pos, std::int32_t WorkChn);
    [[nodiscard]] std::int32_t AskTimes(std::int32_t ClipLength);

    FileDialogs& Dialogs;
    CopyPasteView& View;
};

} // namespace quoril
