#include "AuMaker.h"

namespace quoril::test {

Bytes HighFirst(std::int64_t Value, int Count) {
    Bytes All;
    for (int i = Count - 1; i >= 0; --i)
        All.push_back(static_cast<std::uint8_t>(static_cast<std::uint64_t>(Value) >> (8 * i)));
    return All;
}

Bytes SwappedBytes(const Samples& Interleaved) {
    Bytes All;
    All.reserve(2 * Interleaved.size());
    for (const std::int16_t Sample : Interleaved) {
        All.push_back(static_cast<std::uint8_t>(static_cast<std::uint16_t>(Sample) >> 8));
        All.push_back(static_cast<std::uint8_t>(Sample & 0xFF));
    }
    return All;
}

Bytes AuFile::Whole() const {
    return Joined({TextBytes(Name), HighFirst(Offset, 4),
                   HighFirst(DataSize.value_or(static_cast<std::int64_t>(Data.size())), 4),
                   HighFirst(Encoding, 4), HighFirst(Rate, 4), HighFirst(Channels, 4), Notes,
                   Data});
}

} // namespace quoril::test
