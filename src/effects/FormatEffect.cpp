#include "effects/FormatEffect.h"

#include "storage/FileMemoClass.h"
#include "storage/UndoListener.h"

namespace quoril {

namespace {

constexpr std::int32_t FormatProgressStep = 10000;

void Take(std::int32_t& Part, std::int32_t Wanted) {
    if (Wanted != 0)
        Part = Wanted;
}

} // namespace

FormatEffect::FormatEffect(const std::string& Name, const WaveFormat& Wanted)
    : EffectClass(Name), New(Wanted) {
    WholeDocument = true;
    ProgressStep = FormatProgressStep;
}

void FormatEffect::GiveBack(EffectWork& Work) {
    Replace(Work);
    Take(CurrentFormat.Channel, New.Channel);
    Take(CurrentFormat.Freq, New.Freq);
    Take(CurrentFormat.Bits, New.Bits);
    SetMenu_To_DefaultFormat();
}

void FormatEffect::ChangeFormat() const {
    WaveStore->WaveDataChangeFmt(New.Channel, New.Bits, New.Freq, UndoName);
}

void FormatEffect::ReplaceChannel(std::int32_t Chn, const BlockCarrBuffClass& Carrier,
                                  bool IsLastOperation) const {
    const std::int32_t Length = Chn == 1 ? WaveStore->WaveNosL() : WaveStore->WaveNosR();
    WaveStore->WaveDataExchange(1, Chn, Length, &Carrier, &Carrier, UndoName, IsLastOperation);
}

} // namespace quoril
