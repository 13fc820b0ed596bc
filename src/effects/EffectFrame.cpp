#include "effects/EffectFrame.h"

#include "base/Arithmetic.h"
#include "base/BusyPointer.h"
#include "base/CommandFailure.h"
#include "platform/Text.h"
#include "selection/SelectionMod.h"
#include "selection/ViewListener.h"
#include "storage/DiskSpaceGuardMod.h"
#include "storage/FileMemoClass.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace quoril {

namespace {

/// Settles what is worked on; false when the user backed out.
bool ChooseRange(const EffectClass& Effect, EffectWork& Work) {
    if (!Effect.WholeDocument)
        return ConfirmSelection(Work.From, Work.To, Work.WorkChn, NeedTwoPoints, Effect.UndoName);
    Work.From = 1;
    Work.To = WaveStore->WavWaveINos;
    Work.WorkChn = WaveStore->WavFmtChannel == 2 ? 0 : 1;
    return true;
}

/// The steps up to the point where the computing begins; false when the command ends there.
bool Prepare(EffectClass& Effect, EffectWork& Work) {
    if (!Effect.Admits() || !ChooseRange(Effect, Work) || !Effect.AskFirst(Work))
        return false;
    if (const auto Need = Effect.DiskNeed(Work); Need && !DiskSpaceGuard(*Need))
        return false;
    if (!Effect.AskBeforeCollecting(Work))
        return false;
    if (Effect.Collects) {
        Effect.Collect(Work);
    } else {
        Work.CarrierL = SilentCarrier(0);
        Work.CarrierR = SilentCarrier(0);
    }
    return Effect.AskParameters(Work);
}

std::vector<std::int32_t> ChannelsOf(const EffectWork& Work) {
    if (Work.WorkChn == 0)
        return {1, 2};
    return {Work.WorkChn};
}

std::int32_t LongestOf(const EffectWork& Work) {
    return std::max(Work.CarrierL->WaveINos, Work.CarrierR->WaveINos);
}

/// One stream, and what has come out of it.
struct StreamEnds {
    StreamEnds(std::int32_t Channel, RunStream Made, std::int32_t Expected)
        : Chn(Channel), Stream(std::move(Made)), Out(Expected) {}
    std::int32_t Chn;
    RunStream Stream;
    CarrierWriter Out;
};

} // namespace

std::int32_t EffectWork::Length() const {
    return AddLong(SubLong(To, From), 1);
}

std::int64_t EffectWork::Bytes(std::int32_t BytesPerSample) const {
    return std::int64_t{BytesPerSample} * Length() * (WorkChn == 0 ? 2 : 1);
}

void EffectClass::Collect(EffectWork& Work) {
    WaveStore->WaveCollectData(Work.From, Work.To, Work.WorkChn, Work.CarrierL, Work.CarrierR);
}

void EffectClass::Compute(EffectWork& Work, PassProgress& Progress) {
    ChangePass(Work, Progress, [&](std::int32_t Chn) { return ChannelKernel(Work, Chn); });
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
        const BusyPointer Busy;
        ProgressScope Window(BarColorEffect);
        PassProgress Progress(Effect.SpanOfPass(Work), Effect.ProgressStep);
        Effect.Compute(Work, Progress);
        WaveStore->EditAsOne([&] { Effect.GiveBack(Work); });
        Window.Hide();
        Refresh_Wave_View();
        Done = true;
    });
    return Done;
}

void ChangePass(EffectWork& Work, PassProgress& Progress,
                const std::function<RunChange(std::int32_t Chn)>& KernelOf) {
    std::vector<ChannelChange> Channels;
    for (const std::int32_t Chn : ChannelsOf(Work))
        Channels.push_back({Work.Carrier(Chn).get(), KernelOf(Chn)});
    const std::int32_t Count = LongestOf(Work);
    ChangeSideBySide(Channels, [&](std::int32_t Position) { Progress.Reached(Position, Count); });
    Progress.PassEnd();
}

void ReadPass(EffectWork& Work, PassProgress& Progress,
              const std::function<RunVisit(std::int32_t Chn)>& VisitOf) {
    std::vector<ChannelVisit> Channels;
    for (const std::int32_t Chn : ChannelsOf(Work))
        Channels.push_back({Work.Carrier(Chn).get(), VisitOf(Chn)});
    const std::int32_t Count = LongestOf(Work);
    VisitSideBySide(Channels, [&](std::int32_t Position) { Progress.Reached(Position, Count); });
    Progress.PassEnd();
}

void StreamPass(EffectWork& Work, PassProgress& Progress,
                const std::function<RunStream(std::int32_t Chn)>& StreamOf, WalkOrder Order) {
    std::array<std::optional<StreamEnds>, 2> Channels;
    for (const std::int32_t Chn : ChannelsOf(Work))
        Channels[static_cast<std::size_t>(Chn) - 1].emplace(Chn, StreamOf(Chn),
                                                            Work.Carrier(Chn)->WaveINos);
    const std::int32_t Count = LongestOf(Work);
    std::int32_t Done = 0;
    ReadSideBySide(Work.CarrierL.get(), Work.CarrierR.get(), Order,
                   [&](std::int32_t, RunIn Left, RunIn Right) {
                       for (std::optional<StreamEnds>& Each : Channels)
                           if (const RunIn In = Each && Each->Chn == 1 ? Left : Right;
                               Each && !In.empty())
                               Each->Stream(In, Each->Out);
                       Done += static_cast<std::int32_t>(std::max(Left.size(), Right.size()));
                       Progress.Reached(Done, Count);
                   });
    for (std::optional<StreamEnds>& Each : Channels)
        if (Each) {
            Each->Stream({}, Each->Out);
            Work.Carrier(Each->Chn) = Each->Out.Finish();
        }
    Progress.PassEnd();
}

void PairPass(const EffectWork& Work, PassProgress& Progress, const PairVisit& Visit) {
    const std::int32_t Count = LongestOf(Work);
    ReadSideBySide(Work.CarrierL.get(), Work.CarrierR.get(), WalkOrder::Rising,
                   [&](std::int32_t First, RunIn Left, RunIn Right) {
                       Visit(First, Left, Right);
                       const std::size_t Run = std::max(Left.size(), Right.size());
                       Progress.Reached(First + static_cast<std::int32_t>(Run) - 1, Count);
                   });
    Progress.PassEnd();
}

void MakeEquallyLong(const EffectWork& Work) {
    for (BlockCarrBuffClass* Each : {Work.CarrierL.get(), Work.CarrierR.get()})
        if (Each->WaveINos < Work.Length())
            Each->ReDimSize(Work.Length());
}

std::unique_ptr<BlockCarrBuffClass> SilentCarrier(std::int32_t Length) {
    auto Carrier = std::make_unique<BlockCarrBuffClass>();
    if (Length > 0)
        Carrier->ReDimSize(Length);
    return Carrier;
}

double EnteredNumber(const std::string& Text) {
    if (const auto Number = NumberAlone(Text))
        return *Number;
    // What was pasted by mistake may be longer than any message box.
    constexpr std::size_t LongestShown = 40;
    if (Text.size() > LongestShown)
        throw Failure("The entry is not a number.");
    throw Failure("\"" + Text + "\" is not a number.");
}

} // namespace quoril
