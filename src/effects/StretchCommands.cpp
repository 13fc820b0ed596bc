#include "effects/StretchCommands.h"

#include "base/Arithmetic.h"
#include "base/MsgBoxMod.h"
#include "effects/EffectFrame.h"
#include "effects/StretchWave.h"
#include "platform/Text.h"
#include "storage/FileMemoClass.h"

#include <algorithm>
#include <array>
#include <optional>

namespace quoril {

namespace {

constexpr double FirstStretch = 150;
constexpr double FirstSpeed = 120;
constexpr double LeastPercent = 10;
constexpr double MostPercent = 1000;
constexpr double Unchanged = 100;

StretchDialog* Dialog = nullptr;

/// The percentages of a dialog that are kept for the next time.
struct Kept {
    double& Start;
    double& End;
    double First; ///< what both begin as
};

Kept KeptOf(std::int32_t Index) {
    if (Index == 0)
        return {StretchStart, StretchEnd, FirstStretch};
    return {SpeedStart, SpeedEnd, FirstSpeed};
}

bool InRange(double Percent) {
    return Percent >= LeastPercent && Percent <= MostPercent;
}

class StretchEffect final : public EffectClass {
  public:
    explicit StretchEffect(std::int32_t MenuIndex)
        : EffectClass(MenuIndex == 0 ? "Stretch/Shrink" : "Change Speed"), Index(MenuIndex) {
        ErrorTitle = Index == 0 ? "Stretch / Shrink Error" : "Change speed Error";
    }

    bool AskFirst(EffectWork&) override {
        StretchEntry Shown = Remembered();
        for (;;) {
            const StretchAnswer Answer =
                Dialog == nullptr ? StretchAnswer{} : Dialog->ShowStretch(Index, Shown);
            if (!Answer.OkClicked)
                return false;
            if (Takes(Answer.Entry))
                return true;
            MsgBox("Invalid Entry");
            Shown = Answer.Entry;
        }
    }
    /// For twice the mean of both stretches.
    std::optional<std::int64_t> DiskNeed(const EffectWork& Work) override {
        constexpr std::int64_t BytesPerSample = 2;
        const double Samples = RoundEven((Start + End) * Work.Length() / 100);
        return BytesPerSample * static_cast<std::int64_t>(Samples) * (Work.WorkChn == 0 ? 2 : 1);
    }
    void Compute(EffectWork& Work, PassProgress& Progress) override {
        std::array Least = {Work.CarrierL->WaveINos, Work.CarrierR->WaveINos};
        StreamPass(Work, Progress, [&](std::int32_t Chn) {
            return StretchWave(Work.Carrier(Chn)->WaveINos, WaveStore->WavFmtBits, Start, End);
        });
        if (MoveFollowing)
            Least.fill(std::max(Work.CarrierL->WaveINos, Work.CarrierR->WaveINos));
        for (const std::int32_t Chn : {1, 2})
            if (const std::int32_t Length = Least[static_cast<std::size_t>(Chn) - 1];
                Work.InWork(Chn) && Work.Carrier(Chn)->WaveINos < Length)
                Work.Carrier(Chn)->ReDimSize(Length);
    }
    void GiveBack(EffectWork& Work) override {
        if (!MoveFollowing)
            return EffectClass::GiveBack(Work);
        WaveStore->WaveDataExchange(Work.From, Work.WorkChn, Work.Length(), Work.CarrierL.get(),
                                    Work.CarrierR.get(), UndoName, true);
    }

  private:
    [[nodiscard]] StretchEntry Remembered() const {
        const Kept Last = KeptOf(Index);
        for (double* const Each : {&Last.Start, &Last.End})
            if (*Each == 0)
                *Each = Last.First;
        return {NumberText(Last.Start), NumberText(Last.End), UseTwoValues, MoveFollowing};
    }
    /// Takes and keeps what was entered; false when that makes no sense.
    bool Takes(const StretchEntry& Entry) {
        Start = NumberAlone(Entry.Start).value_or(0);
        End = Entry.UseTwo ? NumberAlone(Entry.End).value_or(0) : Start;
        if (!InRange(Start) || !InRange(End) || (Start == Unchanged && End == Unchanged))
            return false;
        UseTwoValues = Entry.UseTwo;
        MoveFollowing = Entry.Move;
        if (Index == 1) {
            // Twice the tempo is half the length.
            Start = 10000 / Start;
            End = 10000 / End;
        }
        const Kept Last = KeptOf(Index);
        Last.Start = Start;
        Last.End = End;
        return true;
    }

    std::int32_t Index;
    double Start = 0;
    double End = 0;
};

} // namespace

double StretchStart = FirstStretch;
double StretchEnd = FirstStretch;
double SpeedStart = FirstSpeed;
double SpeedEnd = FirstSpeed;
bool UseTwoValues = false;
bool MoveFollowing = false;

void SetStretchDialog(StretchDialog* Receiver) noexcept {
    Dialog = Receiver;
}

void Stretch(std::int32_t Index) {
    StretchEffect Effect(Index);
    RunEffect(Effect);
}

} // namespace quoril
