// The road of every command that computes samples: take a range from the document, change it, give
// it back as one undo step. A command states only in what it differs.
#pragma once

#include "selection/SelectionMod.h"
#include "storage/BlockCarrBuffClass.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace quoril {

inline constexpr std::uint32_t BarColorEffect = 0x808000;

/// How far an effect has come: a bar made of equal passes, moved every `Step` samples of a pass.
class EffectProgress {
  public:
    EffectProgress(double SpanOfPass, std::int32_t ReportStep)
        : Span(SpanOfPass), Step(ReportStep) {}
    /// The samples of this pass up to `Position` of `Count` are done.
    void Reached(std::int32_t Position, std::int32_t Count);
    /// The pass is over; the next one goes on from its end.
    void PassEnd();

  private:
    double Span;
    double Base = 0;
    std::int32_t Step;
    std::int32_t Reports = 0; ///< steps told in this pass
};

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
    [[nodiscard]] bool LeftInWork() const noexcept { return WorkChn == 0 || WorkChn == 1; }
    [[nodiscard]] bool RightInWork() const noexcept { return WorkChn == 0 || WorkChn == 2; }
    [[nodiscard]] std::int32_t Channels() const noexcept { return WorkChn == 0 ? 2 : 1; }
};

/// A command that computes samples. Each step may throw: the user reads why, and as long as nothing
/// was given back the document is as it was.
class EffectClass {
  public:
    explicit EffectClass(std::string Name) : UndoName(std::move(Name)) {}
    virtual ~EffectClass() = default;
    EffectClass(const EffectClass&) = delete;
    EffectClass& operator=(const EffectClass&) = delete;

    std::string UndoName;   ///< what the selection is asked for, then what the undo entry says
    std::string ErrorTitle; ///< of the message of a failure; empty is the program's title
    std::int32_t Need = NeedTwoPoints;
    std::int32_t DiskBytesPerSample = 2; ///< asked of the disk, for each channel in work
    std::int32_t ProgressStep = 100000;  ///< samples between two moves of the bar
    std::int32_t Passes = 1;             ///< walks over a channel, equal parts of the bar

    /// Before anything is asked; false ends the command.
    virtual bool Admits() { return true; }
    /// With the range known, before the disk space is asked for; false ends the command.
    virtual bool AskFirst(const EffectWork&) { return true; }
    /// With the carriers filled: the parameters. False ends the command with nothing changed.
    virtual bool AskParameters(const EffectWork&) { return true; }
    /// The part of the bar that a pass takes.
    [[nodiscard]] virtual double SpanOfPass(const EffectWork& Work) const;
    /// Computes all channels in work, left first.
    virtual void Compute(EffectWork& Work);
    /// Computes one channel, in place or into a new carrier in its stead.
    virtual void ComputeChannel(std::unique_ptr<BlockCarrBuffClass>&, EffectProgress&) {}
    /// Puts the carriers into the document, under `UndoName`.
    virtual void GiveBack(EffectWork& Work);
};

/// Runs the command from the selection to the redrawn view. False when the user backed out or it
/// failed; then the user has been told.
bool RunEffect(EffectClass& Effect);

/// One pass over a carrier that changes every sample, run by run.
void ChangePass(BlockCarrBuffClass& Carrier, EffectProgress& Progress,
                const BlockCarrBuffClass::RunChange& Change);
/// One pass that only reads.
void ReadPass(BlockCarrBuffClass& Carrier, EffectProgress& Progress,
              const BlockCarrBuffClass::RunVisit& Visit);
/// A new carrier of `Length` silent samples; empty for 0.
[[nodiscard]] std::unique_ptr<BlockCarrBuffClass> SilentCarrier(std::int32_t Length);
/// A new carrier of the same samples, which cost memory only where one of the two changes.
[[nodiscard]] std::unique_ptr<BlockCarrBuffClass> CopiedCarrier(const BlockCarrBuffClass& Source);

/// The number that the whole text is. Fails with words for the user when it is none.
[[nodiscard]] double EnteredNumber(const std::string& Text);

} // namespace quoril
