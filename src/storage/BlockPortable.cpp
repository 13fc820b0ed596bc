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
#include "storage/PackedText.h"
#include "storage/PortableBlock.h"

#include <algorithm>
#include <set>
#include <utility>

namespace quoril {

namespace {

/// The number of the file in use that `IsWanted` says is the one; 0 without one.
template <typename Table, typename Use, typename Question>
std::int32_t FileInUse(const Table& Files, Use UseField, const Question& IsWanted) {
    for (std::size_t No = 1; No < Files.size(); ++No)
        if (Files[No].*UseField > 0 && IsWanted(Files[No]))
            return static_cast<std::int32_t>(No);
    return 0;
}

/// Whether two names lead to one file. Names that differ in the case of letters can do so, and on
/// most disks they do not.
bool SameFile(const std::string& A, const std::string& B) {
    if (A == B)
        return true;
    if (!EqualIgnoringCase(A, B))
        return false;
    const FileIdentity OfA = IdentityOfFile(A);
    const FileIdentity OfB = IdentityOfFile(B);
    return OfA.Device == OfB.Device && OfA.Inode == OfB.Inode;
}

/// Whether a file in use is, as it was opened here, the one that a block of another process names:
/// its samples are then the same.
bool HoldsSamplesOf(const OrgFileRec& File, const PortableBlock& Block) {
    return EqualIgnoringCase(File.OrgFileName, Block.Name) &&
           File.OrgFileChannels == Block.Channels && File.OrgFileBits == Block.Bits &&
           File.OrgFileIdentity == IdentityOfFile(Block.Name);
}

void FileTie(std::int32_t BlockNo, const PortableBlock& From, std::int32_t FileNo) {
    BlockRec& Block = BlockAt(BlockNo);
    Block.FileNo = FileNo;
    Block.FilePos = From.FilePos;
    Block.BlockKind = From.Kind;
}

/// The files of another process that an import has entered in the tables. They are held as long as
/// blocks are tied to them, and then forgotten, so that they are neither kept nor deleted.
class ForeignFiles {
  public:
    ForeignFiles() = default;
    ~ForeignFiles() {
        for (const std::int32_t FileNo : WorkNos) {
            WorkFileClose(FileNo);
            WorkFileAt(FileNo) = {};
        }
        for (const std::int32_t FileNo : OrgNos) {
            OrgFileClose(FileNo);
            OrgFileAt(FileNo) = {};
        }
    }
    ForeignFiles(const ForeignFiles&) = delete;
    ForeignFiles& operator=(const ForeignFiles&) = delete;

    void WorkFileHold(std::int32_t FileNo) {
        WorkNos.push_back(FileNo);
        WorkFileAt(FileNo).WorkFileUse = 1;
    }
    void OrgFileHold(std::int32_t FileNo) {
        OrgNos.push_back(FileNo);
        OrgFileAt(FileNo).OrgFileUse = 1;
    }
    /// Whether the samples of a block are still there.
    [[nodiscard]] bool Hold(const BlockRec& Block) const {
        const auto Among = [&](const std::vector<std::int32_t>& Nos) {
            return std::ranges::find(Nos, Block.FileNo) != Nos.end();
        };
        return (Block.BlockKind == BlockOrgFile && Among(OrgNos)) ||
               (Block.BlockKind == BlockWorkFile && Among(WorkNos));
    }

