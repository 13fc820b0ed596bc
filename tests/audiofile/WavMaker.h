// WAV files made byte by byte, and looks into documents, for the tests of this folder.
#pragma once

#include "base/DocumentState.h"
#include "storage/FileMemoClass.h"

#include <array>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace quoril::test {

using Bytes = std::vector<std::uint8_t>;
using Samples = std::vector<std::int16_t>;

/// A file as its header and chunks say; every field may lie.
struct WavFile {
    std::int32_t Tag = 1;
    std::int32_t Channels = 1;
    std::int32_t Rate = 44100;
    std::int32_t Bits = 16;
    Bytes Data = {};                           ///< the audio
    std::optional<std::int64_t> DataSize = {}; ///< what the header says of it, if not the truth
    std::string DataName = "data";
    Bytes Before = {};     ///< whole chunks between the format and the data
    Bytes After = {};      ///< whole chunks behind the data
    Bytes FormatTail = {}; ///< what follows the 16 bytes of the format chunk

    /// Everything up to the first sample.
    [[nodiscard]] Bytes Header() const;
    [[nodiscard]] Bytes Whole() const;
};

/// A form of samples, as a test's parameter.
struct SampleForm {
    std::int32_t Channels;
    std::int32_t Bits;
};
void PrintTo(const SampleForm& Form, std::ostream* Out);
/// The four that a document can have.
inline constexpr std::array<SampleForm, 4> SampleForms = {{{1, 8}, {2, 8}, {1, 16}, {2, 16}}};
/// As "16Stereo".
[[nodiscard]] std::string NameOf(const SampleForm& Form);

/// A chunk with its name and size, padded to an even length.
[[nodiscard]] Bytes Chunk(const std::string& Name, const Bytes& Contents);
[[nodiscard]] Bytes TextBytes(const std::string& Text);
[[nodiscard]] Bytes Joined(const std::vector<Bytes>& Parts);

/// `Count` samples without a pattern that a shift or a swap could hide, in the range of a depth.
[[nodiscard]] Samples Noise(std::int32_t Count, std::int32_t Bits, std::uint32_t Seed);
/// The audio bytes of interleaved samples: bytes with 128 added, or 16-bit little-endian words.
[[nodiscard]] Bytes AudioBytes(const Samples& Interleaved, std::int32_t Bits);
/// Every second sample, beginning with the first or the second.
[[nodiscard]] Samples EveryOther(const Samples& Interleaved, std::size_t First);

/// All samples of a channel, from index 0.
[[nodiscard]] Samples LeftOf(const FileMemoClass& Store);
[[nodiscard]] Samples RightOf(const FileMemoClass& Store);

/// Puts samples from memory into an empty document.
void FillStore(FileMemoClass& Store, const WaveFormat& Format, const Samples& Left,
               const Samples& Right = {});

/// Entries of the tables that are in use.
struct TableUse {
    int Blocks = 0;
    int WorkFiles = 0;
    int OrgFiles = 0;
    int Pairs = 0;
    friend bool operator==(const TableUse&, const TableUse&) = default;
};
[[nodiscard]] TableUse TablesInUse();
void PrintTo(const TableUse& Use, std::ostream* Out);

/// Every count of the tables is what the blocks make it.
[[nodiscard]] bool CountsHold();

} // namespace quoril::test
