// What the user does with the list of bookmarks: the list window's words and buttons, and the
// commands of the main window that choose from it.
#pragma once

#include "bookmarks/BookmarkRec.h"
#include "selection/SelectionMod.h"

#include <array>
#include <cstdint>
#include <string>

namespace quoril {

enum BokMrkModes : std::int32_t { BokMrkManage = 1, BokMrkChoose = 2 };

/// What the list window shows of one bookmark. Unused elements are empty.
struct BookmarkShown {
    std::string Name;                  ///< `NameLbl`
    std::string Remark;                ///< `RemarkLbl`
    std::array<std::string, 3> FromTo; ///< `FromToLbl`, index 1 and 2
    std::array<std::string, 5> Posi;   ///< `PosiLbl`
};
/// Of bookmark `No`, from 1; for another number the prompts that stand where none is chosen.
[[nodiscard]] BookmarkShown BookmarkShownOf(std::int32_t No);

/// The part of the current document that a bookmark means, whatever numbers it holds: typed ones
/// and those of a longer sound are kept as they are. None in an empty document.
[[nodiscard]] SampleRange BookmarkRange(const BookmarkRec& Bookmark);

/// Implemented by `BokMrkFrm`, and by tests.
class BokMrkDialog {
  public:
    virtual ~BokMrkDialog() = default;
    /// Shows the list until it is closed. The number of the bookmark that was chosen, from 1; 0
    /// when none was, and always in manage mode.
    virtual std::int32_t ShowBokMrk(BokMrkModes WorkingMode) = 0;
};

/// Names who shows the list from now on; the object must outlive its use. With null nothing is
/// ever chosen.
void SetBokMrkDialog(BokMrkDialog* Receiver) noexcept;

// ---- Buttons of the list window in manage mode; `No` is the chosen bookmark, 0 for none

void BookmarkListAdd();
void BookmarkListEdit(std::int32_t No);
void BookmarkListDelete(std::int32_t No);

// ---- Commands of the main window

/// `Bookmark_Delete_Mnu`: 0 all that lie in the selection, 1 one from the list.
void BookmarkDelete(std::int32_t Index);
/// Shows a bookmark from the list; a point keeps the zoom.
void BookmarkGoto();
/// Selects a bookmark from the list.
void BookmarkSelect();
void BookmarkManage();

} // namespace quoril
