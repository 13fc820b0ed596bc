// The portable form of a block list, read by whoever is given it: words that another process wrote.
#pragma once

#include "storage/WoroFileBlockMod.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace quoril {

/// One block as it stands in the portable form.
struct PortableBlock {
    std::string Name;
    std::int32_t Length = 0;   ///< samples, 0 or more
    std::int32_t Kind = 0;     ///< of the block kinds those with samples in files, and silence
    std::int32_t Start = 0;    ///< first sample's position in the list, from 1
    std::int32_t FilePos = 0;  ///< first sample's place in the file, in bytes from 1
    std::int32_t Channels = 0; ///< of an original file: 1 or 2
    std::int32_t Bits = 0;     ///< of an original file: 8 or 16
};

/// An original file, as it was when it was entered in the table of original files.
struct EnteredFile {
    std::string Name;
    FileIdentity Identity;
};
/// The original files that the blocks of two carriers lie in, each once; null for no carrier.
/// Throws Failure, naming the file, when a name leads to another file now, or to none: whoever is
/// given the blocks must not read it.
[[nodiscard]] std::vector<EnteredFile> OrgFilesEntered(const BlockCarrBuffClass* CarrL,
                                                       const BlockCarrBuffClass* CarrR);

/// Walks over the words of a block list, and never past their end. Everything throws Failure on
/// words that make no block list. The words must outlive it.
class PortableBlockReader {
  public:
    explicit PortableBlockReader(std::span<const std::int32_t> Words);
    [[nodiscard]] bool AtEnd() const noexcept { return Left == 0; }
    /// The next block, with numbers that fit together; the kind and the name can be any.
    [[nodiscard]] PortableBlock NextBlock();

  private:
    [[nodiscard]] std::int32_t Next();
    [[nodiscard]] std::string NextName();

    std::span<const std::int32_t> Longs;
    std::size_t At = 0;
    std::int32_t Left = 0;
};

/// LongsToBlockSet for the two channels of another process, whose common files are read only once.
void ForeignLongsToBlockSets(const std::vector<std::int32_t>& LongsL,
                             const std::vector<std::int32_t>& LongsR, BlockSet& BlkSetL,
                             BlockSet& BlkSetR);

} // namespace quoril
