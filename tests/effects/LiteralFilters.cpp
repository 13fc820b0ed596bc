#include "effects/LiteralFilters.h"

#include <cmath>
#include <cstdlib>
#include <functional>
#include <stdexcept>

namespace quoril::test {

namespace {

std::size_t At(std::int64_t Index) {
    return static_cast<std::size_t>(Index);
}

std::int32_t Rounded(double Value) {
    const double Whole = std::nearbyint(Value); // to nearest, ties to even
    if (Whole < -2147483648.0 || Whole > 2147483647.0)
        throw std::range_error("beyond 32 bits");
    return static_cast<std::int32_t>(Whole);
}

std::int32_t Reversed(std::int32_t Index, std::int32_t Bits) {
    std::int32_t Result = 0;
    for (std::int32_t Bit = 0; Bit < Bits; ++Bit) {
        Result = Result * 2 + Index % 2;
        Index = Index / 2;
    }
    return Result;
}

std::int32_t BitsOf(std::int32_t Samples) {
    std::int32_t Bits = 1;
    while (std::pow(2.0, Bits) != static_cast<double>(Samples))
        if (++Bits > 100)
            throw std::invalid_argument("not a power of two");
    return Bits;
}

/// The stages of a transform, with what a butterfly stores into the real part left open.
void Stages(std::int32_t Samples, double Turn, std::vector<float>& ImagOut,
            const std::function<double(std::int32_t)>& Real,
            const std::function<void(std::int32_t, double)>& StoreReal) {
    std::int32_t BlockEnd = 1;
    std::int32_t BlockSize = 2;
    while (BlockSize <= Samples) {
        const auto DeltaAngle = static_cast<float>(Turn / BlockSize);
        auto Alpha = static_cast<float>(std::sin(0.5 * static_cast<double>(DeltaAngle)));
        Alpha = static_cast<float>(2.0 * static_cast<double>(Alpha) * static_cast<double>(Alpha));
        const auto Beta = static_cast<float>(std::sin(static_cast<double>(DeltaAngle)));
        const double A = static_cast<double>(Alpha);
        const double B = static_cast<double>(Beta);
        for (std::int32_t i = 0; i < Samples; i += BlockSize) {
            float AR = 1;
            float AI = 0;
            std::int32_t j = i;
            for (std::int32_t Times = 0; Times < BlockEnd; ++Times) {
                const std::int32_t k = j + BlockEnd;
                const double WR = static_cast<double>(AR);
                const double WI = static_cast<double>(AI);
                const double RealK = Real(k);
                const double ImagK = static_cast<double>(ImagOut[At(k)]);
                const auto TR = static_cast<float>(WR * RealK - WI * ImagK);
                const auto TI = static_cast<float>(WI * RealK + WR * ImagK);
                const double RealJ = Real(j);
                const double ImagJ = static_cast<double>(ImagOut[At(j)]);
                StoreReal(k, RealJ - static_cast<double>(TR));
                ImagOut[At(k)] = static_cast<float>(ImagJ - static_cast<double>(TI));
                StoreReal(j, RealJ + static_cast<double>(TR));
                ImagOut[At(j)] = static_cast<float>(ImagJ + static_cast<double>(TI));
                const auto DeltaAR = static_cast<float>(A * WR + B * WI);
                AI = static_cast<float>(WI - (A * WI - B * WR));
                AR = static_cast<float>(WR - static_cast<double>(DeltaAR));
                j = j + 1;
            }
        }
        BlockEnd = BlockSize;
        BlockSize = BlockSize * 2;
    }
}

struct Limits {
    std::int32_t Low;
    std::int32_t High;
};

std::int32_t Within(std::int32_t Value, Limits Allowed) {
    if (Value > Allowed.High)
        return Allowed.High;
    if (Value < Allowed.Low)
        return Allowed.Low;
    return Value;
}

void FilterFrame(const std::vector<float>& Profile, const LiteralWave& Source, LiteralWave& Result,
                 std::int64_t Position, Limits Allowed, std::int32_t& Prev) {
    const auto N = static_cast<std::int32_t>(Profile.size());
    std::vector<std::int16_t> Frame(At(N));
    for (std::int32_t i = 0; i < N; ++i)
        Frame[At(i)] = Source[At(Position + i)];
    std::vector<float> Spectrum = LiteralForward(Frame).Real;
    Spectrum[0] = 0;
    for (std::int32_t i = 1; i < N; ++i) {
        const float n = Profile[At(i)];
        float& Bin = Spectrum[At(i)];
        if (Bin > 0)
            Bin = Bin < n ? 0 : Bin - n;
        else if (Bin < 0)
            Bin = Bin > -n ? 0 : Bin + n;
    }
    std::vector<std::int32_t> Output = LiteralInverse(Spectrum);
    Output[0] = Rounded((static_cast<double>(Prev) + Output[1]) / 2);
    Prev = Output[At(N - 1)];
    for (std::int32_t i = 0; i < N; ++i) {
        const auto a =
            static_cast<float>((3.14159265358979 / (N - 1)) * i * 2 - 3.14159265358979 / 2);
        const auto Window = static_cast<float>((std::sin(static_cast<double>(a)) + 1) / 2);
        std::int16_t& Place = Result[At(Position + i)];
        const std::int32_t v = Rounded(static_cast<double>(Window) * Output[At(i)] + Place);
        Place = static_cast<std::int16_t>(Within(v, Allowed));
    }
}

/// What becomes of the content of one band at the sample `i`, counted from 1.
using Content = std::function<void(std::int32_t Band, std::int32_t i, std::int32_t d)>;

void Cascade(const LiteralWave& Source, std::int32_t WavFmtFreq, std::int32_t Bits,
             std::int32_t NoOfBands, const Content& Take) {
    const std::vector<std::int32_t> f = LiteralFrequencies(NoOfBands);
    const std::int32_t A = Rounded(std::pow(256.0, Bits / 8) / 2 - 1);
    const auto L = static_cast<std::int32_t>(Source.size());
    std::vector<std::int32_t> X(Source.size() + 1, 0);
    for (std::int32_t i = 1; i <= L; ++i)
        X[At(i)] = Source[At(i - 1)];
    for (std::int32_t b = NoOfBands; b >= 1; --b) {
        const std::int32_t H = Rounded(static_cast<double>(WavFmtFreq) / f[At(b)] / 2);
        if (L <= H || H <= 0)
            continue;
        const std::int32_t W = 2 * H;
        std::vector<std::int32_t> Y(X.size(), 0);
        std::vector<std::int32_t> R(At(W) + 1, 0);
        std::int32_t S = X[1] * H;
        for (std::int32_t i = 1; i <= H; ++i) {
            R[At(i)] = X[1];
            R[At(H + i)] = X[At(i)];
            S += X[At(i)];
        }
        std::int32_t c = H;
        std::int32_t t = 0;
        for (std::int32_t i = 1; i <= L; ++i) {
            t = t == W ? 1 : t + 1;
            std::int32_t s = X[At(L)];
            if (i <= L - H) {
                c = c == W ? 1 : c + 1;
                s = X[At(i + H)];
            }
            S = S - R[At(t)] + s;
            R[At(t)] = s;
            std::int32_t m = Rounded(static_cast<double>(S) / W);
            const std::int32_t d = R[At(c)] - m;
            if (std::abs(m) > A)
                m = m < 0 ? -A : A;
            Y[At(i)] = m;
            Take(b, i, d);
        }
        X = Y;
    }
}

} // namespace

LiteralSpectrum LiteralForward(const std::vector<std::int16_t>& RealIn) {
    const auto Samples = static_cast<std::int32_t>(RealIn.size());
    const std::int32_t Bits = BitsOf(Samples);
    LiteralSpectrum Out{std::vector<float>(RealIn.size()), std::vector<float>(RealIn.size(), 0.0F)};
    for (std::int32_t i = 0; i < Samples; ++i)
        Out.Real[At(Reversed(i, Bits))] = RealIn[At(i)];
    Stages(
        Samples, 6.283185, Out.Imag,
        [&](std::int32_t i) { return static_cast<double>(Out.Real[At(i)]); },
        [&](std::int32_t i, double Value) { Out.Real[At(i)] = static_cast<float>(Value); });
    return Out;
}

std::vector<std::int32_t> LiteralInverse(const std::vector<float>& RealIn) {
    const auto Samples = static_cast<std::int32_t>(RealIn.size());
    const std::int32_t Bits = BitsOf(Samples);
    std::vector<std::int32_t> Out(RealIn.size());
    std::vector<float> Imag(RealIn.size(), 0.0F);
    for (std::int32_t i = 0; i < Samples; ++i)
        Out[At(Reversed(i, Bits))] = Rounded(static_cast<double>(RealIn[At(i)]));
    Stages(
        Samples, -6.283185, Imag, [&](std::int32_t i) { return static_cast<double>(Out[At(i)]); },
        [&](std::int32_t i, double Value) { Out[At(i)] = Rounded(Value); });
    for (std::int32_t& Value : Out)
        Value = Rounded(static_cast<double>(Value) / Samples);
    return Out;
}

std::vector<float> LiteralNoiseProfile(std::int32_t Frame, const LiteralWave& Source) {
    const std::int32_t F = static_cast<std::int32_t>(Source.size()) / Frame;
    std::vector<double> Accumulator(At(Frame), 0.0);
    for (std::int32_t k = 0; k < F; ++k) {
        const std::vector<std::int16_t> Samples(Source.begin() + k * Frame,
                                                Source.begin() + (k + 1) * Frame);
        const std::vector<float> Real = LiteralForward(Samples).Real;
        for (std::int32_t Bin = 1; Bin < Frame; ++Bin)
            Accumulator[At(Bin)] += static_cast<double>(std::abs(Real[At(Bin)]));
    }
    std::vector<float> Profile(At(Frame), 0.0F);
    for (std::int32_t Bin = 1; Bin < Frame; ++Bin)
        Profile[At(Bin)] = static_cast<float>(Accumulator[At(Bin)] / F);
    return Profile;
}

LiteralWave LiteralNoiseFilter(const std::vector<float>& Profile, std::int32_t Bits,
                               const LiteralWave& Source) {
    const auto N = static_cast<std::int32_t>(Profile.size());
    const std::int32_t F = static_cast<std::int32_t>(Source.size()) / N;
    const Limits Allowed = Bits == 8 ? Limits{-128, 127} : Limits{-32768, 32767};
    LiteralWave Result(Source.size(), 0);
    std::int32_t Prev = 0;
    for (std::int32_t k = 0; k < F; ++k)
        FilterFrame(Profile, Source, Result, std::int64_t{k} * N, Allowed, Prev);
    Prev = 0;
    for (std::int32_t k = 0; k < F - 1; ++k)
        FilterFrame(Profile, Source, Result, N / 2 + std::int64_t{k} * N, Allowed, Prev);
    return Result;
}

std::vector<std::int32_t> LiteralFrequencies(std::int32_t NoOfBands) {
    std::vector<std::int32_t> f(At(NoOfBands) + 1, 0);
    const double Ratio = std::pow(10.0, 3.0 / (NoOfBands - 1));
    double x = 20;
    for (std::int32_t i = 1; i <= NoOfBands; ++i) {
        f[At(i)] = static_cast<std::int32_t>(std::floor(x / 4)) * 4;
        x = x * Ratio;
    }
    return f;
}

LiteralWave LiteralEqualize(const LiteralWave& Source, std::int32_t WavFmtFreq, std::int32_t Bits,
                            const std::vector<std::int32_t>& Bands) {
    const std::int32_t A = Bits == 8 ? 127 : 32767;
    LiteralWave Result(Source.size(), 0);
    Cascade(Source, WavFmtFreq, Bits, static_cast<std::int32_t>(Bands.size()) - 1,
            [&](std::int32_t b, std::int32_t i, std::int32_t d) {
                const auto g =
                    static_cast<float>(std::pow(1.03, Bands[At(b)]) - std::pow(1.03, -50.0));
                std::int16_t& Place = Result[At(i - 1)];
                const std::int32_t v = Rounded(static_cast<double>(g) * d + Place);
                Place = static_cast<std::int16_t>(Within(v, {-A, A}));
            });
    return Result;
}

std::vector<LiteralWave> LiteralSplit(const LiteralWave& Source, std::int32_t WavFmtFreq,
                                      std::int32_t Bits, std::int32_t NoOfBands) {
    const std::int32_t A = Bits == 8 ? 127 : 32767;
    std::vector<LiteralWave> BandCarr(At(NoOfBands) + 1, LiteralWave(Source.size(), 0));
    Cascade(Source, WavFmtFreq, Bits, NoOfBands,
            [&](std::int32_t b, std::int32_t i, std::int32_t d) {
                BandCarr[At(b)][At(i - 1)] = static_cast<std::int16_t>(Within(d, {-A, A}));
            });
    return BandCarr;
}

} // namespace quoril::test
