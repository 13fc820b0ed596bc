#include "effects/EffectFrame.h"

#include "base/Arithmetic.h"
#include "base/BusyPointer.h"
#include "base/CommandFailure.h"
#include "base/ProgressReport.h"
#include "platform/Text.h"
#include "selection/ViewListener.h"
#include "storage/DiskSpaceGuardMod.h"
#include "storage/FileMemoClass.h"

namespace quoril {

namespace {

/// Samples of a run: small enough for the processor's cache, and reported between two runs.
constexpr std::int32_t RunLength = 32768;

/// The steps up to the point where the computing begins; false when the command ends there.
bool Prepare(EffectClass& Effect, EffectWork& Work) {
    if (!Effect.Admits())
        return false;
    if (!ConfirmSelection(Work.From, Work.To, Work.WorkChn, Effect.Need, Effect.UndoName)) {
        if (Effect.Need != NeedNone)
            return false;
        Work.From = 1;
        Work.To = WaveStore->WavWaveINos;
    }
    if (!Effect.AskFirst(Work))
        return false;
    if (!DiskSpaceGuard(std::int64_t{Effect.DiskBytesPerSample} * Work.Length() * Work.Channels()))
        return false;
    WaveStore->WaveCollectData(Work.From, Work.To, Work.WorkChn, Work.CarrierL, Work.CarrierR);
    return Effect.AskParameters(Work);
}

} // namespace

void EffectProgress::Reached(std::int32_t Position, std::int32_t Count) {
    const std::int32_t Full = Position / Step;
    if (Full == Reports)
        return;
    Reports = Full;
    const double Part = static_cast<double>(Full) * Step / Count;
    ProgressFrm->SetCurrentProgress(Single(Base + Span * Part));
}

void EffectProgress::PassEnd() {
    Base += Span;
    Reports = 0;
    ProgressFrm->SetCurrentProgress(Single(Base));
}

std::int32_t EffectWork::Length() const {
    return AddLong(SubLong(To, From), 1);
}

double EffectClass::SpanOfPass(const EffectWork& Work) const {
    return 1.0 / Work.Channels() / Passes;
}

void EffectClass::Compute(EffectWork& Work) {
    EffectProgress Progress(SpanOfPass(Work), ProgressStep);
    if (Work.LeftInWork())
        ComputeChannel(Work.CarrierL, Progress);
    if (Work.RightInWork())
        ComputeChannel(Work.CarrierR, Progress);
}

void EffectClass::GiveBack(EffectWork& Work) {
    WaveStore->WaveDataReplace(Work.From, Work.WorkChn, Work.CarrierL.get(), Work.CarrierR.get(),
                               UndoName, true);
}

bool RunEffect(EffectClass& Effect) {
    bool Done = false;
    // The title is looked at when the failure has come: a name may be settled on the way.
    RunCommand(Effect.ErrorTitle, [&] {
        EffectWork Work;
        if (!Prepare(Effect, Work))
            return;
        {
            const BusyPointer Busy;
            const ProgressScope Progress(BarColorEffect);
            Effect.Compute(Work);
            WaveStore->EditAsOne([&] { Effect.GiveBack(Work); });
        }
        Refresh_Wave_View();
        Done = true;
    });
    return Done;
}

void ChangePass(BlockCarrBuffClass& Carrier, EffectProgress& Progress,
                const BlockCarrBuffClass::RunChange& Change) {
    const std::int32_t Count = Carrier.WaveINos;
    Carrier.WaveRunsChange(
        1, Count, RunLength,
        [&](std::int32_t First, std::span<const std::int16_t> In, std::span<std::int16_t> Out) {
            Change(First, In, Out);
            Progress.Reached(First + static_cast<std::int32_t>(In.size()) - 1, Count);
        });
    Progress.PassEnd();
}

void ReadPass(BlockCarrBuffClass& Carrier, EffectProgress& Progress,
              const BlockCarrBuffClass::RunVisit& Visit) {
    const std::int32_t Count = Carrier.WaveINos;
    Carrier.WaveRunsRead(
        1, Count, RunLength, [&](std::int32_t First, std::span<const std::int16_t> In) {
            Visit(First, In);
            Progress.Reached(First + static_cast<std::int32_t>(In.size()) - 1, Count);
        });
    Progress.PassEnd();
}

std::unique_ptr<BlockCarrBuffClass> SilentCarrier(std::int32_t Length) {
    auto Carrier = std::make_unique<BlockCarrBuffClass>();
    if (Length > 0)
        Carrier->ReDimSize(Length);
    return Carrier;
}

std::unique_ptr<BlockCarrBuffClass> CopiedCarrier(const BlockCarrBuffClass& Source) {
    auto Carrier = std::make_unique<BlockCarrBuffClass>();
    BlockSet Blocks;
    Source.BuffBlocksGetCopy(Blocks);
    Carrier->BuffBlocksPutFresh(std::move(Blocks));
    return Carrier;
}

double EnteredNumber(const std::string& Text) {
    if (const auto Number = WholeNumber(Text))
        return *Number;
    // What was pasted by mistake may be longer than any message box.
    constexpr std::size_t LongestShown = 40;
    if (Text.size() > LongestShown)
        throw Failure("The entry is not a number.");
    throw Failure("\"" + Text + "\" is not a number.");
}

} // namespace quoril
