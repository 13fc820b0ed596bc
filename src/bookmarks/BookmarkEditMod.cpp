#include "bookmarks/BookmarkEditMod.h"

#include "base/Arithmetic.h"
#include "base/Failure.h"
#include "base/MsgBoxMod.h"
#include "base/ViewState.h"
#include "platform/Text.h"
#include "selection/ViewListener.h"
#include "storage/FileMemoClass.h"

#include <fmt/format.h>

#include <optional>
#include <utility>

namespace quoril {

namespace {

constexpr const char* CaptionOfDesign = "Edit Bookmark";

BokMrkEdtDialog* Dialog = nullptr;

/// What a mode begins with: its source, and whether that is the only one to choose.
struct ModeRec {
    const char* Caption;
    std::int32_t Source;
    bool OnlyThat;
};
constexpr std::array<ModeRec, 5> ModeRecs = {{{" Edit Bookmark", SourceTyped, false},
                                              {" Add New Bookmark", SourceSelection, true},
                                              {" Add New Bookmark", SourceView, true},
                                              {" Add New Bookmark", SourceTyped, false},
                                              {CaptionOfDesign, SourcePlay, true}}};

/// The positions of a mode that brings its own.
void TakePositions(std::int32_t Mode, BookmarkRec& Rec) {
    switch (Mode) {
    case BookmarkOfSelection:
        Rec.From = SelStart;
        Rec.To = SelEnd;
        break;
    case BookmarkOfView:
        Rec.From = ViewFrom;
        Rec.To = SubLong(AddLong(ViewFrom, ViewTotal), 1);
        break;
    case BookmarkTyped:
        Rec.From = ViewFrom;
        Rec.To = AddLong(ViewFrom, ViewTotal);
        break;
    case BookmarkOfPlay:
        Rec.From = PlaySelStart;
        Rec.To = PlaySelEnd;
        break;
    default:
        return;
    }
    Rec.BokType = Mode == BookmarkOfSelection && Rec.From == Rec.To ? BokPoint : BokRange;
}

/// The number of a text as samples; nothing for a text that is none, and beyond 32 bits.
std::optional<std::int32_t> PositionOf(std::string_view Text, double Scale) {
    const std::optional<double> Number = NumberAlone(Text);
    if (!Number)
        return std::nullopt;
    try {
        return RoundToLong(*Number * Scale);
    } catch (const Failure&) {
        return std::nullopt; // no position of any document
    }
}

} // namespace

BookmarkEditing::BookmarkEditing(std::int32_t Mode, const BookmarkRec& Rec, std::int32_t Freq)
    : PositionFrom(Rec.From), PositionTo(Rec.To), PositionFromBak(Rec.From), PositionToBak(Rec.To),
      Name(Rec.Name), Remark(Rec.Text), Type(Rec.BokType), Rate(Freq) {
    const ModeRec& Begin = ModeRecs.at(static_cast<std::size_t>(Mode));
    Caption = Begin.Caption;
    Source = Begin.Source;
    for (std::size_t Index = 1; Index < SourceEnabled.size(); ++Index)
        SourceEnabled.at(Index) = !Begin.OnlyThat || static_cast<std::int32_t>(Index) == Source;
    if (Mode == BookmarkAsItStands && (SelStart == 0 || SelEnd == 0))
        SourceEnabled[SourceSelection] = false;
    UpdateFromTo();
}

std::string BookmarkEditing::TimeText(std::int32_t Position) const {
    return fmt::format("{:.3f}", static_cast<double>(Position) / Rate);
}

void BookmarkEditing::UpdateFromTo() {
    if (EditedField != 1)
        Samples[1] = std::to_string(PositionFrom);
    if (EditedField != 2)
        Time[1] = TimeText(PositionFrom);
    PositionEnabled[1] = Source == SourceTyped;
    PositionEnabled[2] = Source == SourceTyped && Type != BokPoint;
    if (Type == BokPoint) {
        Samples[2] = Samples[1];
        Time[2] = Time[1];
    } else {
        if (EditedField != 3)
            Samples[2] = std::to_string(PositionTo);
        if (EditedField != 4)
            Time[2] = TimeText(PositionTo);
    }
    EditedField = 0;
}

void BookmarkEditing::ChooseType(std::int32_t Index) {
    Type = Index;
    UpdateFromTo();
}

void BookmarkEditing::ChooseSource(std::int32_t Index) {
    Source = Index;
    switch (Index) {
    case SourceSelection:
        if (SelStart == 0 || SelEnd == 0)
            MsgBox("No selection found to add Bookmark");
        PositionFrom = SelStart;
        PositionTo = SelEnd;
        break;
    case SourceView:
        PositionFrom = ViewFrom;
        PositionTo = AddLong(ViewFrom, ViewTotal);
        break;
    case SourcePlay:
        if (PlaySelStart == 0 || PlaySelEnd == 0)
            MsgBox("No play selection exists to add Bookmark");
        PositionFrom = PlaySelStart;
        PositionTo = PlaySelEnd;
        break;
    default:
        PositionFrom = PositionFromBak;
        PositionTo = PositionToBak;
        break;
    }
    UpdateFromTo();
}

void BookmarkEditing::Typed(std::size_t Index, std::string_view Text, double Scale,
                            std::int32_t Field) {
    if (const auto Position = PositionOf(Text, Scale)) {
        (Index == 1 ? PositionFrom : PositionTo) = *Position;
        (Index == 1 ? PositionFromBak : PositionToBak) = *Position;
    }
    EditedField = Field;
    UpdateFromTo();
}

void BookmarkEditing::EditSamples(std::size_t Index, std::string_view Text) {
    Samples.at(Index) = Text;
    Typed(Index, Text, 1.0, Index == 1 ? 1 : 3);
}

void BookmarkEditing::EditTime(std::size_t Index, std::string_view Text) {
    Time.at(Index) = Text;
    Typed(Index, Text, Rate, Index == 1 ? 2 : 4);
}

void BookmarkEditing::Store(BookmarkRec& Rec) const {
    Rec.Name = Name;
    Rec.Text = Remark;
    Rec.BokType = Type;
    Rec.From = PositionFrom;
    Rec.To = Type == BokPoint ? PositionFrom : PositionTo;
}

void SetBokMrkEdtDialog(BokMrkEdtDialog* Receiver) noexcept {
    Dialog = Receiver;
}

void BookmarkEdit(std::int32_t Mode, BookmarkRec& Rec, bool& Ok) {
    if (Mode == BookmarkOfSelection && (SelStart == 0 || SelEnd == 0)) {
        MsgBox("No selection found to add Bookmark");
        return;
    }
    BookmarkRec Begin = Rec;
    TakePositions(Mode, Begin);
    if (Mode >= BookmarkOfSelection && Mode <= BookmarkTyped && Begin.Name.empty())
        Begin.Name = "New";
    BookmarkEditing Editing(Mode, Begin, WaveStore->WavFmtFreq);
    if (Dialog != nullptr)
        Dialog->ShowBokMrkEdt(Editing);
    Ok = Editing.OkClicked;
    if (Ok)
        Editing.Store(Rec);
}

void BookmarkAdd(std::int32_t Index) {
    constexpr const char* Title = "Add BookMark Failed";
    constexpr std::array<BookmarkEditModes, 4> Modes = {BookmarkOfSelection, BookmarkOfView,
                                                        BookmarkOfPlay, BookmarkTyped};
    const BookmarkEditModes Mode = Modes.at(static_cast<std::size_t>(Index));
    if (Mode == BookmarkOfSelection && SelStart == 0) {
        MsgBox("No selection found", Title);
        return;
    }
    if (Mode == BookmarkOfPlay && PlaySelStart == 0) {
        MsgBox("No play selection exists", Title);
        return;
    }
    BookmarkRec Bookmark = NewBookmark();
    bool Ok = false;
    BookmarkEdit(Mode, Bookmark, Ok);
    if (Ok)
        BookmarkAppend(std::move(Bookmark));
    Refresh_Wave_View();
}

} // namespace quoril
