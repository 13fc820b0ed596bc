#include "storage/PortableBlock.h"

#include "base/Failure.h"
#include "storage/WoroFileBlockMod.h"

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
    const std::int32_t Count = Next();
    if (Count < 1 || static_cast<std::size_t>(Count) > Longs.size() - At)
        FailDamaged();
    const std::int32_t Bytes = Next();
    if (Bytes < 0 || Bytes > (std::int64_t{Count} - 1) * 4)
        FailDamaged();
    std::string Name;
    for (std::int32_t i = 0; i < Bytes; ++i)
        Name.push_back(static_cast<char>(
            static_cast<std::uint32_t>(Longs[At + static_cast<std::size_t>(i) / 4]) >>
            (8 * (i % 4))));
    At += static_cast<std::size_t>(Count) - 1;
    return Name;
}

PortableBlock PortableBlockReader::NextBlock() {
    PortableBlock Block;
    Block.Name = NextName();
    for (std::int32_t* const Field :
         {&Block.Length, &Block.Kind, &Block.Start, &Block.FilePos, &Block.Channels, &Block.Bits})
        *Field = Next();
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
