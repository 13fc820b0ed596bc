// Texts among 32-bit words, as block lists and bookmark files have them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace quoril {

/// Appends a text: how many words follow, its length in bytes, then four bytes to a word, the
/// lowest first. The count is length / 4 + 2 rounded to nearest, ties to even; 1 for an empty text.
void PackedTextPut(const std::string& Text, std::vector<std::int32_t>& Words);

/// The text that begins at word `At`, which is then the word behind it. Nothing when there is none
/// that ends within the words; `At` is then anywhere up to their end.
[[nodiscard]] std::optional<std::string> PackedTextTake(std::span<const std::int32_t> Words,
                                                        std::size_t& At);

} // namespace quoril
