// Save Bookmarked Parts: each marked bookmark's sound goes into a file of its own.
#pragma once

#include "audiofile/FileCommands.h"

#include <string>
#include <vector>

namespace quoril {

/// What `BokMrkSavFrm` begins with, and the user's answer.
struct BokMrkSaving {
    std::vector<std::string> Names; ///< a line each; empty without bookmarks
    std::vector<bool> Checked;      ///< of each line
    std::string Prefix;             ///< `PrefixTxt`
    bool OkClicked = false;
};

/// Implemented by `BokMrkSavFrm`, and by tests.
class BokMrkSavDialog {
  public:
    virtual ~BokMrkSavDialog() = default;
    /// Lets the user change what is checked and the prefix, and sets `OkClicked`.
    virtual void ShowBokMrkSav(BokMrkSaving& Saving) = 0;
};
/// Names who asks from now on; the object must outlive its use. With null every dialog counts as
/// cancelled.
void SetBokMrkSavDialog(BokMrkSavDialog* Receiver) noexcept;

/// The file for a bookmark: its name between what comes before the prefix's ending and that ending
/// in lower case. A prefix that is no name of an audio file gets ".wav"; an empty one is the name
/// of the document's file.
[[nodiscard]] std::string BookmarkPartFile(const std::string& Prefix, const std::string& Name);

/// The request for a file whose name is taken as the prefix.
[[nodiscard]] FileDialogRequest PrefixRequest(const std::string& Prefix);
/// The prefix of a chosen file.
[[nodiscard]] std::string PrefixOf(const std::string& Chosen);

/// `Save_Bookmark_Mnu`. Files that are there are replaced only when the user says so; a part that
/// cannot be written is told, and the others follow.
void SaveBookmarkedParts(FileCommandsView& View);

} // namespace quoril
