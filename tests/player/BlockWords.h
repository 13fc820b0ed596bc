// Block lists for the player, and the files behind them.
#pragma once

#include "support/TempFolder.h"

#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace quoril::test {

/// Writes the words of a block list.
class BlockWords {
  public:
    BlockWords& Add(const std::string& Name, std::int32_t Length, std::int32_t Kind,
                    std::int32_t Start, std::int32_t FilePos = 1, std::int32_t Channels = 0,
                    std::int32_t Bits = 0) {
        const std::size_t Packed = (Name.size() + 3) / 4;
        Words.push_back(static_cast<std::int32_t>(Packed + 1));
        Words.push_back(static_cast<std::int32_t>(Name.size()));
        const std::size_t At = Words.size();
        Words.resize(At + Packed, 0);
        if (!Name.empty())
            std::memcpy(Words.data() + At, Name.data(), Name.size());
        Words.insert(Words.end(), {Length, Kind, Start, FilePos, Channels, Bits});
        ++Words[1];
        Words[0] = static_cast<std::int32_t>(Words.size()) - 1;
        return *this;
    }
    BlockWords& Silence(std::int32_t Length, std::int32_t Start) {
        return Add(" ", Length, 5, Start);
    }
    std::vector<std::int32_t> Words{1, 0};
};

/// Noise that repeats nowhere near, from a fixed seed.
inline std::vector<std::int16_t> Noise(std::size_t Count, unsigned Seed = 1) {
    std::mt19937 Random(Seed);
    std::vector<std::int16_t> Samples(Count);
    for (std::int16_t& Each : Samples)
        Each = static_cast<std::int16_t>(static_cast<std::int32_t>(Random() & 0xFFFFU) - 32768);
    return Samples;
}

inline std::string WriteSamples(const TempFolder& Folder, const std::string& Name,
                                const std::vector<std::int16_t>& Samples) {
    return Folder.Write(Name, {reinterpret_cast<const char*>(Samples.data()), Samples.size() * 2});
}

} // namespace quoril::test
