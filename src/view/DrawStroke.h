// A stroke of the tool Draw, from the press of a button to its release: the points that it goes
// through, and what they make of the document.
#pragma once

#include <cstdint>
#include <vector>

namespace quoril {

/// What a stroke leaves of the samples from `Lo` on; no samples when all of it lies outside.
struct DrawnStretch {
    std::int32_t Lo = 0;
    std::vector<std::int16_t> Samples;
};

class DrawStroke {
  public:
    /// The button went down at a sample, with the value of that height.
    void Begin(std::int32_t Pos, std::int32_t Val);
    /// The mouse moved there. Adds the points from where the stroke stands, one for each sample, on
    /// a straight line; both ends are among them. A stroke of more than `Freq` points stays as it
    /// is. Gives the number of the first point that was added, DrawCount + 1 when none was.
    std::int32_t Move(std::int32_t Pos, std::int32_t Val, std::int32_t Freq);

    /// The samples between the lowest and the highest point in the range from `First` to `Last`. Of
    /// several points of a sample the last counts; a sample without one is 0. Values are limited to
    /// a depth of 8 or 16 bits, at 16 bits to -32767.
    [[nodiscard]] DrawnStretch Drawn(std::int32_t First, std::int32_t Last, std::int32_t Bits);

    std::int32_t DrawLastPos = 0; ///< where the stroke stands
    std::int32_t DrawLastVal = 0;
    std::int32_t DrawCount = 0; ///< points
    // The points in their order, from index 1.
    std::vector<std::int32_t> DrawPos;
    std::vector<std::int32_t> DrawVal;
    std::vector<bool> DrawSkip; ///< the point lies outside the range that was asked for last

  private:
    void Add(std::int32_t Pos, std::int32_t Val);
};

/// Puts what was drawn in the place of the samples of a channel, 1 or 2, as one undo step. Fails
/// with words for the user; the document is then as it was.
void DrawnStretchPut(std::int32_t Channel, const DrawnStretch& Drawn);

} // namespace quoril
