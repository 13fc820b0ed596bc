// The file of bookmarks beside an audio file.
#pragma once

#include <cstdint>
#include <string>

namespace quoril {

/// What becomes of bookmarks that are loaded while there are others.
enum BokMrkChoices : std::int32_t { BokMrkNothing = 0, BokMrkAppend = 1, BokMrkReplace = 2 };

/// Implemented by `BokMrkChosFrm`, and by tests.
class BokMrkChosDialog {
  public:
    virtual ~BokMrkChosDialog() = default;
    /// Shows the label's text until the user has chosen.
    virtual BokMrkChoices ShowBokMrkChos(const std::string& Label) = 0;
};

/// Names who asks from now on; the object must outlive its use. With null nothing is loaded over
/// bookmarks that are there.
void SetBokMrkChosDialog(BokMrkChosDialog* Receiver) noexcept;

/// Reads a file of bookmarks into the list: the program's own format when the name ends in ".bok",
/// a text file in the form of settings otherwise. Bookmarks beyond the document stay in the list.
/// A file that is not there, or that cannot be read as one, leaves the list as it was without a
/// word. Whether the list has changed; `BookmarkChanged` is the caller's.
bool LoadBookmarks(const std::string& FileName);

/// What becomes of a file that stands where the bookmarks belong and cannot be read as bookmarks.
enum class UnreadableFiles : std::uint8_t {
    Ask,    ///< the user says whether it is replaced
    Replace ///< the user has said so already
};

/// Writes the list in the program's own format. Without bookmarks there is no file: one that is
/// there is deleted, if it can be read as bookmarks. One that cannot is replaced as `How` has it;
/// false when the user keeps it. An empty name does nothing. Throws Failure when the file cannot be
/// written or deleted; what was there is unchanged then.
bool SaveBookmarks(const std::string& FileName, UnreadableFiles How = UnreadableFiles::Ask);

} // namespace quoril
