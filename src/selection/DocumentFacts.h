// What the view needs to know of the document.
#pragma once

#include <cstdint>

namespace quoril {

struct DocumentFacts {
    std::int32_t Total = 0;    ///< samples of the longer channel
    std::int32_t Freq = 22050; ///< Hz
    std::int32_t Channel = 1;  ///< 1 or 2
    std::int32_t Bits = 16;    ///< 8 or 16
};

/// The facts of `WaveStore` at this moment; those of an empty mono document while there is none.
[[nodiscard]] DocumentFacts CurrentDocument();

} // namespace quoril
