#include "storage/PackedText.h"

#include "base/Arithmetic.h"

namespace quoril {

void PackedTextPut(const std::string& Text, std::vector<std::int32_t>& Words) {
    const auto Bytes = static_cast<std::int32_t>(Text.size());
    const std::int32_t Count = Bytes == 0 ? 1 : RoundToLong(Bytes / 4.0 + 2);
    Words.push_back(Count);
    Words.push_back(Bytes);
    std::vector<std::uint32_t> Packed(static_cast<std::size_t>(Count) - 1, 0);
    for (std::size_t i = 0; i < Text.size(); ++i)
        Packed[i / 4] |= std::uint32_t{static_cast<unsigned char>(Text[i])} << (8 * (i % 4));
    for (const std::uint32_t Word : Packed)
        Words.push_back(static_cast<std::int32_t>(Word));
}

std::optional<std::string> PackedTextTake(std::span<const std::int32_t> Words, std::size_t& At) {
    if (At >= Words.size())
        return std::nullopt;
    const std::int32_t Count = Words[At++];
    if (Count < 1 || static_cast<std::size_t>(Count) > Words.size() - At)
        return std::nullopt;
    const std::int32_t Bytes = Words[At++];
    if (Bytes < 0 || Bytes > (std::int64_t{Count} - 1) * 4)
        return std::nullopt;
    std::string Text;
    for (std::int32_t i = 0; i < Bytes; ++i)
        Text.push_back(static_cast<char>(
            static_cast<std::uint32_t>(Words[At + static_cast<std::size_t>(i) / 4]) >>
            (8 * (i % 4))));
    At += static_cast<std::size_t>(Count) - 1;
    return Text;
}

} // namespace quoril
