// Samples in memory: walks over a carrier beside a plain copy of the same bytes.
#include "effects/GainKernel.h"
#include "settings/STD1.h"
#include "storage/CarrierWalk.h"

#include <array>
#include <benchmark/benchmark.h>
#include <cstring>
#include <vector>

namespace {

using namespace quoril;

constexpr std::int32_t Count = 32 << 20; // 64 MiB of samples, more than any cache

/// A carrier of private memory blocks, with a budget that keeps all of it in memory.
class Material {
  public:
    Material() {
        MemoryBudget = 536870912;
        Carrier.ReDimSize(Count);
        ChangeSideBySide(std::array{ChannelChange{
            &Carrier,
            [](std::int32_t First, std::span<const std::int16_t>, std::span<std::int16_t> Out) {
                for (std::size_t i = 0; i < Out.size(); ++i)
                    Out[i] = static_cast<std::int16_t>(static_cast<std::size_t>(First) + i * 7919);
            }}});
    }
    BlockCarrBuffClass Carrier;
};

void Bytes(benchmark::State& State) {
    State.SetBytesProcessed(State.iterations() * std::int64_t{Count} * 2);
}

void MemoryCopy(benchmark::State& State) {
    const std::vector<std::int16_t> From(Count, 1);
    std::vector<std::int16_t> To(Count, 2);
    for (auto Round : State) {
        std::memcpy(To.data(), From.data(), std::size_t{Count} * 2);
        benchmark::DoNotOptimize(To.data());
        benchmark::ClobberMemory();
    }
    Bytes(State);
}

void WaveLRRead(benchmark::State& State) {
    Material Samples;
    for (auto Round : State) {
        std::int64_t Sum = 0;
        for (std::int32_t p = 1; p <= Count; ++p)
            Sum += Samples.Carrier.WaveLR(p);
        benchmark::DoNotOptimize(Sum);
    }
    Bytes(State);
}

void WaveLRReadAndWrite(benchmark::State& State) {
    Material Samples;
    for (auto Round : State)
        for (std::int32_t p = 1; p <= Count; ++p)
            Samples.Carrier.WaveLR(p, static_cast<std::int16_t>(~Samples.Carrier.WaveLR(p)));
    Bytes(State);
}

void GainByRuns(benchmark::State& State) {
    Material Samples;
    for (auto Round : State)
        ChangeSideBySide(std::array{ChannelChange{
            &Samples.Carrier, [](std::int32_t, std::span<const std::int16_t> In,
                                 std::span<std::int16_t> Out) { GainRun(In, Out, 0.999, 16); }}});
    Bytes(State);
}

/// The same on samples that another block shares: the change makes the copy.
void GainOfSharedSamplesByRuns(benchmark::State& State) {
    Material Samples;
    for (auto Round : State) {
        State.PauseTiming();
        BlockSet Shared;
        Samples.Carrier.BuffBlocksGetCopy(Shared);
        State.ResumeTiming();
        ChangeSideBySide(std::array{ChannelChange{
            &Samples.Carrier, [](std::int32_t, std::span<const std::int16_t> In,
                                 std::span<std::int16_t> Out) { GainRun(In, Out, 0.999, 16); }}});
        State.PauseTiming();
        BlockSetFree(Shared);
        State.ResumeTiming();
    }
    Bytes(State);
}

BENCHMARK(MemoryCopy)->Unit(benchmark::kMillisecond)->MinTime(0.5);
BENCHMARK(WaveLRRead)->Unit(benchmark::kMillisecond)->MinTime(0.5);
BENCHMARK(WaveLRReadAndWrite)->Unit(benchmark::kMillisecond)->MinTime(0.5);
BENCHMARK(GainByRuns)->Unit(benchmark::kMillisecond)->MinTime(0.5);
BENCHMARK(GainOfSharedSamplesByRuns)->Unit(benchmark::kMillisecond)->MinTime(0.5);

} // namespace

BENCHMARK_MAIN();
