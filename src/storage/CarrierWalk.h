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

/// What makes new samples of a run and of one of another carrier, which is as long. `Out` is the
/// place of `In` or overlaps neither.
using RunMerge =
    std::function<void(std::int32_t FirstPos, std::span<const std::int16_t> In,
                       std::span<const std::int16_t> Other, std::span<std::int16_t> Out)>;
struct ChannelMerge {
    BlockCarrBuffClass* Carrier = nullptr;
    const BlockCarrBuffClass* Other = nullptr;
    RunMerge Merge;
};

/// Told after each run: the samples up to `Position` are done in all channels.
using WalkReached = std::function<void(std::int32_t Position)>;

/// Changes every sample of one or two carriers, which is private memory then as far as the budget
/// allows. What lies in files or is shared is read in place, run by run.
void ChangeSideBySide(
    std::span<const ChannelChange> Channels, const WalkReached& Reached = [](std::int32_t) {});
/// The same with what stands in other carriers, `Ahead` samples further on; these are read in place
/// and stay as they are. Of each channel it changes what stands before the end of both carriers.
void MergeSideBySide(std::span<const ChannelMerge> Channels, std::int32_t Ahead,
                     const WalkReached& Reached);
/// Reads every sample of one or two carriers, which are in memory then as far as they find room
/// within the budget, for what reads them again. What finds none is read in place: it would only
/// push out other samples, and be pushed out itself before it is read again.
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
