// What the user sets for each frequency band: the record, its gains, and how it is remembered.
#pragma once

#include <cstdint>
#include <vector>

namespace quoril {

inline constexpr std::int32_t BandValueLow = -50; ///< full cut
inline constexpr std::int32_t BandValueHigh = 50;
inline constexpr std::int32_t BandValueNeutral = 7; ///< shown as 100 %
inline constexpr std::int32_t FewestBands = 2;
inline constexpr std::int32_t MostBands = 50; ///< that the user can enter

/// Band values from `BandValueLow` to `BandValueHigh`, lowest band first.
struct BandSet {
    std::vector<std::int32_t> Bands = {0}; ///< indexes 1 to `NoOfBands`; index 0 is unused
    std::int32_t NoOfBands = 0;            ///< 0: the question was cancelled
    friend bool operator==(const BandSet&, const BandSet&) = default;
};

/// What the dialog hands to the command.
extern BandSet EqBandSet;

/// The factor of a band value: 0 for -50, 1.00177 for 7, 4.1558 for 50.
[[nodiscard]] float BandGain(std::int32_t Value);
/// That factor in percent, rounded.
[[nodiscard]] std::int32_t BandPercent(std::int32_t Value);
/// The lowest band value whose percent is nearest.
[[nodiscard]] std::int32_t BandValueOfPercent(std::int32_t Percent);
[[nodiscard]] std::int32_t ClampedBandValue(std::int32_t Value) noexcept;

/// The bands' values of the last time; damaged settings give what is nearest to them.
[[nodiscard]] BandSet BandSetRead();
void BandSetWrite(const BandSet& Set);
/// Which bands were stopped the last time, from index 1.
[[nodiscard]] std::vector<bool> BandStopRead();
void BandStopWrite(const std::vector<bool>& BandStop);
/// The values that stop the chosen bands and let the others pass.
[[nodiscard]] BandSet BandSetOfStops(const std::vector<bool>& BandStop);

/// Another number of bands: new ones are neutral.
void BandSetResize(BandSet& Set, std::int32_t NoOfBands);

/// What the commands of the equalizer's menu make of all values.
enum class BandShape { MiddleLow, MiddleHigh, Increasing, Decreasing };
void BandSetShape(BandSet& Set, BandShape Shape);
void BandSetReverse(BandSet& Set);
void BandSetInvert(BandSet& Set);
void BandSetNeutral(BandSet& Set);

} // namespace quoril
