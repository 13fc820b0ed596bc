// Shortening the quiet stretches of one or two channels.
#pragma once

#include "base/ProgressReport.h"
#include "storage/BlockCarrBuffClass.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace quoril {

/// What counts as silence, and how much of it is kept.
struct SilenceRule {
    std::int32_t WavFmtFreq = 44100;
    double SilenVol = 0.01;        ///< threshold as a fraction of 32767, at all depths
    double SilenDur = 0.1;         ///< seconds that a run must last to be shortened
    std::int16_t SilenDelStyl = 1; ///< 1 keeps `BalDur`, otherwise a part of the run is kept
    double BalDur = 1;             ///< seconds
    double BalPer = 0.3;           ///< a fraction of the run
    double BalMin = 0;             ///< seconds, the least and the most of that part
    double BalMax = 100;
};

/// First and last position of a stretch.
struct KeptStretch {
    std::int32_t From = 0;
    std::int32_t To = 0;
    friend bool operator==(const KeptStretch&, const KeptStretch&) = default;
};

/// Finds what remains of a signal when its long quiet runs are shortened. Of such a run the
/// beginning and the end are kept, each half of what is kept in all, rounded to nearest with ties
/// to even: of an odd number there may be one sample more or less.
class SilenceSearch {
  public:
    explicit SilenceSearch(const SilenceRule& Rule);
    /// The next samples, from position `First` on; of two channels, which are quiet only together.
    void Visit(std::int32_t First, std::span<const std::int16_t> Mono);
    void Visit(std::int32_t First, std::span<const std::int16_t> Left,
               std::span<const std::int16_t> Right);
    /// The stretches that remain of `Length` samples, in their order.
    [[nodiscard]] std::vector<KeptStretch> Finish(std::int32_t Length);

  private:
    template <class IsLoud>
    void Walk(std::int32_t First, std::size_t Count, const IsLoud& Loud);
    void RunEnds(std::int32_t RunStart, std::int32_t RunEnd);
    void Keep(std::int64_t To);
    [[nodiscard]] double KeptOf(std::int32_t Run) const;

    SilenceRule Rule;
    std::int32_t Threshold; ///< below this a sample is quiet
    double MinRun;          ///< samples
    std::int32_t LastLoud = 0;
    std::int64_t KeepFrom = 1;
    std::vector<KeptStretch> Kept;
};

// Each gives new carriers of what remains, one sample at least, and leaves the sources as they are.
// Long stretches are not copied: the new carriers' blocks lie where those of the sources do.

void DeleteSilenceMono(const BlockCarrBuffClass& Source, const SilenceRule& Rule,
                       std::unique_ptr<BlockCarrBuffClass>& Result, PassProgress& Progress);
/// The sources have the same length, and so have the results.
void DeleteSilenceStereo(const BlockCarrBuffClass& SourceL, const BlockCarrBuffClass& SourceR,
                         const SilenceRule& Rule, std::unique_ptr<BlockCarrBuffClass>& ResultL,
                         std::unique_ptr<BlockCarrBuffClass>& ResultR, PassProgress& Progress);

} // namespace quoril
