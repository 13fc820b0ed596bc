// Block lists in a form that another process can read, and files that change their owner.
#include "storage/WoroFileBlockMod.h"

#include "base/Arithmetic.h"
#include "base/MsgBoxMod.h"
#include "platform/FileSystem.h"
#include "platform/Text.h"
#include "settings/STD1.h"
#include "storage/BlockCarrBuffClass.h"
#include "storage/BlockTableInner.h"
#include "storage/FileCarrBuffClass.h"
#include "storage/PortableBlock.h"

#include <algorithm>
#include <utility>

namespace quoril {

namespace {

/// A name: how many numbers follow, its length in bytes, then four bytes to a number, the lowest
/// first. The count is length / 4 + 2 rounded to nearest, ties to even; 1 for an empty name.
void NamePut(const std::string& Name, std::vector<std::int32_t>& Longs) {
    const auto Bytes = static_cast<std::int32_t>(Name.size());
    const std::int32_t Count = Bytes == 0 ? 1 : RoundToLong(Bytes / 4.0 + 2);
    Longs.push_back(Count);
    Longs.push_back(Bytes);
    std::vector<std::uint32_t> Packed(static_cast<std::size_t>(Count) - 1, 0);
    for (std::size_t i = 0; i < Name.size(); ++i)
        Packed[i / 4] |= std::uint32_t{static_cast<unsigned char>(Name[i])} << (8 * (i % 4));
    for (const std::uint32_t Word : Packed)
        Longs.push_back(static_cast<std::int32_t>(Word));
}

/// The number of the file of that name that is in use, without regard to case; 0 without one.
template <typename Table, typename Name, typename Use>
std::int32_t FileInUse(const Table& Files, const std::string& Wanted, Name NameField,
                       Use UseField) {
    for (std::size_t No = 1; No < Files.size(); ++No)
        if (Files[No].*UseField > 0 && EqualIgnoringCase(Files[No].*NameField, Wanted))
            return static_cast<std::int32_t>(No);
    return 0;
}

void FileTie(std::int32_t BlockNo, const PortableBlock& From, std::int32_t FileNo) {
    BlockRec& Block = BlockAt(BlockNo);
    Block.FileNo = FileNo;
    Block.FilePos = From.FilePos;
    Block.BlockKind = From.Kind;
}

/// Makes a block that was tied to a foreign file private, and has the file forgotten again.
template <typename Forgetting>
void ReadAtOnce(std::int32_t BlockNo, const Forgetting& Forget) {
    try {
        BlockToPrivateMemory(BlockNo);
    } catch (...) {
        if (BlockAt(BlockNo).FileNo != 0)
            BlockAt(BlockNo) = {0, 0, 0, BlockSilence, {}, 0, 0};
        Forget();
        throw;
    }
    Forget();
}

/// Ties a block to a work file. One that is new here and belongs to another process is read at
/// once and forgotten again, so that it is neither kept nor deleted.
void WorkFileTie(std::int32_t BlockNo, const PortableBlock& From, bool Foreign) {
    std::int32_t FileNo =
        FileInUse(WorkFileTable, From.Name, &WorkFileRec::WorkFileName, &WorkFileRec::WorkFileUse);
    const bool Known = FileNo != 0;
    if (!Known) {
        FileNo = WorkFileNew();
        WorkFileAt(FileNo) = {From.Name, Foreign ? 1 : 0};
    }
    ++WorkFileAt(FileNo).WorkFileUse;
    FileTie(BlockNo, From, FileNo);
    if (Known || !Foreign)
        return;
    ReadAtOnce(BlockNo, [&] {
        WorkFileClose(FileNo);
        WorkFileAt(FileNo) = {};
    });
}

/// The same for an original file.
void OrgFileTie(std::int32_t BlockNo, const PortableBlock& From, bool Foreign) {
    std::int32_t FileNo =
        FileInUse(OrgFileTable, From.Name, &OrgFileRec::OrgFileName, &OrgFileRec::OrgFileUse);
    const bool Known = FileNo != 0;
    if (!Known) {
        FileNo = OrgFileAdd(From.Name, From.Channels, From.Bits);
        OrgFileAt(FileNo).OrgFileUse = Foreign ? 1 : 0;
    }
    ++OrgFileAt(FileNo).OrgFileUse;
    FileTie(BlockNo, From, FileNo);
    if (Known || !Foreign)
        return;
    ReadAtOnce(BlockNo, [&] {
        OrgFileClose(FileNo);
        OrgFileAt(FileNo) = {};
    });
}

std::int32_t BlockImport(const PortableBlock& From, bool Foreign) {
    const std::int32_t BlockNo = BlockNew(From.Length, BlockSilence);
    try {
        if (From.Kind == BlockWorkFile)
            WorkFileTie(BlockNo, From, Foreign);
        else if (From.Kind == BlockOrgFile)
            OrgFileTie(BlockNo, From, Foreign);
        else if (From.Kind != BlockSilence)
            MsgBox("Error - Block type can not be converted to Block");
    } catch (...) {
        BlockFree(BlockNo);
        throw;
    }
    BlockAt(BlockNo).BlockStart = From.Start;
    return BlockNo;
}

/// The slot that takes a finished file: the last one if nothing uses it, otherwise a new one.
std::int32_t WorkSlotAtEnd() {
    const auto LastNo = static_cast<std::int32_t>(WorkFileTable.size()) - 1;
    if (LastNo > 0 && WorkFileAt(LastNo).WorkFileUse == 0) {
        WorkFileClose(LastNo);
        (void)FileDelete(WorkFileAt(LastNo).WorkFileName);
        return LastNo;
    }
    WorkFileTable.emplace_back();
    return LastNo + 1;
}

} // namespace

void FileCarrToBlockCarr(FileCarrBuffClass& FileCarr, BlockCarrBuffClass& BlockCarr) {
    const std::int32_t Total = FileCarr.WaveINos;
    const std::string Name = FileCarr.FileName1();
    // The last sample's place must be countable before the carrier gives its file up.
    (void)SubLong(MulLong(2, Total), 1);
    FileCarr.FileRelease();
    const std::int32_t FileNo = WorkSlotAtEnd();
    WorkFileAt(FileNo) = {Name, 0};
    const std::int32_t Longest = DefaultBlockLen();
    BlockSet Blocks;
    for (std::int64_t Pos = 1; Pos <= Total; Pos += Longest) {
        const std::int32_t Length =
            static_cast<std::int32_t>(std::min<std::int64_t>(Longest, Total - Pos + 1));
        const std::int32_t BlockNo = BlockNew(Length, BlockSilence);
        BlockRec& Block = BlockAt(BlockNo);
        Block.BlockKind = BlockWorkFile;
        Block.FileNo = FileNo;
        Block.FilePos = static_cast<std::int32_t>(2 * Pos - 1);
        Block.BlockStart = static_cast<std::int32_t>(Pos);
        ++WorkFileAt(FileNo).WorkFileUse;
        Blocks.push_back(BlockNo);
    }
    BlockCarr.BuffBlocksPutFresh(std::move(Blocks));
}

void BlockSetToLongs(const BlockSet& BlkSet, std::vector<std::int32_t>& Longs) {
    Longs.assign({0, static_cast<std::int32_t>(BlkSet.size())});
    PortableBlock Entry; // keeps what was there where a block says nothing
    Entry.Name.assign(1, ' ');
    for (const std::int32_t BlockNo : BlkSet) {
        const BlockRec& Block = BlockAt(BlockNo);
        if (Block.BlockKind == BlockMemoryAndFile || Block.BlockKind == BlockWorkFile) {
            Entry.Name = WorkFileAt(Block.FileNo).WorkFileName;
            Entry.Kind = BlockWorkFile;
        } else if (Block.BlockKind == BlockOrgFile) {
            const OrgFileRec& File = OrgFileAt(Block.FileNo);
            Entry.Name = File.OrgFileName;
            Entry.Kind = BlockOrgFile;
            Entry.Channels = File.OrgFileChannels;
            Entry.Bits = File.OrgFileBits;
        } else if (Block.BlockKind == BlockSilence) {
            Entry.Name.assign(1, ' ');
            Entry.Kind = BlockSilence;
        } else {
            MsgBox("Error - Block should be written to file before converting");
        }
        NamePut(Entry.Name, Longs);
        Longs.insert(Longs.end(), {Block.BlockLen, Entry.Kind, Block.BlockStart, Block.FilePos,
                                   Entry.Channels, Entry.Bits});
    }
    Longs[0] = ToLong(static_cast<std::int64_t>(Longs.size()) - 1);
}

void LongsToBlockSet(const std::vector<std::int32_t>& Longs, BlockSet& BlkSet, bool Foreign) {
    PortableBlockReader Words(Longs);
    BlockSet Blocks;
    try {
        while (!Words.AtEnd())
            Blocks.push_back(BlockImport(Words.NextBlock(), Foreign));
    } catch (...) {
        BlockSetFree(Blocks);
        throw;
    }
    BlkSet = std::move(Blocks);
}

} // namespace quoril
