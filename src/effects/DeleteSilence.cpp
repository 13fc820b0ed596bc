#include "effects/DeleteSilence.h"

#include "base/Arithmetic.h"
#include "storage/CarrierWalk.h"
#include "storage/CarrierWriter.h"
#include "storage/PairReader.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>
#include <utility>

namespace quoril {

namespace {

using RunIn = std::span<const std::int16_t>;

/// From this length on a stretch moves as blocks. Reading a short one again costs no more than the
/// blocks would, which stay for the life of the document.
constexpr std::int32_t LongStretch = 16384;

/// Joins stretches of one or two carriers.
class StretchJoin {
  public:
    /// `Second` may be null.
    StretchJoin(const BlockCarrBuffClass& First, const BlockCarrBuffClass* Second)
        : One(First), Other(Second),
          Reader(&First.Blocks(), Second == nullptr ? nullptr : &Second->Blocks()),
          OutOne(First.WaveINos), OutOther(First.WaveINos) {}

    void Put(const KeptStretch& Part) {
        const std::int32_t Length = Part.To - Part.From + 1;
        if (Length >= LongStretch)
            return Move(Part);
        Reader.Fill(Part.From, Part.To, SamplesOne.data(), SamplesOther.data());
        OutOne.Put(RunIn(SamplesOne).first(static_cast<std::size_t>(Length)));
        if (Other != nullptr)
            OutOther.Put(RunIn(SamplesOther).first(static_cast<std::size_t>(Length)));
    }
    /// What was joined of the first or the second carrier.
    [[nodiscard]] std::unique_ptr<BlockCarrBuffClass> Finish(bool OfFirst) {
        auto Made = (OfFirst ? OutOne : OutOther).Finish();
        if (Made->WaveINos == 0)
            Made->ReDimSize(1);
        return Made;
    }

  private:
    void Move(const KeptStretch& Part) {
        OutOne.Append(One, Part.From, Part.To);
        if (Other != nullptr)
            OutOther.Append(*Other, Part.From, Part.To);
    }

