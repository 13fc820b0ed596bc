#include "effects/BandCascade.h"

#include "base/RunSteps.h"
#include "base/Vectorised.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <numeric>

namespace quoril {

namespace {

/// Samples that pass all bands at once: what is between the bands stays in the processor's cache.
constexpr std::size_t PieceLength = 4096;
/// Sums of windows that are formed at once.
constexpr std::size_t SumsAtOnce = 512;

/// Adding and taking off 1.5 x 2^32 rounds a double to a multiple of 2^-20. The quotient of a sum
/// by a window that was formed with the window's reciprocal is then a half where the true quotient
/// is one, and no half where it is none: others are at least a window's reciprocal away.
constexpr double FineShift = 6442450944.0;

// The loops take plain pointers and call nothing, so that they are vectorised.

using SumLanes = std::int32_t __attribute__((vector_size(32)));
using SampleLanes = std::int16_t __attribute__((vector_size(16)));
constexpr std::size_t Lanes = 8;

/// The sums of the window, sample after sample; gives the last one. Each sum stands on the one
/// before, so eight are formed in three steps of their own.
QUORIL_VECTORISED
std::int32_t SumLoop(const std::int16_t* Leaving, const std::int16_t* Coming,
                     std::int32_t* __restrict Sums, std::size_t Count, std::int32_t Sum) noexcept {
    const SumLanes None = {};
    SumLanes Last = None + Sum;
    std::size_t k = 0;
    for (; k + Lanes <= Count; k += Lanes) {
        SampleLanes Out;
        SampleLanes In;
        std::memcpy(&Out, Leaving + k, sizeof(Out));
        std::memcpy(&In, Coming + k, sizeof(In));
        SumLanes Rise =
            __builtin_convertvector(In, SumLanes) - __builtin_convertvector(Out, SumLanes);
        Rise += __builtin_shufflevector(None, Rise, 7, 8, 9, 10, 11, 12, 13, 14);
        Rise += __builtin_shufflevector(None, Rise, 6, 7, 8, 9, 10, 11, 12, 13);
        Rise += __builtin_shufflevector(None, Rise, 4, 5, 6, 7, 8, 9, 10, 11);
        const SumLanes Now = Last + Rise;
        std::memcpy(Sums + k, &Now, sizeof(Now));
        Last = __builtin_shufflevector(Now, Now, 7, 7, 7, 7, 7, 7, 7, 7);
    }
    Sum = Last[0];
    for (; k < Count; ++k) {
        Sum += Coming[k] - Leaving[k];
        Sums[k] = Sum;
    }
    return Sum;
}

QUORIL_VECTORISED
void ContentLoop(const std::int32_t* __restrict Sums, const std::int16_t* __restrict Centre,
                 std::int16_t* __restrict Low, std::int16_t* __restrict Mix, std::size_t Count,
                 double Share, double Gain, double Limit) noexcept {
    for (std::size_t k = 0; k < Count; ++k) {
        const double Fine = static_cast<double>(Sums[k]) * Share + FineShift;
        double Mean = (Fine + (RoundingShift - FineShift)) - RoundingShift;
        double Value = RoundedWhole(Gain * (static_cast<double>(Centre[k]) - Mean) +
                                    static_cast<double>(Mix[k]));
        Mean = Mean < -Limit ? -Limit : Mean;
        Mean = Mean > Limit ? Limit : Mean;
        Value = Value < -Limit ? -Limit : Value;
        Value = Value > Limit ? Limit : Value;
        Low[k] = static_cast<std::int16_t>(static_cast<std::int32_t>(Mean));
        Mix[k] = static_cast<std::int16_t>(static_cast<std::int32_t>(Value));
    }
}

} // namespace

BandStage::BandStage(std::int32_t HalfWindow, std::int32_t SignalLength, float Factor,
                     std::int32_t Most)
    : Half(HalfWindow), Length(SignalLength), Gain(Factor), Limit(Most) {}

void BandStage::Take(const std::vector<std::int16_t>& Samples) {
    const auto Ahead = static_cast<std::size_t>(Half);
    if (Taken == 0)
        Signal.assign(Ahead, Samples.front());
    Signal.insert(Signal.end(), Samples.begin(), Samples.end());
    Taken += static_cast<std::int32_t>(Samples.size());
    if (Taken == Length)
        Signal.insert(Signal.end(), Ahead, Samples.back());
}

void BandStage::Pass(std::vector<std::int16_t>& Samples, std::int16_t* Mix) {
    if (Samples.empty())
        return;
    Take(Samples);
    const auto Ahead = static_cast<std::size_t>(Half);
    const std::size_t Window = 2 * Ahead;
    Samples.resize(Signal.size() < Window ? 0 : Signal.size() - Window);
    if (Samples.empty())
        return;
    if (Computed == 0)
        Sum = std::accumulate(Signal.begin(), Signal.begin() + std::ptrdiff_t{2} * Half, 0);
    // The centre moves along until the window has reached the end, and comes to the last sample
    // with its last step.
    std::vector<std::int16_t> Held;
    std::size_t Moving = Samples.size();
    if (Taken == Length) {
        Moving = static_cast<std::size_t>(Length - Half - Computed);
        Held.assign(Ahead, Signal[Ahead + Moving - 1]);
        Held.back() = Signal.back();
    }
    std::array<std::int32_t, SumsAtOnce> Sums;
    for (std::size_t At = 0; At < Samples.size();) {
        const bool AtEnd = At >= Moving;
        const std::size_t Count = std::min(SumsAtOnce, (AtEnd ? Samples.size() : Moving) - At);
        Sum = SumLoop(&Signal[At], &Signal[At + Window], Sums.data(), Count, Sum);
        ContentLoop(Sums.data(), AtEnd ? &Held[At - Moving] : &Signal[At + Ahead], &Samples[At],
                    Mix + At, Count, 1.0 / static_cast<double>(Window), static_cast<double>(Gain),
                    static_cast<double>(Limit));
        At += Count;
    }
    Computed += static_cast<std::int32_t>(Samples.size());
    Signal.erase(Signal.begin(), Signal.begin() + std::ssize(Samples));
}

BandCascade::BandCascade(std::span<const Band> Bands, std::int32_t Length, std::int32_t Limit) {
    // Below the lowest band that is heard nothing need be split off.
    const auto Lowest =
        std::ranges::find_if(Bands, [](const Band& Each) { return Each.Gain != 0; });
    for (auto Each = Bands.end(); Each != Lowest;) {
        --Each;
        if (Each->Half <= 0 || Each->Half >= Length)
            continue;
        Stages.emplace_back(Each->Half, Length, Each->Gain, Limit);
        Behind += Each->Half;
    }
    Behind = std::min(Behind, Length);
}

void BandCascade::Push(std::span<const std::int16_t> Samples, const Sink& Give) {
    for (std::size_t At = 0; At < Samples.size(); At += PieceLength)
        PushPiece(Samples.subspan(At, std::min(PieceLength, Samples.size() - At)), Give);
}

void BandCascade::PushPiece(std::span<const std::int16_t> Samples, const Sink& Give) {
    Mix.resize(Mix.size() + Samples.size(), 0);
    Piece.assign(Samples.begin(), Samples.end());
    for (BandStage& Stage : Stages)
        Stage.Pass(Piece, Mix.data() + (Stage.Done() - Given));
    const std::size_t Ready =
        Stages.empty() ? Mix.size() : static_cast<std::size_t>(Stages.back().Done() - Given);
    if (Ready == 0)
        return;
    Give(std::span(Mix).first(Ready));
    Given += static_cast<std::int32_t>(Ready);
    Mix.erase(Mix.begin(), Mix.begin() + static_cast<std::ptrdiff_t>(Ready));
}

} // namespace quoril
