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
/// word.
void LoadBookmarks(const std::string& FileName);

/// Writes the list in the program's own format. Without bookmarks there is no file: one that is
/// there is deleted, if it can be read as bookmarks. One that cannot is replaced only when the user
/// says so; false when not. An empty name does nothing. Throws Failure when the file cannot be
/// written or deleted; what was there is unchanged then.
bool SaveBookmarks(const std::string& FileName);

} // namespace quoril
