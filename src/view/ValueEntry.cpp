#include "view/ValueEntry.h"

#include "base/Arithmetic.h"
#include "base/MsgBoxMod.h"
#include "base/ViewState.h"
#include "platform/Text.h"
#include "selection/DurationText.h"
#include "selection/ViewListener.h"
#include "settings/STD1.h"

#include <utility>

namespace quoril {
namespace {

constexpr std::array<const char*, LabelCount> EntryCaptions = {
    " Change Selection (Total)", " Change Selection (From)", " Change Selection (To)",
    " Change View (Total)",      " Change View (From)",      " Change View (To)"};

bool IsLabel(std::int32_t Label) noexcept {
    return Label >= 0 && Label < static_cast<std::int32_t>(LabelCount);
}

std::array<std::int64_t, LabelCount> LabelNumbers(std::int64_t From, std::int64_t To) noexcept {
    return {To - From + 1, From,     To,
            ViewTotal,     ViewFrom, static_cast<std::int64_t>(ViewFrom) + ViewTotal - 1};
}

bool Within(double Low, double Value, double High) noexcept {
    return Low <= Value && Value <= High;
}

/// The acceptance tests of the six labels. View Total refuses a view that would reach the last
/// sample.
bool Accepted(std::int32_t Label, double Value, double Total) noexcept {
    switch (Label) {
    case LabelSelTotal:
        return Within(1, SelStart + Value - 1, Total);
    case LabelViewTotal:
        return Value >= 1 && ViewFrom + Value + 1 <= Total;
    case LabelViewTo:
        return Within(ViewFrom, Value, Total);
    default:
        return Within(1, Value, Total);
    }
}

void Take(std::int32_t Label, double Value) {
    switch (Label) {
    case LabelSelTotal:
        SelEnd = RoundToLong(SelStart + Value - 1);
        return;
    case LabelSelFrom:
        SelStart = RoundToLong(Value);
        break;
    case LabelSelTo:
        SelEnd = RoundToLong(Value);
        break;
    case LabelViewTotal:
        ViewTotal = RoundToLong(Value);
        return;
    case LabelViewFrom:
        ViewFrom = RoundToLong(Value);
        return;
    default:
        ViewTotal = RoundToLong(Value - ViewFrom + 1);
        return;
    }
    if (SelStart > SelEnd)
        std::swap(SelStart, SelEnd);
}

} // namespace

std::int64_t LabelValue(std::int32_t Label) noexcept {
    return IsLabel(Label) ? LabelNumbers(SelStart, SelEnd)[static_cast<std::size_t>(Label)] : 0;
}

std::array<std::string, LabelCount> LabelTexts(std::int32_t Freq, const DragRange* Drag) {
    const auto Numbers =
        Drag != nullptr ? LabelNumbers(Drag->From, Drag->To) : LabelNumbers(SelStart, SelEnd);
    std::array<std::string, LabelCount> Texts;
    for (std::size_t Label = 0; Label < LabelCount; ++Label)
        Texts[Label] =
            ShowHhmmss == 1 ? FormatSamples(Numbers[Label], Freq) : std::to_string(Numbers[Label]);
    return Texts;
}

std::string SizePanelText(const DocumentFacts& Document) {
    return "Samples " + std::to_string(Document.Total) + ", Duration " +
           FormatSamples(Document.Total, Document.Freq);
}

void DisplayToggle(std::int32_t Index) {
    ShowHhmmss = Index == 1 ? 1 : 0;
    RefreshDisplayLabels(false);
    IniPut("General", "ShowHhmmss", std::to_string(ShowHhmmss));
}

bool DisplayToggleChecked(std::int32_t Index) noexcept {
    return Index == ShowHhmmss;
}

void DisplayToggleRead() {
    const double Stored = RoundEven(LeadingNumber(IniGet("General", "ShowHhmmss", "1")));
    ShowHhmmss = Stored == 0.0 ? 0 : 1;
}

EntDurRequest LabelEntryRequest(std::int32_t Label, std::int32_t Freq) {
    EntDurRequest Request = EntDurFor(LabelValue(Label), LabelValue(Label), Freq);
    if (IsLabel(Label))
        Request.Caption = EntryCaptions[static_cast<std::size_t>(Label)];
    Request.Prompt = "Enter new value:";
    Request.RefSize = "Previous value";
    return Request;
}

void LabelEntryAccept(std::int32_t Label, double Value, std::int32_t Total) {
    if (!IsLabel(Label))
        return;
    if (!Accepted(Label, Value, Total)) {
        MsgBox("Out of limit");
        return;
    }
    Take(Label, Value);
    if (Label >= LabelViewTotal)
        ViewAll = false;
    Refresh_Wave_View();
}

void LabelEntry(std::int32_t Label) {
    if (!IsLabel(Label))
        return;
    const DocumentFacts Document = CurrentDocument();
    const EntDurAnswer Answer = EntDurAsk(LabelEntryRequest(Label, Document.Freq));
    if (Answer.OkClicked)
        LabelEntryAccept(Label, EntDurNumber(Answer.EnterSmp), Document.Total);
}

} // namespace quoril
