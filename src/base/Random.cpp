#include "base/Random.h"

#include <bit>
#include <cstdint>
#include <random>

namespace quoril {

namespace {

std::mt19937_64 Generator;

} // namespace

double RandomDraw() noexcept {
    return static_cast<double>(Generator() >> 11U) * 0x1p-53; // all the bits that a double has
}

void RandomSeed(double Seed) noexcept {
    Generator.seed(std::bit_cast<std::uint64_t>(Seed));
}

} // namespace quoril
