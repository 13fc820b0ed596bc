#include "effects/LiteralWaves.h"

#include <cmath>
#include <cstdlib>

namespace quoril::test {

namespace {

std::int16_t Stored(double Value) {
    return static_cast<std::int16_t>(std::nearbyint(Value));
}

/// One sample at a time, with all that the walk has to remember. Positions count from 1.
class SilenceWalk {
  public:
    SilenceWalk(const LiteralSilenceRule& Given, const std::vector<LiteralWave>& Channels)
        : Rule(Given), Source(Channels), Result(Channels.size(), LiteralWave(Channels[0].size())) {
        MinBal = std::nearbyint(Rule.Rate * Rule.BalMin);
        MaxBal = std::nearbyint(Rule.Rate * Rule.BalMax);
        MinRun = std::nearbyint(Rule.Rate * Rule.SilenDur);
        Thr = std::nearbyint(Rule.SilenVol * 32767);
    }
    std::vector<LiteralWave> Walk() {
        const auto L = static_cast<std::int64_t>(Source[0].size());
        for (std::int64_t i = 1; i <= L; ++i) {
            bool Quiet = true;
            for (const LiteralWave& One : Source)
                Quiet = Quiet && std::abs(int{One[static_cast<std::size_t>(i) - 1]}) < Thr;
            if (Quiet) {
                if (Run == 0)
                    RunStart = i;
                RunEnd = i;
                Run = Run + 1;
                if (static_cast<double>(Run) == MinRun)
                    Long = true;
            } else {
                Close();
                Copy(i, i);
            }
        }
        Close();
        for (LiteralWave& One : Result)
            One.resize(W > 1 ? W : 1, 0);
        return Result;
    }

  private:
    void Copy(std::int64_t From, std::int64_t To) {
        for (std::int64_t i = From; i <= To; ++i) {
            W = W + 1;
            for (std::size_t c = 0; c < Source.size(); ++c)
                Result[c][W - 1] = Source[c][static_cast<std::size_t>(i) - 1];
        }
    }
    void Close() {
        if (Long) {
            double Keep = 0;
            if (Rule.SilenDelStyl == 1) {
                Keep = std::nearbyint(Rule.Rate * Rule.BalDur);
            } else {
                Keep = std::nearbyint(static_cast<double>(Run) * Rule.BalPer);
                if (Keep < MinBal)
                    Keep = MinBal;
                if (Keep > MaxBal)
                    Keep = MaxBal;
            }
            if (static_cast<double>(Run) > Keep)
                Run = 0;
            else
                Keep = 0;
            if (Keep > 0) {
                const auto Start = static_cast<double>(RunStart);
                const auto End = static_cast<double>(RunEnd);
                Copy(RunStart, static_cast<std::int64_t>(std::nearbyint(Keep / 2 + Start - 1)));
                Copy(static_cast<std::int64_t>(std::nearbyint(End - Keep / 2 + 1)), RunEnd);
            }
        }
        Long = false;
        if (Run > 0) {
            Copy(RunStart, RunStart + Run - 1);
            Run = 0;
        }
    }

    const LiteralSilenceRule& Rule;
    const std::vector<LiteralWave>& Source;
    std::vector<LiteralWave> Result;
    double MinBal;
    double MaxBal;
    double MinRun;
    double Thr;
    std::size_t W = 0;
    std::int64_t Run = 0;
    std::int64_t RunStart = 0;
    std::int64_t RunEnd = 0;
    bool Long = false;
};

} // namespace

LiteralWave LiteralSine(std::int32_t Samples, std::int32_t Amplitude, std::int32_t StartHz,
                        std::int32_t EndHz, std::int32_t Rate) {
    LiteralWave Result(static_cast<std::size_t>(Samples), 0);
    if (Samples <= 2)
        return Result;
    const double S0 = 6.28318530717958 / (static_cast<double>(Rate) / StartHz);
    const double S1 = 6.28318530717958 / (static_cast<double>(Rate) / EndHz);
    const double Ratio = std::pow(S1 / S0, 1.0 / Samples);
    double Phase = 0;
    double Step = S0;
    for (std::int16_t& One : Result) {
        One = Stored(std::sin(Phase) * Amplitude);
        Step = Step * Ratio;
        Phase = Phase + Step;
        if (Phase > 6.28318530717958)
            Phase = Phase - 6.28318530717958;
    }
    return Result;
}

LiteralWave LiteralNoise(std::int32_t Samples, std::int32_t Bits,
                         const std::function<double()>& Draw) {
    const double A = Bits == 8 ? 38 : 9830;
    LiteralWave Result;
    double v = 0;
    for (std::int32_t i = 1; i <= Samples; ++i) {
        const double r = Draw();
        v = std::nearbyint((r - 0.5) * A * 2 + v);
        if (v > A)
            v = A;
        if (v < -A)
            v = -A;
        Result.push_back(Stored(v));
    }
    return Result;
}

LiteralWave LiteralModulate(const LiteralWave& Source, const LiteralWave& Tone, std::int32_t Bits) {
    LiteralWave Result;
    for (std::size_t i = 0; i < Source.size(); ++i) {
        double v = std::nearbyint(Tone[i] / 15000.0 * Source[i]);
        if (v == 32768)
            v = 32767;
        if (Bits == 8 && v == 128)
            v = 127;
        Result.push_back(Stored(v));
    }
    return Result;
}

LiteralWave LiteralDeleteSilence(const LiteralWave& Source, const LiteralSilenceRule& Rule) {
    const std::vector<LiteralWave> One = {Source};
    return SilenceWalk(Rule, One).Walk()[0];
}

void LiteralDeleteSilence(const LiteralWave& SourceL, const LiteralWave& SourceR,
                          const LiteralSilenceRule& Rule, LiteralWave& ResultL,
                          LiteralWave& ResultR) {
    const std::vector<LiteralWave> Both = {SourceL, SourceR};
    const std::vector<LiteralWave> Made = SilenceWalk(Rule, Both).Walk();
    ResultL = Made[0];
    ResultR = Made[1];
}

} // namespace quoril::test
