// What the user means: the gate through which every command gets its samples, and the commands that
// select. They change the numbers of base/ViewState.h, then tell the ViewListener.
//
// Arithmetic on positions that overflows throws Failure; the numbers stay as they stood at that
// moment. The command level catches.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace quoril {

// ---- Ranges

/// Positions of a document, inclusive at both ends; both 0 for none.
struct SampleRange {
    std::int32_t From = 0;
    std::int32_t To = 0;
};
/// What two positions, in any order, mean in a document of `Total` samples: in order, and brought
/// into 1 to `Total`. None in an empty document.
[[nodiscard]] SampleRange RangeWithin(std::int32_t A, std::int32_t B, std::int32_t Total) noexcept;

// ---- The gate

/// What a command needs (`Need`): none, one point, two points (a range), one or two points.
inline constexpr std::int32_t NeedNone = 0;
inline constexpr std::int32_t NeedOnePoint = 1;
inline constexpr std::int32_t NeedTwoPoints = 2;
inline constexpr std::int32_t NeedOneOrTwo = 3;

/// What `SelConfFrm` is shown with.
struct SelConfRequest {
    std::int32_t Need = 0;      ///< `SelectNeed`: 1 to 3
    std::int32_t Available = 0; ///< `SelectAvailable`: 0 nothing, 1 a point, 2 a range
    std::string Caption;
};

/// How an option rewrites the main selection.
enum class SelConfResult : std::uint8_t {
    FileStart,      ///< the point at sample 1
    FileEnd,        ///< the point at the last sample; at place 1 of an empty document
    FileAll,        ///< 1 to the last sample
    SelectionStart, ///< the point at the selection's start
    SelectionEnd,   ///< the point at the selection's end
    PointToEnd,     ///< from the point to the last sample
    StartToPoint,   ///< from sample 1 to the point
    PointAsRange    ///< as it stands: a range of one sample
};

/// One option button of the dialog. Frame `Frame` is visible for this `Need` and `Available`; the
/// button is element `Index` of the array `Control`, and index 0 is chosen at first.
struct SelConfOption {
    std::int32_t Need;
    std::int32_t Available;
    const char* Frame;
    const char* Control;
    std::int32_t Index;
    const char* Caption;
    SelConfResult Result;
};
extern const std::array<SelConfOption, 12> SelConfOptions;

inline constexpr const char* SelConfPrompt = "How to select ?";
/// The text of `NeedLbl` for a need of 1 to 3, and of `AvailLbl` for 0 to 2; empty otherwise.
[[nodiscard]] std::string NeedLblText(std::int32_t Need);
[[nodiscard]] std::string AvailLblText(std::int32_t Available);

/// Implemented by `SelConfFrm`, and by tests.
class SelConfDialog {
  public:
    virtual ~SelConfDialog() = default;
    /// Shows the dialog modally. The index of the chosen option, or nothing when cancelled.
    virtual std::optional<std::int32_t> ShowSelConf(const SelConfRequest& Request) = 0;
};

/// Names who asks from now on. The object must outlive its use; with null nobody can be asked, and
/// every question counts as cancelled.
void SetSelConfDialog(SelConfDialog* Receiver) noexcept;

/// Every command's first call. `WorkChn` is always written. True: work on `SelStartOut` to
/// `SelEndOut`, which lie in the document and in order; but what is put into an empty document goes
/// to its place 1, which is given as a point. False: with `Need` 0 nothing is selected, and the
/// command takes 1 to the end by itself; otherwise the user cancelled, or wanted all of an empty
/// document and has been told. `Operation` stands in the dialog's caption, and may be empty.
[[nodiscard]] bool ConfirmSelection(std::int32_t& SelStartOut, std::int32_t& SelEndOut,
                                    std::int32_t& WorkChn, std::int32_t Need,
                                    const std::string& Operation);

/// The channels that a command works on: 0 both, 1 left, 2 right. A mono document gives 1.
[[nodiscard]] std::int32_t WorkChannels(std::int32_t Channel) noexcept;
/// The same for the current document.
[[nodiscard]] std::int32_t WorkChannels();

/// 0 no selection, 1 a point, 2 a range.
[[nodiscard]] std::int32_t SelectionAvailable() noexcept;

// ---- Commands that select

/// `SelectReset_Mnu`, "Reset", Esc.
void ResetSelection();
/// `SelectMouse_Mnu`: index 0 Select, 1 Select Start, 2 Select End. Another index does nothing.
void SelectMouse(std::int32_t Index);
/// `SelectAll_Mnu`, "SelectAll", a double click on a wave panel.
void SelectAllSamples();
/// `SelectView_Mnu`, "SelectView".
void SelectView();
/// `SelectPlay_Mnu`, "SelectPlay"; without a play selection a message tells how to make one.
void SelectPlay();
/// `SelectBoth_Mnu`: `SelBoth` becomes the inverse of the entry's check mark.
void SelectBoth(bool MenuChecked);
/// `SelectOther_Mnu`: the other one of the two channels.
void SelectOther();
/// The button "SelChannel" was pressed in or released. Released means one channel, a different one
/// each time.
void SelChannelButton(bool Pressed);

/// What the channel controls show.
struct ChannelSelectorState {
    bool Enabled = false;            ///< "SelChannel" and `SelectBoth_Mnu`: a stereo document
    bool SelectOtherEnabled = false; ///< `SelectOther_Mnu`
    bool Pressed = true;             ///< "SelChannel"
    bool SelectBothChecked = true;   ///< the check mark of `SelectBoth_Mnu`
    std::string ImageKey;            ///< "SelBoth", "SelSingle1" or "SelSingle2"
};
[[nodiscard]] ChannelSelectorState ChannelSelector(std::int32_t Channel);
[[nodiscard]] ChannelSelectorState ChannelSelector();

// ---- For the refresh and for new documents

/// A selection that begins below 1 or ends beyond the document is taken back to none; one from end
/// to start is put in order.
void SelectionLimit(std::int32_t Total) noexcept;
/// How selection and view stand when a document of `Total` samples has been opened or made; a new
/// document (`IsNew`) has no play selection either.
void ViewStateReset(std::int32_t Total, bool IsNew) noexcept;

} // namespace quoril
