#include "selection/SelectionMod.h"

#include "base/Arithmetic.h"
#include "base/MsgBoxMod.h"
#include "base/ViewState.h"
#include "platform/PrivateProfile.h"
#include "selection/DocumentFacts.h"
#include "selection/ViewListener.h"
#include "settings/STD1.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace quoril {
namespace {

SelConfDialog* Dialog = nullptr;

void SelectRange(std::int32_t From, std::int32_t To) noexcept {
    SelStart = From;
    SelEnd = To;
}

void SelectAllOf(std::int32_t Total) noexcept {
    const SampleRange All = RangeWithin(1, Total, Total);
    SelectRange(All.From, All.To);
}

void OptionApply(SelConfResult Result, std::int32_t Total) noexcept {
    switch (Result) {
    case SelConfResult::FileStart:
        return SelectRange(1, 1);
    case SelConfResult::FileEnd:
        // What is put into an empty document begins at its first place, too.
        return SelectRange(std::max(Total, 1), std::max(Total, 1));
    case SelConfResult::FileAll:
        return SelectAllOf(Total);
    case SelConfResult::SelectionStart:
        return SelectRange(SelStart, SelStart);
    case SelConfResult::SelectionEnd:
        return SelectRange(SelEnd, SelEnd);
    case SelConfResult::PointToEnd:
        return SelectRange(SelStart, Total);
    case SelConfResult::StartToPoint:
        return SelectRange(1, SelEnd);
    case SelConfResult::PointAsRange:
        return;
    }
}

bool AskHowToSelect(std::int32_t Need, std::int32_t Available, const std::string& Operation) {
    if (Dialog == nullptr)
        return false;
    std::string Caption = " Confirm Selection";
    if (!Operation.empty())
        Caption += " [" + Operation + "]";
    const std::optional<std::int32_t> Chosen = Dialog->ShowSelConf({Need, Available, Caption});
    if (!Chosen)
        return false;
    const auto* Option =
        std::find_if(SelConfOptions.begin(), SelConfOptions.end(), [&](const SelConfOption& Each) {
            return Each.Need == Need && Each.Available == Available && Each.Index == *Chosen;
        });
    if (Option == SelConfOptions.end())
        return false;
    OptionApply(Option->Result, CurrentDocument().Total);
    if (SelectionAvailable() == 0)
        MsgBox("The document is empty: there is nothing to select");
    return SelectionAvailable() != 0;
}

/// The last selection handed to a command stands in the settings file, for support. It is written
/// at once and only where it differs, so that a repeated command costs no writing.
void SelectionRecord(const std::string& Operation) {
    const std::vector<std::pair<std::string, std::string>> Values = {
        {"SelStart", std::to_string(SelStart)},
        {"SelEnd", std::to_string(SelEnd)},
        {"Operation", Operation}};
    const bool Known = std::ranges::all_of(Values, [](const auto& Each) {
        return IniGet("Debug", Each.first.c_str(), "") == Each.second;
    });
    // A file that cannot be written is no error: the settings of this session are not kept.
    if (!Known)
        (void)WritePrivateProfileStrings("Debug", Values, SettingsFileName());
}

void ToolsOff() noexcept {
    MouseMode = 0;
    ViewMouseMode = 0;
}

/// Selects, and shows it. What does not lie in the document selects nothing.
void SelectAndShow(std::int32_t From, std::int32_t To) {
    SelectRange(From, To);
    SelectionLimit(CurrentDocument().Total);
    ToolsOff();
    RefreshMousePointer();
    Refresh_Wave_View();
}

} // namespace

const std::array<SelConfOption, 12> SelConfOptions = {{
    {1, 0, "OneZeroFrame", "OneZeroOpn", 0, "Use the Start point of the File",
     SelConfResult::FileStart},
    {1, 0, "OneZeroFrame", "OneZeroOpn", 1, "Use the End point of the File",
     SelConfResult::FileEnd},
    {1, 2, "OneTwoFrame", "OneTwoOpn", 0, "Use the Start point of the Selection",
     SelConfResult::SelectionStart},
    {1, 2, "OneTwoFrame", "OneTwoOpn", 1, "Use the End point of the Selection",
     SelConfResult::SelectionEnd},
    {2, 0, "TwoZeroFrame", "TwoZeroOpn", 0, "Use the Start and End points of the File (Select All)",
     SelConfResult::FileAll},
    {2, 1, "TwoOneFrame", "TwoOneOpn", 0, "Select from this Point to the End of the File",
     SelConfResult::PointToEnd},
    {2, 1, "TwoOneFrame", "TwoOneOpn", 1, "Select from Start of the File to this Point",
     SelConfResult::StartToPoint},
    {2, 1, "TwoOneFrame", "TwoOneOpn", 2, "Use the Start and End points of the File (Select All)",
     SelConfResult::FileAll},
    {2, 1, "TwoOneFrame", "TwoOneOpn", 3, "Force to select just one point as Range",
     SelConfResult::PointAsRange},
    {3, 0, "ThreeZeroFrame", "ThreeZeroOpn", 0, "Use the Start point of the File",
     SelConfResult::FileStart},
    {3, 0, "ThreeZeroFrame", "ThreeZeroOpn", 1, "Use the End point of the File",
     SelConfResult::FileEnd},
    {3, 0, "ThreeZeroFrame", "ThreeZeroOpn", 2,
     "Use the Start and End points of the File (Select All)", SelConfResult::FileAll},
}};

