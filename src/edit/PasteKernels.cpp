#include "edit/PasteKernels.h"

#include "base/Arithmetic.h"
#include "base/Vectorised.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>

namespace quoril {

namespace {

/// Adding and taking off 1.5 x 2^52 rounds a double of less than 2^51 to the nearest whole number,
/// ties to even, in a loop without a call.
constexpr double RoundingShift = 6755399441055744.0;

[[gnu::always_inline]] inline std::int16_t Limited(double Value, double Max) noexcept {
    Value = Value < -Max ? -Max : Value;
    Value = Value > Max ? Max : Value;
    Value = (Value + RoundingShift) - RoundingShift;
    return static_cast<std::int16_t>(static_cast<std::int32_t>(Value));
}

QUORIL_VECTORISED
void MixLoop(const std::int16_t* Clip, const std::int16_t* Doc, std::int16_t* Out,
             std::size_t Count, std::int32_t Max) noexcept {
    for (std::size_t i = 0; i < Count; ++i) {
        std::int32_t Sum = Clip[i] + Doc[i];
        Sum = Sum > Max ? Max : Sum;
        Sum = Sum < -Max ? -Max : Sum;
        Out[i] = static_cast<std::int16_t>(Sum);
    }
}

QUORIL_VECTORISED
void ModulateLoop(const std::int16_t* Clip, const std::int16_t* Doc, std::int16_t* Out,
                  std::size_t Count, double Max) noexcept {
    const double Factor = 0.95 / Max;
    for (std::size_t i = 0; i < Count; ++i) {
        const double Product = Factor * Clip[i];
        Out[i] = Limited((Product < 0 ? -Product : Product) * Doc[i], Max);
    }
}

QUORIL_VECTORISED
void CrossFadeLoop(const std::int16_t* Clip, const std::int16_t* Doc, std::int16_t* Out,
                   std::int32_t Count, std::int32_t First, double Total, double Max) noexcept {
    for (std::int32_t i = 0; i < Count; ++i) {
        const auto OfDoc = static_cast<float>(static_cast<double>(First + i) / Total);
        const float OfClip = 1.0F - OfDoc;
        Out[i] = Limited(
            static_cast<double>(OfDoc) * Doc[i] + static_cast<double>(OfClip) * Clip[i], Max);
    }
}

} // namespace

std::int32_t PasteMaxSample(std::int32_t Bits) {
    return RoundToLong(std::pow(256.0, Bits / 8.0) / 2 - 1);
}

void MixRun(std::span<const std::int16_t> Clip, std::span<const std::int16_t> Doc,
            std::span<std::int16_t> Out, std::int32_t MaxSample) noexcept {
    MixLoop(Clip.data(), Doc.data(), Out.data(), Out.size(), MaxSample);
}

void ModulateRun(std::span<const std::int16_t> Clip, std::span<const std::int16_t> Doc,
                 std::span<std::int16_t> Out, std::int32_t MaxSample) noexcept {
    ModulateLoop(Clip.data(), Doc.data(), Out.data(), Out.size(), MaxSample);
}

void CrossFadeRun(std::span<const std::int16_t> Clip, std::span<const std::int16_t> Doc,
                  std::span<std::int16_t> Out, std::int32_t First, std::int32_t Total,
                  std::int32_t MaxSample) noexcept {
    CrossFadeLoop(Clip.data(), Doc.data(), Out.data(), static_cast<std::int32_t>(Out.size()), First,
                  Total, MaxSample);
}

std::int32_t PeakOfRun(std::span<const std::int16_t> In) noexcept {
    std::int32_t Peak = 0;
    for (const std::int16_t Sample : In)
        Peak = std::max(Peak, std::abs(std::int32_t{Sample}));
    return Peak;
}

} // namespace quoril
