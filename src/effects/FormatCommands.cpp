#include "effects/FormatCommands.h"

#include "base/MsgBoxMod.h"
#include "effects/FormatEffect.h"
#include "effects/FormatKernels.h"
#include "storage/FileMemoClass.h"
#include "storage/UndoListener.h"

#include <algorithm>
#include <array>
#include <string>

namespace quoril {

namespace {

CompMonoDialog* Dialog = nullptr;

constexpr std::array<std::int32_t, 2> MenuBits = {8, 16}; // Format_Bit_Menu by index

class BitsEffect final : public FormatEffect {
  public:
    explicit BitsEffect(std::int32_t Bits)
        : FormatEffect(std::to_string(Bits) + " bits", {0, 0, Bits}) {}
    bool Admits() override { return CurrentFormat.Bits != New.Bits; }
    bool AskFirst(EffectWork&) override {
        return MsgBox("Do you wish to Change Bit format?", "Changing Bit format",
                      MsgBoxButtons::YesNoCancel, MsgBoxAnswer::Yes) == MsgBoxAnswer::Yes;
    }
    bool AskBeforeCollecting(const EffectWork&) override {
        if (WaveStore->WavFmtBits != New.Bits)
            return true;
        SetMenu_To_DefaultFormat();
        return false;
    }
    RunChange ChannelKernel(const EffectWork&, std::int32_t) override {
        return ChangeBits(WaveStore->WavFmtBits, New.Bits);
    }

  private:
    void Replace(EffectWork& Work) override {
        ChangeFormat();
        WaveStore->WaveDataReplace(1, Work.WorkChn, Work.CarrierL.get(), Work.CarrierR.get(),
                                   UndoName, true);
    }
};

class StereoEffect final : public FormatEffect {
  public:
    StereoEffect() : FormatEffect("Stereo", {2, 0, 0}) {}
    bool Admits() override { return CurrentFormat.Channel != 2 && WaveStore->WavFmtChannel != 2; }
    bool AskFirst(EffectWork&) override {
        return MsgBox("Do you wish to change to stereo?\n\n(Left channel will be copied to Right)",
                      "Convert to Stereo", MsgBoxButtons::YesNo,
                      MsgBoxAnswer::Yes) == MsgBoxAnswer::Yes;
    }
    void Compute(EffectWork&, PassProgress&) override {}

  private:
    void Replace(EffectWork& Work) override {
        ChangeFormat();
        WaveStore->WaveDataInsert(1, 2, nullptr, Work.CarrierL.get(), UndoName, true);
    }
};

class MonoEffect final : public FormatEffect {
  public:
    MonoEffect() : FormatEffect("Mono", {1, 0, 0}) {}
    bool Admits() override { return CurrentFormat.Channel != 1 && WaveStore->WavFmtChannel != 1; }
    bool AskFirst(EffectWork& Work) override {
        const CompMonoAnswer Answer = Dialog == nullptr ? CompMonoAnswer{} : Dialog->ShowCompMono();
        Way = Answer.MonoOpn;
        Collects = Way != TrenchRight;
        if (Way == TrenchLeft)
            Work.WorkChn = 2;
        return Answer.OkClicked;
    }
    std::optional<std::int64_t> DiskNeed(const EffectWork&) override { return std::nullopt; }
    void Compute(EffectWork& Work, PassProgress& Progress) override {
        if (Way == MergeBoth)
            Merge(Work, Progress);
    }

  private:
    static void Merge(EffectWork& Work, PassProgress& Progress);
    void Replace(EffectWork& Work) override {
        // With two channels the last operation would make them equally long again.
        if (Way == TrenchRight) {
            ChangeFormat();
            DeleteRight(true);
            return;
        }
        DeleteRight(false);
        ChangeFormat();
        ReplaceChannel(1, *(Way == TrenchLeft ? Work.CarrierR : Work.CarrierL), true);
    }
    void DeleteRight(bool IsLastOperation) const {
        WaveStore->WaveDataDelete(1, 2, WaveStore->WaveNosR(), UndoName, IsLastOperation);
    }

    std::int32_t Way = MergeBoth;
};

void MonoEffect::Merge(EffectWork& Work, PassProgress& Progress) {
    MakeEquallyLong(Work);
    CarrierWriter Made(Work.Length());
    PairPass(Work, Progress, [&](std::int32_t, RunIn L, RunIn R) {
        Made.Make(L.size(), [&](std::size_t At, RunOut Out) {
            MergeRun(L.subspan(At, Out.size()), R.subspan(At, Out.size()), Out,
                     WaveStore->WavFmtBits);
        });
    });
    Work.CarrierL = Made.Finish();
}

} // namespace

RunChange ChangeBits(std::int32_t OldBits, std::int32_t NewBits) {
    if (NewBits == 0)
        NewBits = CurrentFormat.Bits;
    if (OldBits == NewBits)
        return [](std::int32_t, RunIn In, RunOut Out) { std::ranges::copy(In, Out.begin()); };
    if (OldBits == 8 && NewBits == 16)
        return [](std::int32_t, RunIn In, RunOut Out) { WidenRun(In, Out); };
    if (OldBits == 16 && NewBits == 8)
        return [](std::int32_t, RunIn In, RunOut Out) { NarrowRun(In, Out); };
    return {};
}

void FormatBit(std::int32_t Index) {
    BitsEffect Effect(MenuBits.at(static_cast<std::size_t>(Index)));
    RunEffect(Effect);
}

void FormatChannelStereo() {
    StereoEffect Effect;
    RunEffect(Effect);
}

void FormatChannelMono() {
    MonoEffect Effect;
    RunEffect(Effect);
}

void SetCompMonoDialog(CompMonoDialog* Receiver) noexcept {
    Dialog = Receiver;
}

} // namespace quoril
