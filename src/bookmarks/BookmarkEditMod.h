// Editing one bookmark: what the edit dialog holds and how its parts follow each other, and the
// commands that add a bookmark.
#pragma once

#include "bookmarks/BookmarkRec.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace quoril {

/// What the dialog begins with.
enum BookmarkEditModes : std::int32_t {
    BookmarkAsItStands = 0,
    BookmarkOfSelection = 1,
    BookmarkOfView = 2,
    BookmarkTyped = 3,
    BookmarkOfPlay = 4
};

/// `SrcOption`: where the positions come from.
enum BookmarkSources : std::int32_t {
    SourceSelection = 1,
    SourceView = 2,
    SourceTyped = 3,
    SourcePlay = 4
};

inline constexpr std::array<const char*, 2> BookmarkTypeCaptions = {"Flag (One point)",
                                                                    "Range (Two points)"};
inline constexpr std::array<const char*, 4> BookmarkSourceCaptions = {
    "Current Selection", "Current View", "Enter Value", "Current Play"};
inline constexpr std::array<const char*, 2> BookmarkPositioningCaptions = {"Floating", "Fixed"};

/// What `BokMrkEdtFrm` holds. Positions are samples; they are judged by nobody here, so that a
/// bookmark may lie outside the document. Index 1 of a pair is From, 2 is To; 0 is unused.
class BookmarkEditing {
  public:
    /// The positions are those of the record, and the source is chosen as the mode says. `Freq` in
    /// Hz.
    BookmarkEditing(std::int32_t Mode, const BookmarkRec& Rec, std::int32_t Freq);

    bool OkClicked = false;
    std::int32_t PositionFrom = 0;
    std::int32_t PositionTo = 0;
    std::int32_t PositionFromBak = 0; ///< typed last, or what the dialog began with
    std::int32_t PositionToBak = 0;

    // What the dialog shows.
    std::string Caption;
    std::string Name;
    std::string Remark;
    std::int32_t Type = BokPoint;          ///< `TypOption`
    std::int32_t Source = SourceTyped;     ///< `SrcOption`
    std::array<bool, 5> SourceEnabled{};   ///< by index
    std::array<std::string, 3> Samples;    ///< `EnterSamplesTxt`
    std::array<std::string, 3> Time;       ///< `EnterTimeTxt`, seconds
    std::array<bool, 3> PositionEnabled{}; ///< both boxes of a position

    /// Brings the four position boxes in line with the positions. The box that is being typed in
    /// stays as it is.
    void UpdateFromTo();
    void ChooseType(std::int32_t Index);
    /// Takes the positions from there; when there are none, tells so and takes them all the same.
    void ChooseSource(std::int32_t Index);
    /// Text was typed into `EnterSamplesTxt`(Index) or `EnterTimeTxt`(Index). A text that is no
    /// number, or one beyond 32 bits, changes no position.
    void EditSamples(std::size_t Index, std::string_view Text);
    void EditTime(std::size_t Index, std::string_view Text);
    /// What OK makes of the record.
    void Store(BookmarkRec& Rec) const;

  private:
    void Typed(std::size_t Index, std::string_view Text, double Scale, std::int32_t Field);
    [[nodiscard]] std::string TimeText(std::int32_t Position) const;

    std::int32_t Rate;
    std::int32_t EditedField = 0; ///< 0 none, 1 From samples, 2 From time, 3 To samples, 4 To time
};

/// Implemented by the window, and by tests.
class BokMrkEdtDialog {
  public:
    virtual ~BokMrkEdtDialog() = default;
    /// Lets the user change it until the dialog is closed; sets `OkClicked`, `Name` and `Remark`.
    virtual void ShowBokMrkEdt(BookmarkEditing& Editing) = 0;
};

/// Names who asks from now on; the object must outlive its use. With null every dialog counts as
/// cancelled.
void SetBokMrkEdtDialog(BokMrkEdtDialog* Receiver) noexcept;

/// Runs the edit dialog on a bookmark. `Ok` tells whether the user confirmed; `Rec` then holds the
/// result. With BookmarkOfSelection and no selection a message tells so, and `Ok` stays as it was.
void BookmarkEdit(std::int32_t Mode, BookmarkRec& Rec, bool& Ok);

/// `Bookmark_Add_Mnu`: 0 of the selection, 1 of the view, 2 of the play selection, 3 of typed
/// positions. What is confirmed stands at the end of the list.
void BookmarkAdd(std::int32_t Index);

} // namespace quoril
