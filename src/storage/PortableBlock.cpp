#include "storage/PortableBlock.h"

#include "base/Failure.h"
#include "storage/PackedText.h"
#include "storage/WoroFileBlockMod.h"

#include <utility>

namespace quoril {

namespace {

[[noreturn]] void FailDamaged() {
    throw Failure("The description of the copied sound is damaged");
}

} // namespace

PortableBlockReader::PortableBlockReader(std::span<const std::int32_t> Words) : Longs(Words) {
    const std::int32_t LastIndex = Next();
    Left = LastIndex == 0 ? 0 : Next();
    if (LastIndex != static_cast<std::int64_t>(Longs.size()) - 1 || Left < 0)
        FailDamaged();
}

std::int32_t PortableBlockReader::Next() {
    if (At >= Longs.size())
        FailDamaged();
    return Longs[At++];
}

std::string PortableBlockReader::NextName() {
    auto Name = PackedTextTake(Longs, At);
    if (!Name)
        FailDamaged();
    return std::move(*Name);
}

PortableBlock PortableBlockReader::NextBlock() {
    PortableBlock Block;
    Block.Name = NextName();
    for (std::int32_t* const Field :
         {&Block.Length, &Block.Kind, &Block.Start, &Block.FilePos, &Block.Channels, &Block.Bits})
        *Field = Next();
    // The system would end the name there, and open another file.
    if (Block.Name.find('\0') != std::string::npos)
        FailDamaged();
    const bool InFile = Block.Kind == BlockWorkFile || Block.Kind == BlockOrgFile;
    if (Block.Length < 0 || Block.Start < 1 ||
        std::int64_t{Block.Start} + Block.Length > 2147483647 || (InFile && Block.FilePos < 1))
        FailDamaged();
    if (Block.Kind == BlockOrgFile &&
        ((Block.Channels != 1 && Block.Channels != 2) || (Block.Bits != 8 && Block.Bits != 16)))
        FailDamaged();
    --Left;
    return Block;
}

} // namespace quoril
