#include "view/WaveSource.h"

#include "storage/FileMemoClass.h"

namespace quoril {

void StoreSource::WillNeed(const std::vector<std::int32_t>& Positions) const {
    WaveStore->WaveWillNeed(Positions);
}

void StoreSource::SamplesAt(std::int32_t Channel, const std::vector<std::int32_t>& Positions,
                            std::vector<std::int16_t>& Samples) const {
    WaveStore->WaveSamples(Channel, Positions, Samples);
}

} // namespace quoril
