#include "effects/StretchWalk.h"

#include "base/Arithmetic.h"
#include "base/RunSteps.h"
#include "base/Vectorised.h"

#include <algorithm>
#include <cstring>

namespace quoril {

namespace {

/// Four numbers side by side: the weights of a place, or the points of a curve.
using Four = double __attribute__((vector_size(32)));
constexpr std::size_t Lanes = 4;

constexpr std::int32_t Hundredths = 100; ///< of a sample, to which a place is rounded

/// A power is rounded once; a product of three numbers would be rounded twice.
constexpr double Cube(double x) {
    return static_cast<double>(static_cast<long double>(x) * x * x);
}

/// The weights of a cubic Bezier curve at each hundredth of its way.
constexpr auto Weights = [] {
    std::array<std::array<double, Lanes>, Hundredths + 1> Made{};
    for (std::int32_t j = 0; j <= Hundredths; ++j) {
        const double t = (Hundredths - j) / 100.0;
        const double u = 1 - t;
        Made[static_cast<std::size_t>(j)] = {Cube(t), 3 * (t * t) * u, 3 * t * (u * u), Cube(u)};
    }
    return Made;
}();

using Points = std::array<double, Lanes>;

/// The points of the curve in each segment: the samples at both ends, and between them the two
/// that give it its slope there, a fifth of the difference of the neighbours.
QUORIL_VECTORISED
void PointsLoop(const std::int16_t* __restrict Reads, Points* __restrict Curves,
                std::size_t Count) noexcept {
    for (std::size_t m = 0; m < Count; ++m) {
        const std::int32_t a = Reads[m];
        const std::int32_t b = Reads[m + 1];
        const std::int32_t c = Reads[m + 2];
        const std::int32_t d = Reads[m + 3];
        Curves[m] = {static_cast<double>(b), b + (c - a) / 5.0, c + (b - d) / 5.0,
                     static_cast<double>(c)};
    }
}

QUORIL_VECTORISED
void HundredthsLoop(const double* __restrict Fractions, std::int32_t* __restrict Hundredth,
                    std::size_t Count) noexcept {
    for (std::size_t o = 0; o < Count; ++o)
        Hundredth[o] = RoundedLow(Fractions[o] * Hundredths);
}

/// The values of the curves, four places at a time. Each sum runs from the first point to the last.
QUORIL_VECTORISED
void CurveLoop(const Points* __restrict Curves, const std::int32_t* __restrict Segment,
               const std::int32_t* __restrict Hundredth, double* __restrict Values,
               std::size_t Count) noexcept {
    std::size_t o = 0;
    for (; o + Lanes <= Count; o += Lanes) {
        std::array<Four, Lanes> Point;
        std::array<Four, Lanes> Weight;
        for (std::size_t Lane = 0; Lane < Lanes; ++Lane) {
            std::memcpy(&Point[Lane], &Curves[Segment[o + Lane]], sizeof(Four));
            std::memcpy(&Weight[Lane], &Weights[static_cast<std::size_t>(Hundredth[o + Lane])],
                        sizeof(Four));
        }
        const Four A = Point[0] * Weight[0];
        const Four B = Point[1] * Weight[1];
        const Four C = Point[2] * Weight[2];
        const Four D = Point[3] * Weight[3];
        // Turned around, so that each holds the same product of all four places.
        const Four FirstThirdAB = __builtin_shufflevector(A, B, 0, 4, 2, 6);
        const Four SecondFourthAB = __builtin_shufflevector(A, B, 1, 5, 3, 7);
        const Four FirstThirdCD = __builtin_shufflevector(C, D, 0, 4, 2, 6);
        const Four SecondFourthCD = __builtin_shufflevector(C, D, 1, 5, 3, 7);
        const Four Sum = __builtin_shufflevector(FirstThirdAB, FirstThirdCD, 0, 1, 4, 5) +
                         __builtin_shufflevector(SecondFourthAB, SecondFourthCD, 0, 1, 4, 5) +
                         __builtin_shufflevector(FirstThirdAB, FirstThirdCD, 2, 3, 6, 7) +
                         __builtin_shufflevector(SecondFourthAB, SecondFourthCD, 2, 3, 6, 7);
        std::memcpy(Values + o, &Sum, sizeof(Sum));
    }
    for (; o < Count; ++o) {
        const Points& p = Curves[Segment[o]];
        const Points& w = Weights[static_cast<std::size_t>(Hundredth[o])];
        Values[o] = p[0] * w[0] + p[1] * w[1] + p[2] * w[2] + p[3] * w[3];
    }
}

QUORIL_VECTORISED
void SampleLoop(const double* __restrict Values, std::int16_t* __restrict Out, std::size_t Count,
                double Low, double High) noexcept {
    for (std::size_t o = 0; o < Count; ++o) {
        double Value = Values[o];
        Value = Value < Low ? Low : Value;
        Value = Value > High ? High : Value;
        Out[o] = static_cast<std::int16_t>(static_cast<std::int32_t>(RoundedWhole(Value)));
    }
}

} // namespace

StretchWalk::StretchWalk(std::int32_t SignalLength, std::int32_t Bits, double StepAtStart,
                         double StepAtEnd)
    : Length(SignalLength), Low(SampleLow(Bits)), High(SampleHigh(Bits)), StepStart(StepAtStart),
      Slope((StepAtEnd - StepAtStart) / SignalLength) {}

void StretchWalk::Push(std::span<const std::int16_t> In, const Sink& Give) {
    if (In.empty())
        return;
    const std::int32_t Before = Taken;
    Taken += static_cast<std::int32_t>(In.size());
    // The walk begins with the first sample twice and the second one.
    if (Before == 0)
        Reads[0] = Reads[1] = In[0];
    if (Before < 2 && Taken >= 2)
        Reads[2] = In[static_cast<std::size_t>(1 - Before)];
    do {
        if (Slope == 0)
            Walk(In, [Step = StepStart](std::int64_t) { return Step; });
        else
            Walk(In, [Rise = Slope, First = StepStart](std::int64_t k) {
                return Rise * static_cast<double>(k) + First;
            });
    } while (Finish(Give));
}

template <class StepOf>
void StretchWalk::Walk(std::span<const std::int16_t> In, const StepOf& Step) {
    // Each position waits for the one before, so none of them may lie in memory, where the compiler
    // cannot tell them from what the batch is written to.
    double P = Position;
    std::int64_t k = Segment;
    std::size_t Count = 0;
    std::size_t Read = 0;
    const std::int64_t End = Length;
    const std::int64_t Newest = Taken;
    const std::int64_t First = Newest - std::ssize(In) + 1;
    // The sample after the segment's end must be there; the last segment does without.
    const std::int64_t Reach = Newest == End ? End - 1 : Newest - 2;
    const double Far = static_cast<double>(End) + 1;
    while (Count < MostPlaces && k <= Reach) {
        Reads[Read + 3] = In[static_cast<std::size_t>(std::min(k + 2, Newest) - First)];
        Fractions[Count] = P - static_cast<double>(k);
        Segments[Count++] = static_cast<std::int32_t>(Read);
        P += Step(k);
        auto Next = static_cast<std::int64_t>(std::min(P, Far));
        // A place on the border belongs to the segment before it, as long as none is passed over;
        // but no segment begins at the very last sample.
        if (static_cast<double>(Next) == P && Next <= (k == End - 2 ? k + 1 : k + 2)) [[unlikely]]
            --Next;
        Read += static_cast<std::size_t>(Next != k);
        k = Next;
    }
    Position = P;
    Segment = k;
    Places = Count;
    NextRead = Read;
}

bool StretchWalk::Finish(const Sink& Give) {
    if (Places == 0)
        return false;
    std::array<Points, MostPlaces> Curves;
    std::array<std::int32_t, MostPlaces> Hundredth;
    std::array<double, MostPlaces> Values;
    PointsLoop(Reads.data(), Curves.data(), static_cast<std::size_t>(Segments[Places - 1]) + 1);
    HundredthsLoop(Fractions.data(), Hundredth.data(), Places);
    CurveLoop(Curves.data(), Segments.data(), Hundredth.data(), Values.data(), Places);
    Give(Places, [&](std::size_t At, std::span<std::int16_t> Out) {
        SampleLoop(&Values[At], Out.data(), Out.size(), Low, High);
    });
    // What the segment of the next place begins with.
    std::copy_n(&Reads[NextRead], 3, Reads.begin());
    return Places == MostPlaces;
}

} // namespace quoril