SampleRange RangeWithin(std::int32_t A, std::int32_t B, std::int32_t Total) noexcept {
    if (Total < 1)
        return {};
    return {std::clamp(std::min(A, B), 1, Total), std::clamp(std::max(A, B), 1, Total)};
}

std::string NeedLblText(std::int32_t Need) {
    switch (Need) {
    case NeedOnePoint:
        return "This needs One Point";
    case NeedTwoPoints:
        return "This needs Two Points/Range Selection";
    case NeedOneOrTwo:
        return "This needs One or Two Points Selection";
    default:
        return {};
    }
}

std::string AvailLblText(std::int32_t Available) {
    switch (Available) {
    case 0:
        return "Currently you have not selected any Point/Range";
    case 1:
        return "Currently you selected One Point";
    case 2:
        return "Currently you selected Two Points/Range";
    default:
        return {};
    }
}

void SetSelConfDialog(SelConfDialog* Receiver) noexcept {
    Dialog = Receiver;
}

std::int32_t WorkChannels(std::int32_t Channel) noexcept {
    if (Channel != 2)
        return 1;
    if (SelBoth)
        return 0;
    return SelSingle == 2 ? 2 : 1;
}

std::int32_t WorkChannels() {
    return WorkChannels(CurrentDocument().Channel);
}

std::int32_t SelectionAvailable() noexcept {
    if (SelStart == 0)
        return 0;
    return SelStart == SelEnd ? 1 : 2;
}

bool ConfirmSelection(std::int32_t& SelStartOut, std::int32_t& SelEndOut, std::int32_t& WorkChn,
                      std::int32_t Need, const std::string& Operation) {
    WorkChn = WorkChannels();
    // The refresh of an empty document leaves the selection of what was there before.
    SelectionLimit(CurrentDocument().Total);
    const std::int32_t Available = SelectionAvailable();
    const bool MustAsk =
        Need != NeedNone && Available != Need && (Need != NeedOneOrTwo || Available == 0);
    if (MustAsk ? !AskHowToSelect(Need, Available, Operation) : Available == 0)
        return false;
    SelStartOut = SelStart;
    SelEndOut = SelEnd;
    SelectionRecord(Operation);
    if (MustAsk) {
        MouseMode = 0;
        Refresh_Wave_View();
    }
    return true;
}

void ResetSelection() {
    SelectRange(0, 0);
    ToolsOff();
    ClearMouseFlags();
    RefreshMousePointer();
    Refresh_Wave_View();
}

void SelectMouse(std::int32_t Index) {
    if (Index < 0 || Index > 2)
        return;
    MouseMode = Index == 0 ? 0 : Index + 1;
    ViewMouseMode = 0;
    RefreshMousePointer();
}

void SelectAllSamples() {
    SelectAndShow(1, CurrentDocument().Total);
}

void SelectView() {
    SelectAndShow(ViewFrom, ToLong(static_cast<std::int64_t>(ViewFrom) + ViewTotal - 1));
}

void SelectPlay() {
    if (PlaySelStart == 0) {
        MsgBox("No play selection exists\nMake a selection on the scale to play,\n"
               "that can be transfered to waveform selection with this command");
        return;
    }
    SelectAndShow(PlaySelStart, PlaySelEnd);
}

void SelectBoth(bool MenuChecked) {
    SelBoth = !MenuChecked;
    RefreshChannelSelector();
    Refresh_Wave_View();
}

void SelectOther() {
    SelSingle = SelSingle == 1 ? std::int16_t{2} : std::int16_t{1};
    RefreshChannelSelector();
    Refresh_Wave_View();
}

void SelChannelButton(bool Pressed) {
    SelBoth = Pressed;
    if (!Pressed)
        SelSingle = SelSingle == 1 ? std::int16_t{2} : std::int16_t{1};
    RefreshChannelSelector();
    Refresh_Wave_View();
}

ChannelSelectorState ChannelSelector(std::int32_t Channel) {
    const bool Stereo = Channel == 2;
    return {Stereo, Stereo && !SelBoth, SelBoth, SelBoth,
            SelBoth ? "SelBoth" : (SelSingle == 2 ? "SelSingle2" : "SelSingle1")};
}

ChannelSelectorState ChannelSelector() {
    return ChannelSelector(CurrentDocument().Channel);
}

void SelectionLimit(std::int32_t Total) noexcept {
    SelectRange(std::min(SelStart, SelEnd), std::max(SelStart, SelEnd));
    if (SelStart < 1 || SelEnd > Total)
        SelectRange(0, 0);
}

void ViewStateReset(std::int32_t Total, bool IsNew) noexcept {
    SelectRange(0, 0);
    ToolsOff();
    ViewFrom = 1;
    ViewTotal = Total;
    ViewAll = true;
    if (IsNew)
        PlaySelStart = PlaySelEnd = 0;
}

} // namespace quoril
