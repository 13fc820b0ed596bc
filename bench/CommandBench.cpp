// One command over the whole of a file, as a user would run it: open, command, save. Beside the
// steps' times it tells what its process took: memory, bytes read, and how the bar moved.
#include "BenchSupport.h"
#include "audiofile/AudioFileTypes.h"
#include "audiofile/OpenSaveClass.h"
#include "audiofile/RawFormat.h"
#include "base/DocumentState.h"
#include "base/MsgBoxMod.h"
#include "base/ProgressReport.h"
#include "base/ViewState.h"
#include "effects/BandSet.h"
#include "effects/ChannelMix.h"
#include "effects/DeleteSilenceCommand.h"
#include "effects/EchoCommands.h"
#include "effects/EchoWave.h"
#include "effects/EqualizerCommands.h"
#include "effects/FormatCommands.h"
#include "effects/GeneratorCommands.h"
#include "effects/NoiseCommands.h"
#include "effects/StretchCommands.h"
#include "effects/TransformCommands.h"
#include "effects/VolumeCommands.h"
#include "storage/FileMemoClass.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

using namespace quoril;
using namespace quoril::bench;

/// The answer to the question for the sources.
class ChosenMix final : public ChnMixDialog {
  public:
    explicit ChosenMix(const ChnMixChoice& Sources) : Choice(Sources) { SetChnMixDialog(this); }
    ~ChosenMix() override { SetChnMixDialog(nullptr); }
    ChosenMix(const ChosenMix&) = delete;
    ChosenMix& operator=(const ChosenMix&) = delete;
    ChnMixAnswer ShowChnMix(const ChnMixChoice&) override { return {true, Choice}; }

  private:
    ChnMixChoice Choice;
};

void Mix(std::int32_t LeftSrc, std::int32_t RightSrc) {
    const ChosenMix Answer({LeftSrc, RightSrc});
    ChannelMix();
}

/// The answer to the question for the bands: eight of them, each another one.
class ChosenBands final : public EqlizDialog {
  public:
    ChosenBands() { SetEqlizDialog(this); }
    ~ChosenBands() override { SetEqlizDialog(nullptr); }
    ChosenBands(const ChosenBands&) = delete;
    ChosenBands& operator=(const ChosenBands&) = delete;
    void ShowEqliz(std::int32_t) override { EqBandSet = {{0, -10, 0, 15, 7, -20, 12, 3, 25}, 8}; }
};

void EqualizeEightBands() {
    const ChosenBands Answer;
    Equalize(0);
}

/// The answer to the questions for frequencies and for silence: what the dialogs come up with, but
/// half a second of each silence is kept.
class ChosenMaking final : public EntFrqDialog, public DelSilenDialog {
  public:
    ChosenMaking() {
        SetEntFrqDialog(this);
        SetDelSilenDialog(this);
    }
    ~ChosenMaking() override {
        SetEntFrqDialog(nullptr);
        SetDelSilenDialog(nullptr);
    }
    ChosenMaking(const ChosenMaking&) = delete;
    ChosenMaking& operator=(const ChosenMaking&) = delete;
    EntFrqAnswer ShowEntFrq(const EntFrqEntry& Shown) override { return {true, Shown}; }
    DelSilenAnswer ShowDelSilen(const DelSilenChoice&) override {
        DelSilenChoice Choice;
        Choice.BalDur = 0.5;
        return {true, Choice};
    }
};

void WithAnswers(void (*Command)()) {
    const ChosenMaking Answers;
    Command();
}

/// The noise is learnt from the first five seconds, as a user would.
void ReduceNoise() {
    const std::int32_t All = SelEnd;
    SelEnd = std::min(SelEnd, SelStart + 5 * WaveStore->WavFmtFreq - 1);
    EffectNoisRedu(0);
    SelEnd = All;
    EffectNoisRedu(1);
}

/// The answer to the question what becomes of two channels.
class ChosenMono final : public CompMonoDialog {
  public:
    explicit ChosenMono(std::int32_t Chosen) : Way(Chosen) { SetCompMonoDialog(this); }
    ~ChosenMono() override { SetCompMonoDialog(nullptr); }
    ChosenMono(const ChosenMono&) = delete;
    ChosenMono& operator=(const ChosenMono&) = delete;
    CompMonoAnswer ShowCompMono() override { return {true, Way}; }

  private:
    std::int32_t Way;
};

void ToMono(std::int32_t Way) {
    const ChosenMono Answer(Way);
    FormatChannelMono();
}

