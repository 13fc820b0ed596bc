// Walks over the two channels of a range side by side, run by run, so that what both have of one
// stretch of an interleaved file is read once. Within a stretch the first channel comes first.
//
// Runs are small enough for the processor's cache. If a kernel throws, what the carriers hold is of
// no use any more; all rules of the block table hold.
#pragma once

#include "storage/BlockCarrBuffClass.h"

#include <cstdint>
#include <functional>
#include <span>

namespace quoril {

/// A channel of a walk, and what is done with its runs, which come in rising positions.
struct ChannelChange {
    BlockCarrBuffClass* Carrier = nullptr;
    BlockCarrBuffClass::RunChange Change;
};
struct ChannelVisit {
    BlockCarrBuffClass* Carrier = nullptr;
    BlockCarrBuffClass::RunVisit Visit;
};

/// Told after each run: the samples up to `Position` are done in all channels.
using WalkReached = std::function<void(std::int32_t Position)>;

/// Changes every sample of one or two carriers, which is private memory then as far as the budget
/// allows. What lies in files or is shared is read in place, run by run.
void ChangeSideBySide(std::span<const ChannelChange> Channels, const WalkReached& Reached);
/// Reads every sample of one or two carriers, each as WaveRunsRead does: the samples are then in
/// memory, as far as the budget allows, for what reads them again.
void VisitSideBySide(std::span<const ChannelVisit> Channels, const WalkReached& Reached);

enum class WalkOrder : std::uint8_t {
    Rising, ///< from the first run to the last
    Falling ///< from the last run to the first; within a run the samples stand as they do
};

/// What a walk over both channels gives at a time: the samples of either one from `First` on. A
/// channel that ends before the run, or is not there, gives fewer samples or none.
using PairVisit = std::function<void(std::int32_t First, std::span<const std::int16_t> Left,
                                     std::span<const std::int16_t> Right)>;

/// Reads every sample of one or two carriers once, leaving memory and age order alone; either may
/// be null. For what makes new samples of them and does not come back.
void ReadSideBySide(const BlockCarrBuffClass* Left, const BlockCarrBuffClass* Right,
                    WalkOrder Order, const PairVisit& Visit);

} // namespace quoril
