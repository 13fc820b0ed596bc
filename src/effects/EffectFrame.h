// The road of every command that computes samples: take a range from the document, change it, give
// it back as one undo step. A command states only in what it differs. The smallest one, whole:
//
//     class InvertEffect final : public EffectClass {
//       public:
//         InvertEffect() : EffectClass("Invert") {}
//         RunChange ChannelKernel(const EffectWork&, std::int32_t) override {
//             return [Bits = WaveStore->WavFmtBits](std::int32_t, RunIn In, RunOut Out) {
//                 InvertRun(In, Out, Bits);
//             };
//         }
//     };
//     void WaveInvert() {
//         InvertEffect Effect;
//         RunEffect(Effect);
//     }
//
// A command has a ChannelKernel or, where it does not change samples in their places, a Compute
// with one of the passes below. One that does not put as many samples back where they came from
// overrides GiveBack: WaveDataReplace would write a longer result over what stands behind the
// range, where WaveDataExchange moves it.
#pragma once

#include "base/ProgressReport.h"
#include "storage/CarrierWalk.h"
#include "storage/CarrierWriter.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace quoril {

inline constexpr std::uint32_t BarColorEffect = 0x808000;

using RunIn = std::span<const std::int16_t>;
using RunOut = std::span<std::int16_t>;
/// Kernels get a channel's runs in rising positions, so they may keep state from run to run; the
/// first argument is the position of the run's first sample, 1 for the first of the range.
using RunChange = BlockCarrBuffClass::RunChange;
using RunVisit = BlockCarrBuffClass::RunVisit;
/// A kernel whose result is not sample for sample in the places of its source: it looks ahead, or
/// makes more or fewer samples. It puts out what is ready, and is called once more, with an empty
/// run, behind the last sample.
using RunStream = std::function<void(RunIn In, CarrierWriter& Out)>;

/// What an effect works on. The carriers are there from the collecting on; that of a channel which
/// is not in work is empty.
struct EffectWork {
    std::int32_t From = 0;    ///< first sample of the range
    std::int32_t To = 0;      ///< last sample
    std::int32_t WorkChn = 0; ///< 0 both channels, 1 left, 2 right
    std::unique_ptr<BlockCarrBuffClass> CarrierL;
    std::unique_ptr<BlockCarrBuffClass> CarrierR;

    /// Samples of the range; fails with "Overflow" beyond 32 bits.
    [[nodiscard]] std::int32_t Length() const;
    /// `BytesPerSample` for every sample of the range in every channel in work.
    [[nodiscard]] std::int64_t Bytes(std::int32_t BytesPerSample) const;
    [[nodiscard]] bool InWork(std::int32_t Chn) const noexcept {
        return WorkChn == 0 || WorkChn == Chn;
    }
    /// The carrier of channel 1 (left) or 2 (right).
    [[nodiscard]] std::unique_ptr<BlockCarrBuffClass>& Carrier(std::int32_t Chn) noexcept {
        return Chn == 1 ? CarrierL : CarrierR;
    }
};

/// A command that computes samples, in the order of its steps. Each may throw: the user reads why,
/// and as long as nothing was given back the document is as it was.
class EffectClass {
  public:
    explicit EffectClass(std::string Name) : UndoName(std::move(Name)) {}
    virtual ~EffectClass() = default;
    EffectClass(const EffectClass&) = delete;
    EffectClass& operator=(const EffectClass&) = delete;

    std::string UndoName;       ///< what the selection is asked for, then what the undo entry says
    std::string ErrorTitle;     ///< of the message of a failure; empty is the program's title
    bool WholeDocument = false; ///< works on all samples of all channels, without a selection
    bool Collects = true;       ///< false: makes its samples out of nothing; gets empty carriers
    std::int32_t ProgressStep = 100000; ///< samples between two moves of the bar

    /// Before anything is asked; false ends the command.
    virtual bool Admits() { return true; }
    /// With the range known: may ask, and may make the range shorter; false ends the command.
    virtual bool AskFirst(EffectWork&) { return true; }
    /// Bytes that are asked of the disk; nothing when the disk is not looked at.
    virtual std::optional<std::int64_t> DiskNeed(const EffectWork& Work) { return Work.Bytes(2); }
    /// With the disk space granted, before the samples are collected; false ends the command.
    virtual bool AskBeforeCollecting(const EffectWork&) { return true; }
    /// Fills the carriers; by itself with the range.
    virtual void Collect(EffectWork& Work);
    /// With the carriers filled; false ends the command with nothing changed.
    virtual bool AskParameters(const EffectWork&) { return true; }
    /// The part of the bar that one pass over the channels in work takes.
    [[nodiscard]] virtual double SpanOfPass(const EffectWork&) const { return 1.0; }
    /// Computes all channels in work; by itself a ChangePass with the channels' kernels.
    virtual void Compute(EffectWork& Work, PassProgress& Progress);
    /// What changes channel 1 (left) or 2 (right).
    virtual RunChange ChannelKernel(const EffectWork&, std::int32_t /*Chn*/) { return {}; }
    /// Puts the carriers into the document, under `UndoName`.
    virtual void GiveBack(EffectWork& Work);
};

/// Runs the command from the selection to the redrawn view. False when the user backed out or it
/// failed; then the user has been told.
bool RunEffect(EffectClass& Effect);

// ---- Passes over the channels in work, side by side, left first in each stretch. What makes a
// kernel is called for each channel in work, left first, before the pass begins.

/// Changes every sample in its place.
void ChangePass(EffectWork& Work, PassProgress& Progress,
                const std::function<RunChange(std::int32_t Chn)>& KernelOf);
/// Only reads, for a command that reads the samples again in a later pass.
void ReadPass(EffectWork& Work, PassProgress& Progress,
              const std::function<RunVisit(std::int32_t Chn)>& VisitOf);
/// Puts what the streams make in the place of the carriers. In falling order the streams get the
/// last run first.
void StreamPass(EffectWork& Work, PassProgress& Progress,
                const std::function<RunStream(std::int32_t Chn)>& StreamOf,
                WalkOrder Order = WalkOrder::Rising);
/// Reads both channels together, for new samples that need both. A channel that ends early gives
/// shorter runs.
void PairPass(const EffectWork& Work, PassProgress& Progress, const PairVisit& Visit);

/// Makes the carriers of both channels as long as the range: one that ends early is silent there.
void MakeEquallyLong(const EffectWork& Work);
/// A new carrier of `Length` silent samples; empty for 0.
[[nodiscard]] std::unique_ptr<BlockCarrBuffClass> SilentCarrier(std::int32_t Length);

/// The number that the whole text is. Fails with words for the user when it is none.
[[nodiscard]] double EnteredNumber(const std::string& Text);

} // namespace quoril