/// The answer to the question for the percentage; what follows moves.
class ChosenStretch final : public StretchDialog {
  public:
    explicit ChosenStretch(const char* Percent) : Text(Percent) { SetStretchDialog(this); }
    ~ChosenStretch() override { SetStretchDialog(nullptr); }
    ChosenStretch(const ChosenStretch&) = delete;
    ChosenStretch& operator=(const ChosenStretch&) = delete;
    StretchAnswer ShowStretch(std::int32_t, const StretchEntry&) override {
        return {true, {Text, Text, false, true}};
    }

  private:
    const char* Text;
};

void StretchTo(std::int32_t Index, const char* Percent) {
    const ChosenStretch Answer(Percent);
    Stretch(Index);
}

/// The answer to the question for the echo: all as at first but the filter.
class ChosenEcho final : public EchoDialog {
  public:
    explicit ChosenEcho(std::int32_t VolReduceHiFi) : HiFi(VolReduceHiFi) { SetEchoDialog(this); }
    ~ChosenEcho() override { SetEchoDialog(nullptr); }
    ChosenEcho(const ChosenEcho&) = delete;
    ChosenEcho& operator=(const ChosenEcho&) = delete;
    bool ShowEcho(EchoParamsRec& Params) override {
        Params = {};
        Params.VolReduceHiFi = HiFi;
        return true;
    }

  private:
    std::int32_t HiFi;
};

void EchoWith(std::int32_t VolReduceHiFi) {
    const ChosenEcho Answer(VolReduceHiFi);
    Echo();
}

/// What one repeat of the echo is filtered with.
void EqualizeAsTheEcho() {
    class EchoBands final : public EqlizDialog {
        void ShowEqliz(std::int32_t) override { EqBandSet = EchoBandSet(80); }
    } Answer;
    SetEqlizDialog(&Answer);
    Equalize(0);
    SetEqlizDialog(nullptr);
}

struct NamedCommand {
    const char* Name;
    void (*Run)();
};
constexpr std::array Commands = {
    NamedCommand{"volume-50", [] { AdjustVolume(16); }},
    NamedCommand{"fade-out", [] { AdjustVolume(4); }},
    NamedCommand{"fade-in", [] { AdjustVolume(5); }},
    NamedCommand{"maximize", [] { OptimizeVolume(3); }},
    NamedCommand{"reverse", [] { WaveReverse(); }},
    NamedCommand{"invert", [] { WaveInvert(); }},
    NamedCommand{"mix-average", [] { Mix(MixAverage, MixAverage); }},
    NamedCommand{"mix-sums", [] { Mix(MixSum, MixLeftLessRight); }},
    NamedCommand{"equalize", [] { EqualizeEightBands(); }},
    NamedCommand{"reduce-noise", [] { ReduceNoise(); }},
    NamedCommand{"8-bits", [] { FormatBit(0); }},
    NamedCommand{"stereo", [] { FormatChannelStereo(); }},
    NamedCommand{"mono-merge", [] { ToMono(MergeBoth); }},
    NamedCommand{"mono-left", [] { ToMono(TrenchRight); }},
    NamedCommand{"mono-right", [] { ToMono(TrenchLeft); }},
    NamedCommand{"rate-22050", [] { FormatFrQ(1); }},
    NamedCommand{"echo", [] { EchoWith(100); }},
    NamedCommand{"echo-hi-fi", [] { EchoWith(80); }},
    NamedCommand{"equalize-echo", [] { EqualizeAsTheEcho(); }},
    NamedCommand{"stretch-150", [] { StretchTo(0, "150"); }},
    NamedCommand{"speed-150", [] { StretchTo(1, "150"); }},
    NamedCommand{"sine", [] { WithAnswers(DrawSine); }},
    NamedCommand{"noise", [] { DrawNoise(); }},
    NamedCommand{"modulate", [] { WithAnswers(Modulate); }},
    NamedCommand{"delete-silence", [] { WithAnswers(DeleteSilence); }},
    NamedCommand{"nothing", [] {}},
};

/// Tells how often and how regularly the bar moved.
class WatchedProgress final : public ProgressReport {
  public:
    WatchedProgress() { SetProgressReport(this); }
    ~WatchedProgress() override { SetProgressReport(nullptr); }
    WatchedProgress(const WatchedProgress&) = delete;
    WatchedProgress& operator=(const WatchedProgress&) = delete;
    void SetVisible(bool) override { Moved(); }
    void SetBarColor1(std::uint32_t) override {}
    void SetCurrentProgress(float Value) override {
        Current = Value;
        ++Moves;
        Moved();
    }
    [[nodiscard]] float CurrentProgress() const override { return Current; }
    void BlinkLamp() override {}

    void Begin() {
        Moves = 0;
        Longest = 0;
        Last = Clock::now();
    }
    std::int64_t Moves = 0;
    double Longest = 0; ///< seconds between two moves

