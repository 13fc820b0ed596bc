#include "effects/EchoStream.h"

#include "base/Arithmetic.h"
#include "base/RunSteps.h"
#include "base/Vectorised.h"

#include <algorithm>
#include <array>

namespace quoril {

namespace {

/// Places that are mixed at once: their sums stay in the processor's cache.
constexpr std::size_t MostPlaces = 1024;

QUORIL_VECTORISED
void RepeatLoop(const std::int16_t* __restrict In, double* __restrict Wet, std::size_t Count,
                double Gain, double Low, double High) noexcept {
    for (std::size_t k = 0; k < Count; ++k) {
        double Value = Gain * static_cast<double>(In[k]) + Wet[k];
        Value = Value < Low ? Low : Value;
        Value = Value > High ? High : Value;
        Wet[k] = RoundedWhole(Value);
    }
}

QUORIL_VECTORISED
void DryLoop(const double* __restrict Wet, const std::int16_t* __restrict Dry,
             std::int16_t* __restrict Out, std::size_t Count, double Low, double High) noexcept {
    for (std::size_t k = 0; k < Count; ++k) {
        double Value = Wet[k] + static_cast<double>(Dry[k]);
        Value = Value < Low ? Low : Value;
        Value = Value > High ? High : Value;
        Out[k] = static_cast<std::int16_t>(static_cast<std::int32_t>(Value));
    }
}

} // namespace

EchoStream::EchoStream(const std::vector<EchoTap>& Taps, std::span<const BandCascade::Band> Bands,
                       std::int32_t Bits, std::int32_t SignalLength)
    : Filtered(!Bands.empty()), Low(SampleLow(Bits)), High(SampleHigh(Bits)), Length(SignalLength) {
    for (const EchoTap& Each : Taps)
        Repeats.push_back({Each, BandCascade(Bands, SignalLength, SampleHigh(Bits)), {}, 0, 0});
    // A repeat can be told when the signal has passed all its filters, which may be after it is
    // due.
    std::int64_t Delay = 0;
    for (const Repeat& Each : Repeats) {
        Delay += Each.Cascade.Delay();
        Behind = std::max(Behind, Delay - Each.Tap.Offset);
    }
}

std::size_t EchoStream::Take(std::span<const std::int16_t> In) {
    const std::int64_t Repeated = std::clamp<std::int64_t>(Length - Taken, 0, std::ssize(In));
    Source.Put(In.first(static_cast<std::size_t>(Repeated)));
    Dry.erase(Dry.begin(), Dry.end() - (Taken - Made));
    Dry.insert(Dry.end(), In.begin(), In.end());
    Taken += std::ssize(In);
    const std::int64_t Ready = Taken < Length ? Taken - Behind : Taken;
    return static_cast<std::size_t>(std::max<std::int64_t>(Ready - Made, 0));
}

void EchoStream::Fill(std::span<std::int16_t> Out) {
    if (Filtered)
        Filter(Made + std::ssize(Out));
    for (std::size_t At = 0; At < Out.size(); At += MostPlaces)
        MixPiece(Out.subspan(At, std::min(MostPlaces, Out.size() - At)));
    Forget();
}

void EchoStream::Filter(std::int64_t End) {
    std::int64_t ForNext = 0; // what the next repeat takes of this one
    for (std::size_t i = Repeats.size(); i-- > 0;) {
        Repeat& Each = Repeats[i];
        const std::int64_t Reach = std::min(std::max(End - Each.Tap.Offset, ForNext), Length);
        if (Reach > Each.Line.End())
            Each.Feed = std::min(Reach + Each.Cascade.Delay(), Length);
        ForNext = Each.Feed;
    }
    DelayLine* Before = &Source;
    for (Repeat& Each : Repeats) {
        const auto Count = static_cast<std::size_t>(Each.Feed - Each.Fed);
        Each.Cascade.Push(Before->Get(Each.Fed, Count),
                          [&Each](std::span<const std::int16_t> Given) { Each.Line.Put(Given); });
        Each.Fed = Each.Feed;
        Before = &Each.Line;
    }
}

void EchoStream::MixPiece(std::span<std::int16_t> Out) {
    std::array<double, MostPlaces> Wet;
    std::fill_n(Wet.begin(), Out.size(), 0.0);
    for (Repeat& Each : Repeats) {
        DelayLine& Line = Filtered ? Each.Line : Source;
        RepeatLoop(Line.Get(Made - Each.Tap.Offset, Out.size()).data(), Wet.data(), Out.size(),
                   static_cast<double>(Each.Tap.Gain), Low, High);
    }
    const std::int16_t* const DryHere = &Dry[Dry.size() - static_cast<std::size_t>(Taken - Made)];
    DryLoop(Wet.data(), DryHere, Out.data(), Out.size(), Low, High);
    Made += std::ssize(Out);
}

void EchoStream::Forget() {
    std::int64_t Needed = Filtered ? Repeats.front().Fed : Made;
    for (std::size_t i = 0; i < Repeats.size(); ++i) {
        const std::int64_t Mixed = Made - Repeats[i].Tap.Offset;
        if (!Filtered)
            Needed = std::min(Needed, Mixed);
        else
            Repeats[i].Line.Forget(i + 1 < Repeats.size() ? std::min(Mixed, Repeats[i + 1].Fed)
                                                          : Mixed);
    }
    Source.Forget(Needed);
}

} // namespace quoril
