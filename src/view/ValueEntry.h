// The six value labels: what they show, and how the user changes a number through them.
#pragma once

#include "selection/DocumentFacts.h"
#include "selection/DurationEntry.h"

#include <array>
#include <cstdint>
#include <string>

namespace quoril {

/// The labels as the menus count them: 0 to 2 `SelectLbl`, 3 to 5 `ViewLbl`, each Total, From, To.
inline constexpr std::int32_t LabelSelTotal = 0;
inline constexpr std::int32_t LabelSelFrom = 1;
inline constexpr std::int32_t LabelSelTo = 2;
inline constexpr std::int32_t LabelViewTotal = 3;
inline constexpr std::int32_t LabelViewFrom = 4;
inline constexpr std::int32_t LabelViewTo = 5;
inline constexpr std::size_t LabelCount = 6;

/// A range that the mouse is dragging, shown in place of the selection.
struct DragRange {
    std::int32_t From = 0;
    std::int32_t To = 0;
};

/// The number that a label stands for. Nothing is taken off for an absent selection: it shows
/// 0, 0 and a total of 1.
[[nodiscard]] std::int64_t LabelValue(std::int32_t Label) noexcept;

/// The texts of the six labels in the form that `ShowHhmmss` asks for; with `Drag` the selection
/// labels show that range. Fails with "Overflow" for a rate of 0.
[[nodiscard]] std::array<std::string, LabelCount> LabelTexts(std::int32_t Freq,
                                                             const DragRange* Drag = nullptr);
/// The status panel "Size": length and duration of the document.
[[nodiscard]] std::string SizePanelText(const DocumentFacts& Document);

/// `DisplayToggleMnu`: 0 samples, 1 time. Rewrites the labels and stores the choice.
void DisplayToggle(std::int32_t Index);
/// Whether entry 0 or 1 of `DisplayToggleMnu` bears the check mark.
[[nodiscard]] bool DisplayToggleChecked(std::int32_t Index) noexcept;
/// Reads the stored choice at the start of the program: 0 or 1, anything else is 1.
void DisplayToggleRead();

/// What `EntDurFrm` is shown with for a label of 0 to 5.
[[nodiscard]] EntDurRequest LabelEntryRequest(std::int32_t Label, std::int32_t Freq);
/// Takes a value (whole, of any size) for a label and refreshes. A value that the label does not
/// accept, NaN among them, gives the message "Out of limit" and changes nothing.
void LabelEntryAccept(std::int32_t Label, double Value, std::int32_t Total);
/// A left click on a label, or `DisplayEnterValMnu`: asks for the value and takes it. Another
/// number than 0 to 5 does nothing.
void LabelEntry(std::int32_t Label);

} // namespace quoril