  private:
    using Clock = std::chrono::steady_clock;
    void Moved() {
        const auto Now = Clock::now();
        Longest = std::max(Longest, std::chrono::duration<double>(Now - Last).count());
        Last = Now;
    }
    Clock::time_point Last = Clock::now();
    float Current = 0;
};

/// One step: its seconds, and how the bar moved in it.
void Step(const char* Name, WatchedProgress& Progress, const std::function<void()>& What) {
    const std::int64_t Before = BytesRead();
    Progress.Begin();
    const double Seconds = SecondsOf(What);
    std::printf("%s\t%.6f\t%lld\t%lld\t%.6f\n", Name, Seconds,
                static_cast<long long>(BytesRead() - Before),
                static_cast<long long>(Progress.Moves), Progress.Longest);
}

constexpr std::int32_t WorkFileFrames = 500000000; // 2 GB

/// Files without a header are of the benchmark's own: stereo, 16 bits.
class StatedFormat final : public RawLoadDialog {
  public:
    StatedFormat() { SetRawLoadDialog(this); }
    ~StatedFormat() override { SetRawLoadDialog(nullptr); }
    StatedFormat(const StatedFormat&) = delete;
    StatedFormat& operator=(const StatedFormat&) = delete;
    bool ShowRawLoad(RawChoice& Choice) override {
        Choice = {.FmtChnOpn = 1};
        return true;
    }
};

const AudioFileType& TypeOf(const std::string& FileName) {
    const AudioFileType* Type = AudioFileTypeOf(FileName);
    if (Type == nullptr)
        throw std::runtime_error("not the name of an audio file: " + FileName);
    return *Type;
}

void Open(const BenchFolder& Folder, const std::string& In) {
    if (In == "--work-files") {
        MakeWav(Folder.Path("samples"), 1, WorkFileFrames, true);
        DocumentInWorkFiles(Folder.Path("samples"), WorkFileFrames);
        return;
    }
    WaveStore = std::make_unique<FileMemoClass>();
    OpenSaveClass Files;
    bool Opened = false;
    (Files.*TypeOf(In).Load)(*WaveStore, In, Opened);
    if (!Opened)
        throw std::runtime_error("the file could not be opened");
}

int RunOne(const NamedCommand& Command, const std::string& In, const std::string& Out) {
    const BenchFolder Folder;
    const StatedFormat Raw;
    WatchedProgress Progress;
    Step("open", Progress, [&] { Open(Folder, In); });
    CurrentFormat = {WaveStore->WavFmtChannel, WaveStore->WavFmtFreq, WaveStore->WavFmtBits};
    SelBoth = true;
    SelStart = 1;
    SelEnd = WaveStore->WavWaveINos;
    const bool Changes = std::strcmp(Command.Name, "nothing") != 0;
    Step("command", Progress, Command.Run);
    if (Changes && WaveStore->UndoCount() == 0)
        throw std::runtime_error("the command did nothing");
    if (!Out.empty()) {
        Step("save", Progress, [&] {
            OpenSaveClass Files;
            if (!TypeOf(Out).Write(Files, *WaveStore, Out, {}))
                throw std::runtime_error("the file could not be written");
        });
    } else if (Changes) {
        Step("undo", Progress, [] { WaveStore->Undo(); });
    }
    std::printf("peak\t%lld\n", static_cast<long long>(PeakMemory()));
    std::printf("budget\t%d\n", MemoryBudget);
    std::fflush(stdout);
    WaveStore.reset();
    return 0;
}

} // namespace

// quoril_command_bench COMMAND IN [OUT]: with OUT the result is saved there; without, the command
// is undone. One line for each step: name, seconds, bytes read, moves of the bar, the longest time
// in seconds without one. With "--work-files" as IN a document of 2 GB in work files is made.
int main(int argc, char** argv) {
    MemoryBudget = 536870912;
    if (const char* const Given = std::getenv("QUORIL_BENCH_BUDGET"))
        MemoryBudget = std::atoi(Given);
    for (const NamedCommand& Each : Commands)
        if (argc >= 3 && argv[1] == std::string(Each.Name))
            try {
                return RunOne(Each, argv[2], argc > 3 ? argv[3] : "");
            } catch (const std::exception& Why) {
                std::fprintf(stderr, "%s\n", Why.what());
                return 1;
            }
    std::fprintf(stderr, "usage: quoril_command_bench COMMAND IN [OUT], COMMAND one of:\n");
    for (const NamedCommand& Each : Commands)
        std::fprintf(stderr, "    %s\n", Each.Name);
    return 2;
}
