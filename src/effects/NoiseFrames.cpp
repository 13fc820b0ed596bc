#include "effects/NoiseFrames.h"

#include "base/Arithmetic.h"
#include "base/Vectorised.h"
#include "effects/FFTDorinMod.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace quoril {

namespace {

/// Frames that are transformed side by side.
constexpr std::int32_t LaneCount = 8;
using SingleLanes = float __attribute__((vector_size(LaneCount * sizeof(float))));
using DoubleLanes = double __attribute__((vector_size(LaneCount * sizeof(double))));
using SideBySideStages = Butterflies<SingleLanes, DoubleLanes>;

/// Rows of vectors at places where every instruction set may take them. (What a vector itself asks
/// for depends on the instruction set that is compiled for.)
template <typename Row>
class AlignedRows {
  public:
    explicit AlignedRows(std::size_t Count)
        : Lines((Count * sizeof(Row) + sizeof(Line) - 1) / sizeof(Line)) {}
    [[nodiscard]] Row* First() noexcept { return reinterpret_cast<Row*>(Lines.data()); }

  private:
    struct alignas(64) Line {
        std::array<std::byte, 64> Bytes;
    };
    std::vector<Line> Lines;
};

/// A Hann window. It is 0 at both ends, so nothing need be done about the step between the first
/// sample of a frame and the last one of the frame before, which the missing bin 0 leaves.
std::vector<float> HannWindow(std::int32_t Size) {
    constexpr double Pi = 3.14159265358979;
    std::vector<float> Window;
    for (std::int32_t i = 0; i < Size; ++i) {
        const float Angle = Single((Pi / (Size - 1)) * i * 2 - Pi / 2);
        Window.push_back(Single((std::sin(static_cast<double>(Angle)) + 1) / 2));
    }
    return Window;
}

/// Takes the noise off a bin, towards 0.
[[gnu::always_inline]] inline void Reduce(SingleLanes& Bin, float Noise) noexcept {
    const SingleLanes None = {};
    const SingleLanes Above = Bin - Noise;
    const SingleLanes Below = Bin + Noise;
    Bin = (Above > None ? Above : None) + (Below < None ? Below : None);
}

/// Sets frames, each half a frame after the one before, side by side in bit-reversed order.
QUORIL_VECTORISED
void PlaceFrames(const std::int16_t* __restrict Signal, SingleLanes* __restrict Real,
                 std::size_t Size, const std::int32_t* __restrict Reversed) noexcept {
    const std::size_t Hop = Size / 2;
    for (std::size_t i = 0; i < Size; ++i) {
        SingleLanes Samples;
        for (std::size_t Lane = 0; Lane < LaneCount; ++Lane)
            Samples[Lane] = Signal[Lane * Hop + i];
        Real[Reversed[i]] = Samples;
    }
}

/// The same back, frame after frame.
QUORIL_VECTORISED
void TakeFrames(const DoubleLanes* __restrict Whole, std::int32_t* __restrict Frames,
                std::size_t Size) noexcept {
    for (std::size_t i = 0; i < Size; ++i)
        for (std::size_t Lane = 0; Lane < LaneCount; ++Lane)
            Frames[Lane * Size + i] = static_cast<std::int32_t>(Whole[i][Lane]);
}

/// Frames in bit-reversed order in `Real`; what they become in `Whole`.
QUORIL_VECTORISED
void FilterLanes(SingleLanes* __restrict Real, SingleLanes* __restrict Imag,
                 DoubleLanes* __restrict Whole, std::size_t Size, const float* __restrict Noise,
                 const Twiddle* __restrict Factors,
                 const std::int32_t* __restrict Reversed) noexcept {
    const SingleLanes None = {};
    for (std::size_t i = 0; i < Size; ++i)
        Imag[i] = None;
    for (std::size_t BlockEnd = 1; BlockEnd < Size; BlockEnd *= 2)
        SideBySideStages::ForwardStage(Real, Imag, Size, BlockEnd, Factors + BlockEnd);
    Real[0] = None;
    for (std::size_t i = 0; i < Size; ++i) {
        Reduce(Real[i], Noise[i]);
        DoubleLanes& Start = Whole[Reversed[i]];
        SideBySideStages::Widen(Real[i], Start);
        SideBySideStages::Round(Start);
        Imag[i] = None;
    }
    // A frame of 16 bits has bins whose magnitudes add up to 2^30 at most, and what is taken off
    // makes them smaller, so nothing passes 32 bits.
    for (std::size_t BlockEnd = 1; BlockEnd < Size; BlockEnd *= 2)
        SideBySideStages::InverseStage(Whole, Imag, Size, BlockEnd, Factors + BlockEnd);
    const auto Share = 1.0 / static_cast<double>(Size);
    for (std::size_t i = 0; i < Size; ++i) {
        Whole[i] *= Share;
        SideBySideStages::Round(Whole[i]);
    }
}

QUORIL_VECTORISED
void AddLoop(const std::int32_t* __restrict Frame, const float* __restrict Window,
             std::int16_t* __restrict Result, std::size_t Count, double Low, double High) noexcept {
    for (std::size_t k = 0; k < Count; ++k) {
        double Value = RoundedWhole(static_cast<double>(Window[k]) * static_cast<double>(Frame[k]) +
                                    static_cast<double>(Result[k]));
        Value = Value < Low ? Low : Value;
        Value = Value > High ? High : Value;
        Result[k] = static_cast<std::int16_t>(static_cast<std::int32_t>(Value));
    }
}

} // namespace

