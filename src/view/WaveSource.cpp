#include "view/WaveSource.h"

#include "storage/FileMemoClass.h"

namespace quoril {

void StoreSource::WillNeed(const std::vector<std::int32_t>& Positions) const {
    WaveStore->WaveWillNeed(Positions);
}

void StoreSource::SamplesAt(std::int32_t Channel, const std::vector<std::int32_t>& Positions,
                            std::vector<std::int16_t>& Samples) const {
    Samples.resize(Positions.size());
    if (Channel == 2) {
        for (std::size_t Index = 0; Index < Positions.size(); ++Index)
            Samples[Index] = WaveStore->WaveR(Positions[Index]);
    } else {
        for (std::size_t Index = 0; Index < Positions.size(); ++Index)
            Samples[Index] = WaveStore->WaveL(Positions[Index]);
    }
}

} // namespace quoril
