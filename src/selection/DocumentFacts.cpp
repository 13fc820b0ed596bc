#include "selection/DocumentFacts.h"

#include "storage/FileMemoClass.h"

namespace quoril {

DocumentFacts CurrentDocument() {
    if (!WaveStore)
        return {};
    return {WaveStore->WavWaveINos, WaveStore->WavFmtFreq, WaveStore->WavFmtChannel,
            WaveStore->WavFmtBits};
}

} // namespace quoril