struct NoiseFrames::Lanes {
    explicit Lanes(const std::vector<float>& Learnt)
        : Noise(Learnt), Real(Learnt.size()), Imag(Learnt.size()), Whole(Learnt.size()),
          Results(Learnt.size() * LaneCount) {}

    /// Filters `LaneCount` frames, each half a frame after the one before.
    void Filter(std::span<const std::int16_t> Part);
    [[nodiscard]] std::span<std::int32_t> Frame(std::size_t Lane) {
        return std::span(Results).subspan(Lane * Noise.size(), Noise.size());
    }

    std::vector<float> Noise;
    AlignedRows<SingleLanes> Real;
    AlignedRows<SingleLanes> Imag;
    AlignedRows<DoubleLanes> Whole;
    std::vector<std::int32_t> Results; ///< frame after frame
};

void NoiseFrames::Lanes::Filter(std::span<const std::int16_t> Part) {
    const std::size_t Size = Noise.size();
    if (std::ranges::all_of(Part, [](std::int16_t Sample) { return Sample == 0; })) {
        std::ranges::fill(Results, 0);
        return;
    }
    if (FFTSize != static_cast<std::int32_t>(Size))
        (void)FFTPrepare(static_cast<std::int32_t>(Size));
    PlaceFrames(Part.data(), Real.First(), Size, ReversedBits.data());
    FilterLanes(Real.First(), Imag.First(), Whole.First(), Size, Noise.data(), FFTFactors.data(),
                ReversedBits.data());
    TakeFrames(Whole.First(), Results.data(), Size);
}

NoiseFrames::NoiseFrames(const std::vector<float>& Profile, std::int32_t WavFmtBits,
                         std::int32_t SignalLength)
    : Window(HannWindow(static_cast<std::int32_t>(Profile.size()))), Bits(WavFmtBits),
      Length(SignalLength), Frames(2 * (Length / static_cast<std::int32_t>(Profile.size())) - 1),
      Half(Profile.size() / 2), SideBySide(std::make_unique<Lanes>(Profile)) {}

NoiseFrames::~NoiseFrames() = default;

std::int32_t NoiseFrames::Delay() const noexcept {
    return static_cast<std::int32_t>(Half.size()) * (LaneCount + 1);
}

void NoiseFrames::Push(std::span<const std::int16_t> Samples, const Sink& Give) {
    if (Samples.empty())
        return;
    Taken += static_cast<std::int32_t>(Samples.size());
    const auto Hop = static_cast<std::int32_t>(Half.size());
    if (Filtered < Frames)
        Signal.insert(Signal.end(), Samples.begin(), Samples.end());
    while (Filtered < Frames) {
        const std::int32_t Wanted = std::min(LaneCount, Frames - Filtered);
        if (std::ssize(Signal) < std::ptrdiff_t{Hop} * (Wanted + 1))
            break;
        FilterFrames(Wanted, Give);
    }
    if (Taken < Length)
        return;
    if (Frames > 0) {
        std::ranges::fill(Half, std::int16_t{0});
        AddHalf(LastFrame, Half.size());
        Give(Half);
    }
    GiveSilence(Length - Hop * (Frames + 1), Give);
}

void NoiseFrames::FilterFrames(std::int32_t Count, const Sink& Give) {
    const std::size_t Hop = Half.size();
    const auto Ready = static_cast<std::size_t>(Count);
    Signal.resize(std::max(Signal.size(), Hop * (LaneCount + 1)), 0); // frames that are not there
    SideBySide->Filter(std::span(Signal).first(Hop * (LaneCount + 1)));
    for (std::size_t Lane = 0; Lane < Ready; ++Lane, ++Filtered) {
        const std::span<const std::int32_t> Frame = SideBySide->Frame(Lane);
        std::ranges::fill(Half, std::int16_t{0});
        // The pass of the even frames comes first.
        if (Filtered % 2 == 0)
            AddHalf(Frame, 0);
        if (Filtered > 0)
            AddHalf(LastFrame, Hop);
        if (Filtered % 2 != 0)
            AddHalf(Frame, 0);
        Give(Half);
        LastFrame.assign(Frame.begin(), Frame.end());
    }
    Signal.erase(Signal.begin(), Signal.begin() + static_cast<std::ptrdiff_t>(Hop * Ready));
}

void NoiseFrames::AddHalf(std::span<const std::int32_t> Frame, std::size_t From) {
    AddLoop(&Frame[From], &Window[From], Half.data(), Half.size(), SampleLow(Bits),
            SampleHigh(Bits));
}

void NoiseFrames::GiveSilence(std::int32_t Count, const Sink& Give) const {
    const std::vector<std::int16_t> Silence(Half.size(), 0);
    for (auto Left = static_cast<std::size_t>(Count); Left > 0;) {
        const std::size_t Now = std::min(Left, Silence.size());
        Give(std::span(Silence).first(Now));
        Left -= Now;
    }
}

} // namespace quoril
