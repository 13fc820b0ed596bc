#include "bookmarks/BookmarkListMod.h"

#include "base/DocumentState.h"
#include "base/MsgBoxMod.h"
#include "base/ViewState.h"
#include "bookmarks/BookmarkEditMod.h"
#include "selection/DocumentFacts.h"
#include "selection/ViewListener.h"
#include "storage/FileMemoClass.h"

#include <fmt/format.h>

#include <utility>

namespace quoril {

namespace {

BokMrkDialog* Dialog = nullptr;

bool IsBookmark(std::int32_t No) {
    return No >= 1 && No <= BookmarkNos();
}

BookmarkRec& Record(std::int32_t No) {
    return Bookmarks.at(static_cast<std::size_t>(No));
}

void Remove(std::int32_t No) {
    Bookmarks.erase(Bookmarks.begin() + No);
}

std::string Seconds(double Samples) {
    return fmt::format("{:.3f} Sec", Samples / WaveStore->WavFmtFreq);
}

std::int32_t LastOf(const BookmarkRec& Bookmark) {
    return Bookmark.BokType == BokPoint ? Bookmark.From : Bookmark.To;
}

/// False when there is no bookmark, which has been told then.
bool AnyBookmark(const char* Title) {
    if (BookmarkNos() > 0)
        return true;
    MsgBox("No bookmark exists", Title);
    return false;
}

/// The number of a bookmark from the list; 0 when the user chose none.
std::int32_t Chosen() {
    const std::int32_t No = Dialog == nullptr ? 0 : Dialog->ShowBokMrk(BokMrkChoose);
    return IsBookmark(No) ? No : 0;
}

void DeleteSelected(const char* Title) {
    std::int32_t From = 0;
    std::int32_t To = 0;
    std::int32_t WorkChn = 0;
    if (!ConfirmSelection(From, To, WorkChn, NeedTwoPoints, "Copy"))
        return;
    const auto In = [&](std::int32_t Position) { return From <= Position && Position <= To; };
    const auto Within = [&](const BookmarkRec& Bookmark) {
        return In(Bookmark.From) && In(LastOf(Bookmark));
    };
    const std::int32_t Before = BookmarkNos();
    for (std::int32_t No = Before; No >= 1; --No)
        if (Within(Record(No)))
            Remove(No);
    if (BookmarkNos() == Before)
        MsgBox("No bookmark found with in the selection", Title);
}

} // namespace

BookmarkShown BookmarkShownOf(std::int32_t No) {
    BookmarkShown Shown;
    if (!IsBookmark(No)) {
        Shown.Name = "Select an item from list";
        Shown.Remark = "to see property here";
        return Shown;
    }
    const BookmarkRec& Bookmark = Record(No);
    Shown.Name = Bookmark.Name;
    Shown.Remark = Bookmark.Text;
    Shown.Posi[0] = std::to_string(Bookmark.From);
    Shown.Posi[1] = Seconds(Bookmark.From);
    if (Bookmark.BokType == BokPoint) {
        Shown.FromTo[1] = "At:";
        Shown.Posi[4] = "(One Position)";
    } else {
        Shown.FromTo[1] = "From:";
        Shown.FromTo[2] = "To:";
        Shown.Posi[2] = std::to_string(Bookmark.To);
        Shown.Posi[3] = Seconds(Bookmark.To);
        Shown.Posi[4] = "Duration: ";
        Shown.Posi[4] += Seconds(static_cast<double>(Bookmark.To) - Bookmark.From + 1);
    }
    return Shown;
}

SampleRange BookmarkRange(const BookmarkRec& Bookmark) {
    return RangeWithin(Bookmark.From, LastOf(Bookmark), CurrentDocument().Total);
}

void SetBokMrkDialog(BokMrkDialog* Receiver) noexcept {
    Dialog = Receiver;
}

void BookmarkListAdd() {
    BookmarkRec Bookmark = NewBookmark();
    bool Ok = false;
    BookmarkEdit(BookmarkTyped, Bookmark, Ok);
    if (!Ok)
        return;
    BookmarkAppend(std::move(Bookmark));
    BookmarkChanged = true;
}

void BookmarkListEdit(std::int32_t No) {
    if (!IsBookmark(No)) {
        MsgBox("Select a bookmark to edit");
        return;
    }
    BookmarkRec Copy = Record(No);
    bool Ok = false;
    BookmarkEdit(BookmarkAsItStands, Copy, Ok);
    if (!Ok)
        return;
    Record(No) = std::move(Copy);
    BookmarkChanged = true;
}

void BookmarkListDelete(std::int32_t No) {
    if (!IsBookmark(No)) {
        MsgBox("Select a bookmark to delete");
        return;
    }
    std::string Question = "Delete bookmark ";
    Question += Record(No).Name + " ?";
    if (MsgBox(Question, {}, MsgBoxButtons::YesNo, MsgBoxAnswer::No) != MsgBoxAnswer::Yes)
        return;
    Remove(No);
    BookmarkChanged = true;
}

void BookmarkDelete(std::int32_t Index) {
    constexpr const char* Title = "Delete bookmark failed";
    if (!AnyBookmark(Title))
        return;
    if (Index == 0)
        DeleteSelected(Title);
    else if (const std::int32_t No = Chosen(); No != 0)
        Remove(No);
    Refresh_Wave_View();
}

void BookmarkGoto() {
    if (!AnyBookmark("Go to bookmark failed"))
        return;
    const std::int32_t No = Chosen();
    const SampleRange Range = No == 0 ? SampleRange() : BookmarkRange(Record(No));
    if (Range.From != 0) {
        if (Record(No).BokType != BokPoint)
            ViewTotal = Range.To - Range.From + 1;
        ViewFrom = Range.From;
        ViewAll = false;
    }
    Refresh_Wave_View();
}

void BookmarkSelect() {
    if (!AnyBookmark("Select bookmark failed"))
        return;
    if (const std::int32_t No = Chosen(); No != 0) {
        const SampleRange Range = BookmarkRange(Record(No));
        SelStart = Range.From;
        SelEnd = Range.To;
    }
    Refresh_Wave_View();
}

void BookmarkManage() {
    if (Dialog != nullptr)
        (void)Dialog->ShowBokMrk(BokMrkManage);
    Refresh_Wave_View();
}

} // namespace quoril
