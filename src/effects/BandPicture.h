// Where what is set for the bands stands in a picture, in its pixels.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quoril {

/// A picture with a column for each of `NoOfBands` bands, of equal widths.
struct BandPicture {
    std::int32_t Width = 1;
    std::int32_t Height = 1;
    std::int32_t NoOfBands = 1;

    /// The band at a column of pixels, 1 to `NoOfBands`.
    [[nodiscard]] std::int32_t BandAt(std::int32_t X) const;
    /// The first column of a band's pixels; of one behind the last band, the width.
    [[nodiscard]] std::int32_t Left(std::int32_t Band) const;
    /// The band value at a row of pixels, -50 to 50.
    [[nodiscard]] std::int32_t ValueAt(std::int32_t Y) const;
    /// The row of a band value.
    [[nodiscard]] std::int32_t RowOf(std::int32_t Value) const;
};

/// The frequencies of the bands for the eye, from index 1: the highest is told as 20000 Hz.
[[nodiscard]] std::vector<std::int32_t> ShownFrequencies(std::int32_t NoOfBands);

} // namespace quoril