  private:
    std::vector<std::int32_t> WorkNos;
    std::vector<std::int32_t> OrgNos;
};

/// Ties a block to a work file. `Foreign` holds one that is new here; with null it is our own.
void WorkFileTie(std::int32_t BlockNo, const PortableBlock& From, ForeignFiles* Foreign) {
    std::int32_t FileNo =
        FileInUse(WorkFileTable, &WorkFileRec::WorkFileUse, [&From](const WorkFileRec& File) {
            return SameFile(File.WorkFileName, From.Name);
        });
    if (FileNo == 0) {
        FileNo = WorkFileNew();
        WorkFileAt(FileNo) = {From.Name, 0};
        if (Foreign != nullptr)
            Foreign->WorkFileHold(FileNo);
    }
    ++WorkFileAt(FileNo).WorkFileUse;
    FileTie(BlockNo, From, FileNo);
}

/// The same for an original file.
void OrgFileTie(std::int32_t BlockNo, const PortableBlock& From, ForeignFiles* Foreign) {
    std::int32_t FileNo =
        FileInUse(OrgFileTable, &OrgFileRec::OrgFileUse,
                  [&From](const OrgFileRec& File) { return HoldsSamplesOf(File, From); });
    if (FileNo == 0) {
        FileNo = OrgFileAdd(From.Name, From.Channels, From.Bits);
        if (Foreign != nullptr)
            Foreign->OrgFileHold(FileNo);
    }
    ++OrgFileAt(FileNo).OrgFileUse;
    FileTie(BlockNo, From, FileNo);
}

std::int32_t BlockImport(const PortableBlock& From, ForeignFiles* Foreign) {
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

/// Appends the blocks, tied to their files and not read yet. On failure those before stay.
void BlocksImport(const std::vector<std::int32_t>& Longs, BlockSet& Blocks, ForeignFiles* Foreign) {
    for (PortableBlockReader Words(Longs); !Words.AtEnd();)
        Blocks.push_back(BlockImport(Words.NextBlock(), Foreign));
}

/// The two channels of the same stretch of a stereo file are read in one pass.
void PairUp(const BlockSet& Left, const BlockSet& Right, const ForeignFiles& Foreign) {
    for (std::size_t i = 0; i < std::min(Left.size(), Right.size()); ++i)
        if (Foreign.Hold(BlockAt(Left[i])))
            (void)OrgPairMake(Left[i], Right[i]);
}

/// Reads what lies in foreign files. What was pushed out to a work file of our own stays there.
void ReadForeign(const BlockSet& Blocks, const ForeignFiles& Foreign) {
    for (const std::int32_t BlockNo : Blocks)
        if (Foreign.Hold(BlockAt(BlockNo)))
            BlockToPrivateMemory(BlockNo);
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
        PackedTextPut(Entry.Name, Longs);
        Longs.insert(Longs.end(), {Block.BlockLen, Entry.Kind, Block.BlockStart, Block.FilePos,
                                   Entry.Channels, Entry.Bits});
    }
    Longs[0] = ToLong(static_cast<std::int64_t>(Longs.size()) - 1);
}

std::vector<EnteredFile> OrgFilesEntered(const BlockCarrBuffClass* CarrL,
                                         const BlockCarrBuffClass* CarrR) {
    std::set<std::int32_t> Numbers;
    for (const BlockCarrBuffClass* const Carrier : {CarrL, CarrR})
        for (const std::int32_t BlockNo :
             Carrier == nullptr ? BlockSet() : Carrier->Blocks().Numbers())
            if (BlockAt(BlockNo).BlockKind == BlockOrgFile)
                Numbers.insert(BlockAt(BlockNo).FileNo);
    std::vector<EnteredFile> Files;
    for (const std::int32_t OrgNo : Numbers) {
        const OrgFileRec& File = OrgFileAt(OrgNo);
        if (IdentityOfFile(File.OrgFileName) != File.OrgFileIdentity)
            FailChangedFile(File.OrgFileName);
        Files.push_back({File.OrgFileName, File.OrgFileIdentity});
    }
    return Files;
}

void LongsToBlockSet(const std::vector<std::int32_t>& Longs, BlockSet& BlkSet, bool Foreign) {
    ForeignFiles Files;
    BlockSet Blocks;
    try {
        BlocksImport(Longs, Blocks, Foreign ? &Files : nullptr);
        ReadForeign(Blocks, Files);
    } catch (...) {
        BlockSetFree(Blocks);
        throw;
    }
    BlkSet = std::move(Blocks);
}

void ForeignLongsToBlockSets(const std::vector<std::int32_t>& LongsL,
                             const std::vector<std::int32_t>& LongsR, BlockSet& BlkSetL,
                             BlockSet& BlkSetR) {
    ForeignFiles Files;
    BlockSet Left;
    BlockSet Right;
    try {
        BlocksImport(LongsL, Left, &Files);
        BlocksImport(LongsR, Right, &Files);
        PairUp(Left, Right, Files);
        ReadForeign(Left, Files);
        ReadForeign(Right, Files);
    } catch (...) {
        BlockSetFree(Left);
        BlockSetFree(Right);
        throw;
    }
    BlkSetL = std::move(Left);
    BlkSetR = std::move(Right);
}

} // namespace quoril
