#include "effects/DeleteSilenceCommand.h"

#include "effects/DeleteSilence.h"
#include "effects/EffectFrame.h"
#include "storage/FileMemoClass.h"

#include <optional>

namespace quoril {

namespace {

DelSilenDialog* Dialog = nullptr;

/// The fractions and seconds that the arithmetic takes.
SilenceRule RuleOf(const DelSilenChoice& Choice) {
    constexpr double Percent = 100;
    return {WaveStore->WavFmtFreq, Choice.SilenVol / Percent, Choice.SilenDur, Choice.SilenDelStyl,
            Choice.BalDur,         Choice.BalPer / Percent,   Choice.BalMin,   Choice.BalMax};
}

class DeleteSilenceEffect final : public EffectClass {
  public:
    DeleteSilenceEffect() : EffectClass("Delete Silence") { ErrorTitle = "Delete Silence Error"; }
    std::optional<std::int64_t> DiskNeed(const EffectWork&) override { return 0; }
    bool AskFirst(EffectWork&) override {
        const DelSilenAnswer Answer =
            Dialog == nullptr ? DelSilenAnswer{} : Dialog->ShowDelSilen(DelSilenSettingsRead());
        if (!Answer.OkClicked)
            return false;
        Choice = Answer.Choice;
        DelSilenSettingsWrite(Choice);
        return true;
    }
    void Compute(EffectWork& Work, PassProgress& Progress) override {
        const SilenceRule Rule = RuleOf(Choice);
        std::unique_ptr<BlockCarrBuffClass> ResultL;
        std::unique_ptr<BlockCarrBuffClass> ResultR;
        if (Work.WorkChn == 0) {
            DeleteSilenceStereo(*Work.CarrierL, *Work.CarrierR, Rule, ResultL, ResultR, Progress);
            Work.CarrierL = std::move(ResultL);
            Work.CarrierR = std::move(ResultR);
        } else {
            auto& Only = Work.Carrier(Work.WorkChn);
            DeleteSilenceMono(*Only, Rule, ResultL, Progress);
            Only = std::move(ResultL);
        }
    }
    void GiveBack(EffectWork& Work) override {
        WaveStore->WaveDataDelete(Work.From, Work.WorkChn, Work.Length(), UndoName, false);
        WaveStore->WaveDataInsert(Work.From, Work.WorkChn, Work.CarrierL.get(), Work.CarrierR.get(),
                                  UndoName, true);
    }

  private:
    DelSilenChoice Choice;
};

} // namespace

void SetDelSilenDialog(DelSilenDialog* Receiver) noexcept {
    Dialog = Receiver;
}

void DeleteSilence() {
    DeleteSilenceEffect Effect;
    RunEffect(Effect);
}

} // namespace quoril