    const BlockCarrBuffClass& One;
    const BlockCarrBuffClass* Other;
    PairReader Reader;
    CarrierWriter OutOne;
    CarrierWriter OutOther;
    std::vector<std::int16_t> SamplesOne = std::vector<std::int16_t>(LongStretch);
    std::vector<std::int16_t> SamplesOther = std::vector<std::int16_t>(LongStretch);
};

/// What remains of one or two carriers; `Other` may be null.
std::array<std::unique_ptr<BlockCarrBuffClass>, 2> Shortened(const BlockCarrBuffClass& One,
                                                             const BlockCarrBuffClass* Other,
                                                             const SilenceRule& Rule,
                                                             PassProgress& Progress) {
    SilenceSearch Search(Rule);
    ReadSideBySide(
        &One, Other, WalkOrder::Rising, [&](std::int32_t First, RunIn Left, RunIn Right) {
            if (Other == nullptr)
                Search.Visit(First, Left);
            else
                Search.Visit(First, Left, Right);
            Progress.Reached(First + static_cast<std::int32_t>(Left.size()) - 1, One.WaveINos);
        });
    StretchJoin Join(One, Other);
    for (const KeptStretch& Part : Search.Finish(One.WaveINos))
        Join.Put(Part);
    Progress.PassEnd();
    return {Join.Finish(true), Other == nullptr ? nullptr : Join.Finish(false)};
}

} // namespace

SilenceSearch::SilenceSearch(const SilenceRule& Given)
    : Rule(Given), Threshold(RoundToLong(Given.SilenVol * SampleHigh(16))),
      MinRun(RoundEven(Given.WavFmtFreq * Given.SilenDur)) {
    if (MinRun < 1) // no run is ever that short
        MinRun = std::numeric_limits<double>::infinity();
}

double SilenceSearch::KeptOf(std::int32_t Run) const {
    if (Rule.SilenDelStyl == 1)
        return RoundEven(Rule.WavFmtFreq * Rule.BalDur);
    const double AtLeast = RoundEven(Rule.WavFmtFreq * Rule.BalMin);
    const double AtMost = RoundEven(Rule.WavFmtFreq * Rule.BalMax);
    return std::min(std::max(RoundEven(Run * Rule.BalPer), AtLeast), AtMost);
}

void SilenceSearch::Keep(std::int64_t To) {
    if (KeepFrom <= To)
        Kept.push_back({static_cast<std::int32_t>(KeepFrom), static_cast<std::int32_t>(To)});
}

void SilenceSearch::RunEnds(std::int32_t RunStart, std::int32_t RunEnd) {
    const double Left = KeptOf(RunEnd - RunStart + 1);
    if (RunEnd - RunStart + 1 <= Left)
        return;
    std::int64_t FirstPast = RunStart; // the first sample that goes
    std::int64_t LastPast = RunEnd;    // the last one
    if (Left > 0) {
        FirstPast = static_cast<std::int64_t>(RoundEven(Left / 2 + RunStart - 1)) + 1;
        LastPast = static_cast<std::int64_t>(RoundEven(RunEnd - Left / 2 + 1)) - 1;
    }
    if (FirstPast > LastPast)
        return;
    Keep(FirstPast - 1);
    KeepFrom = LastPast + 1;
}

template <class IsLoud>
void SilenceSearch::Walk(std::int32_t First, std::size_t Count, const IsLoud& Loud) {
    const std::int32_t Most =
        static_cast<std::int32_t>(std::min(MinRun, double{std::numeric_limits<int>::max()}));
    std::int32_t Last = LastLoud;
    for (std::size_t k = 0; k < Count; ++k) {
        const std::int32_t At = First + static_cast<std::int32_t>(k);
        const bool LoudNow = Loud(k);
        // Whether a sample is loud can not be foreseen, so that only the end of a long run is worth
        // a branch.
        if (static_cast<unsigned>(LoudNow) & static_cast<unsigned>(At - Last > Most)) [[unlikely]]
            RunEnds(Last + 1, At - 1);
        Last = LoudNow ? At : Last;
    }
    LastLoud = Last;
}

void SilenceSearch::Visit(std::int32_t First, RunIn Mono) {
    Walk(First, Mono.size(),
         [Mono, Thr = Threshold](std::size_t k) { return std::abs(std::int32_t{Mono[k]}) >= Thr; });
}

void SilenceSearch::Visit(std::int32_t First, RunIn Left, RunIn Right) {
    Walk(First, std::min(Left.size(), Right.size()), [Left, Right, Thr = Threshold](std::size_t k) {
        return std::max(std::abs(std::int32_t{Left[k]}), std::abs(std::int32_t{Right[k]})) >= Thr;
    });
}

std::vector<KeptStretch> SilenceSearch::Finish(std::int32_t Length) {
    if (Length - LastLoud >= MinRun)
        RunEnds(LastLoud + 1, Length);
    Keep(Length);
    return std::move(Kept);
}

void DeleteSilenceMono(const BlockCarrBuffClass& Source, const SilenceRule& Rule,
                       std::unique_ptr<BlockCarrBuffClass>& Result, PassProgress& Progress) {
    Result = std::move(Shortened(Source, nullptr, Rule, Progress)[0]);
}

void DeleteSilenceStereo(const BlockCarrBuffClass& SourceL, const BlockCarrBuffClass& SourceR,
                         const SilenceRule& Rule, std::unique_ptr<BlockCarrBuffClass>& ResultL,
                         std::unique_ptr<BlockCarrBuffClass>& ResultR, PassProgress& Progress) {
    auto Results = Shortened(SourceL, &SourceR, Rule, Progress);
    ResultL = std::move(Results[0]);
    ResultR = std::move(Results[1]);
}

} // namespace quoril
