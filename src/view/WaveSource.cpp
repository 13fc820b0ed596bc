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

void StoreSource::StretchAt(std::int32_t Channel, std::int32_t From, std::int32_t Count,
                            std::vector<std::int16_t>& Samples) const {
    std::vector<std::int16_t> Other;
    if (Channel == 2)
        WaveStore->QuickBuffGet(From, Count, 2, Other, Samples);
    else
        WaveStore->QuickBuffGet(From, Count, 1, Samples, Other);
}

} // namespace quoril
