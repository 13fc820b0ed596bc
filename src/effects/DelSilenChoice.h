// What the user sets for the shortening of silence: the values, what counts as valid, and how they
// are remembered.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace quoril {

/// Volumes and parts in percent, times in seconds. A value that is no number is NaN.
struct DelSilenChoice {
    double SilenVol = 1;
    double SilenDur = 0.1;
    std::int16_t SilenDelStyl = 1; ///< 1 keeps a fixed duration, 2 a part of the silence
    double BalDur = 1;             ///< style 1
    double BalPer = 30;            ///< style 2, as the two that follow
    double BalMin = 0;
    double BalMax = 100;
    friend bool operator==(const DelSilenChoice&, const DelSilenChoice&) = default;
};

/// The choice of the last time; what makes no sense becomes the value for that.
[[nodiscard]] DelSilenChoice DelSilenSettingsRead();
void DelSilenSettingsWrite(const DelSilenChoice& Choice);

/// Numbers from `From`, and below or up to `To`.
struct NumberLimits {
    double From;
    bool FromCounts; ///< `From` itself is one of them
    double To;
    bool ToCounts;
    [[nodiscard]] constexpr bool Hold(double Number) const noexcept {
        return (FromCounts ? Number >= From : Number > From) &&
               (ToCounts ? Number <= To : Number < To);
    }
};

/// A text field, the label that tells while it is edited that its number is not good, and the words
/// of the message when it is left so.
struct DelSilenField {
    const char* Control;
    double DelSilenChoice::*Value;
    std::int16_t Style; ///< in which style it is there; 0 for both
    NumberLimits WhileEdited;
    const char* ErrorLbl;
    const char* ErrorText;
    NumberLimits WhenLeft;
    const char* Message;
    [[nodiscard]] bool InStyle(std::int16_t Chosen) const noexcept {
        return Style == 0 || Style == Chosen;
    }
};
/// All fields, in the order of the dialog.
[[nodiscard]] const std::array<DelSilenField, 6>& DelSilenFields() noexcept;

/// Why the command can not run with a choice; empty when it can.
[[nodiscard]] std::string DelSilenProblem(const DelSilenChoice& Choice);

} // namespace quoril
