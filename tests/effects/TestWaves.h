// Waves that arithmetic on samples is tried with.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace quoril::test {

struct NamedWave {
    std::string Name;
    std::vector<std::int16_t> Samples;
};

inline std::vector<std::int16_t> NoiseWave(std::int32_t Count, std::int32_t Low, std::int32_t High,
                                           std::uint32_t Seed) {
    std::mt19937 Random(Seed);
    std::vector<std::int16_t> Wave(static_cast<std::size_t>(Count));
    for (std::int16_t& Sample : Wave)
        Sample = static_cast<std::int16_t>(
            std::uniform_int_distribution<std::int32_t>(Low, High)(Random));
    return Wave;
}

/// Noise of full scale at a depth.
inline std::vector<std::int16_t> FullNoise(std::int32_t Count, std::uint32_t Seed,
                                           std::int32_t Bits = 16) {
    const std::int32_t High = Bits == 8 ? 127 : 32767;
    return NoiseWave(Count, -High - 1, High, Seed);
}

/// Noise, impulses, ramps and full scale of a depth.
inline std::vector<NamedWave> TestWaves(std::int32_t Count, std::int32_t Bits) {
    const std::int32_t Low = Bits == 8 ? -128 : -32768;
    const std::int32_t High = Bits == 8 ? 127 : 32767;
    std::vector<NamedWave> Waves;
    const auto Add = [&](const std::string& Name, auto Sample) {
        Waves.push_back({Name, {}});
        for (std::int32_t i = 0; i < Count; ++i)
            Waves.back().Samples.push_back(static_cast<std::int16_t>(Sample(i)));
    };
    const auto Seed = static_cast<std::uint32_t>(Count);
    Waves.push_back({"loud noise", NoiseWave(Count, Low, High, Seed)});
    Waves.push_back({"soft noise", NoiseWave(Count, Low / 20, High / 20, Seed + 1)});
    Add("impulses", [&](std::int32_t i) { return i % 97 == 5 ? (i % 2 == 0 ? High : Low) : 0; });
    Add("ramp", [&](std::int32_t i) { return Low + i % (High - Low + 1); });
    Add("steep ramp", [&](std::int32_t i) { return i * 37 % (High + 1); });
    Add("lowest", [&](std::int32_t) { return Low; });
    Add("highest", [&](std::int32_t) { return High; });
    Add("square", [&](std::int32_t i) { return i / 11 % 2 == 0 ? High : Low; });
    Add("steps up", [&](std::int32_t i) { return i < Count / 2 ? Low : High; });
    return Waves;
}

} // namespace quoril::test
