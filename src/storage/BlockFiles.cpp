// The tables of work files and original files, their read handles, and what is read through them.
#include "storage/WoroFileBlockMod.h"

#include "base/Arithmetic.h"
#include "platform/Text.h"
#include "settings/STD1.h"
#include "storage/BlockTableInner.h"
#include "storage/SampleDecode.h"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

namespace quoril {

// Work files hold little-endian samples, and blocks are read and written as they lie in memory.
static_assert(std::endian::native == std::endian::little);

namespace {

bool ChecksJoined = false;
FileForReading OrgHandle;
FileForReading WorkHandle;

/// What is decoded at one time; small enough to stay in the cache.
constexpr std::size_t DecodeBytesAtOnce = std::size_t{128} << 10;
alignas(64) std::array<std::uint8_t, DecodeBytesAtOnce> DecodeBuffer;

/// The program's own files lie in the folder itself; a path that leads on from it may lead out.
bool InSessionFolder(const std::string& Name) {
    const std::string Start = SessionDir + "/";
    return !SessionDir.empty() && Name.starts_with(Start) &&
           Name.find('/', Start.size()) == std::string::npos;
}

/// Deletes a file that nobody uses. A file that cannot be deleted goes with the session folder.
void DeleteUnused(const std::string& Name) {
    (void)FileDelete(Name);
}

void OrgSlotClear(std::int32_t OrgNo) {
    OrgFileRec& File = OrgFileAt(OrgNo);
    OrgFileClose(OrgNo);
    if (InSessionFolder(File.OrgFileName))
        DeleteUnused(File.OrgFileName);
    File.OrgFileName.clear();
}

bool Unused(const OrgFileRec& File) {
    return File.OrgFileUse == 0 && !File.OrgFileName.empty();
}

/// Fails when the open file is not, or no longer, the one that was entered in the table. Every
/// read ends with this, so that no foreign sample is taken for the user's own.
void OrgIdentityCheck(std::int32_t OrgNo) {
    if (OrgHandle.Identity() == OrgFileAt(OrgNo).OrgFileIdentity)
        return;
    OrgFileClose(OrgNo);
    FailChangedFile(OrgFileAt(OrgNo).OrgFileName);
}

void OrgCheckAfterRead(std::int32_t OrgNo) {
    if (!ChecksJoined)
        OrgIdentityCheck(OrgNo);
}

/// Reads `Count` units of `UnitBytes` bytes through a small buffer, and gives each piece to
/// `Decode(Bytes, FirstUnit, Units)`. The last unit may be `ShortBy` bytes shorter.
template <typename Decoder>
void ReadPieces(const FileForReading& File, std::int64_t Offset, std::size_t Count,
                std::size_t UnitBytes, std::size_t ShortBy, const Decoder& Decode) {
    const std::size_t MostUnits = DecodeBytesAtOnce / UnitBytes;
    for (std::size_t Done = 0; Done < Count;) {
        const std::size_t Units = std::min(MostUnits, Count - Done);
        const bool Last = Done + Units == Count;
        File.Read(Offset + static_cast<std::int64_t>(Done * UnitBytes), DecodeBuffer.data(),
                  Units * UnitBytes - (Last ? ShortBy : 0));
        Decode(DecodeBuffer.data(), Done, Units);
        Done += Units;
    }
}

const std::int16_t* AsSamples(const std::uint8_t* Bytes) {
    return reinterpret_cast<const std::int16_t*>(Bytes);
}

} // namespace

std::int32_t OrgFileStep(const OrgFileRec& File) noexcept {
    return (File.OrgFileBits == 8 ? 1 : 2) * (File.OrgFileChannels == 2 ? 2 : 1);
}

std::int32_t OrgFileAdd(const std::string& FileName, std::int32_t Channels, std::int32_t Bits) {
    const FileIdentity Identity = IdentityOfFile(FileName);
    std::int32_t SlotNo = 0;
    for (std::int32_t No = 1; No < static_cast<std::int32_t>(OrgFileTable.size()); ++No) {
        if (Unused(OrgFileAt(No)))
            OrgSlotClear(No);
        if (OrgFileAt(No).OrgFileUse == 0)
            SlotNo = No;
    }
    if (SlotNo == 0) {
        SlotNo = static_cast<std::int32_t>(OrgFileTable.size());
        OrgFileTable.emplace_back();
    }
    OrgFileAt(SlotNo) = {FileName, Channels, Bits, 0, Identity};
    return SlotNo;
}

void OrgFileRelease(std::int32_t OrgNo) {
    BlocksLeaveOrgFile(OrgNo);
    OrgFileClose(OrgNo);
    if (Unused(OrgFileAt(OrgNo)))
        OrgSlotClear(OrgNo);
}

void OrgFileReleaseByName(const std::string& FileName) {
    for (std::int32_t No = 1; No < static_cast<std::int32_t>(OrgFileTable.size()); ++No)
        if (EqualIgnoringCase(OrgFileAt(No).OrgFileName, FileName))
            OrgFileRelease(No);
}

std::int32_t WorkFileNew() {
    const auto Count = static_cast<std::int32_t>(WorkFileTable.size());
    std::int32_t SlotNo = 1;
    while (SlotNo < Count && WorkFileAt(SlotNo).WorkFileUse != 0)
        ++SlotNo;
    if (SlotNo == Count)
        WorkFileTable.emplace_back();
    WorkFileClose(SlotNo);
    DeleteUnused(WorkFileAt(SlotNo).WorkFileName);
    WorkFileAt(SlotNo).WorkFileName = TempFileName();
    return SlotNo;
}

void WorkFileFill(std::int32_t WorkNo, const std::int16_t* Samples, std::int32_t Length) {
    const std::string Name = WorkFileAt(WorkNo).WorkFileName;
    try {
        FileForWriting File(Name, FileForWriting::Mode::CreateNew);
        File.Write(0, Samples, static_cast<std::size_t>(Length) * sizeof(std::int16_t));
        File.Close();
    } catch (...) {
        DeleteUnused(Name);
        throw;
    }
}

void FilesSweep() {
    for (std::int32_t No = 1; No < static_cast<std::int32_t>(WorkFileTable.size()); ++No) {
        WorkFileRec& File = WorkFileAt(No);
        if (File.WorkFileUse != 0 || File.WorkFileName.empty())
            continue;
        WorkFileClose(No);
        DeleteUnused(File.WorkFileName);
        File.WorkFileName.clear();
    }
    for (std::int32_t No = 1; No < static_cast<std::int32_t>(OrgFileTable.size()); ++No)
        if (Unused(OrgFileAt(No)))
            OrgSlotClear(No);
}

void OrgFileOpen(std::int32_t OrgNo) {
    if (OrgFileOpenNo == OrgNo)
        return;
    if (ChecksJoined && OrgFileOpenNo != 0)
        OrgIdentityCheck(OrgFileOpenNo);
    OrgFileClose(OrgFileOpenNo);
    OrgHandle = FileForReading(OrgFileAt(OrgNo).OrgFileName);
    OrgFileOpenNo = OrgNo;
    OrgIdentityCheck(OrgNo);
}

void OrgFileClose(std::int32_t OrgNo) noexcept {
    if (OrgNo == 0 || OrgNo != OrgFileOpenNo)
        return;
    OrgHandle.Close();
    OrgFileOpenNo = 0;
}

bool OrgFileOpenIsHeldByOthers() noexcept {
    return OrgFileOpenNo != 0 && OrgHandle.IsHeldByOthers();
}

void WorkFileOpen(std::int32_t WorkNo) {
    if (WorkFileOpenNo == WorkNo)
        return;
    WorkFileClose(WorkFileOpenNo);
    WorkHandle = FileForReading(WorkFileAt(WorkNo).WorkFileName);
    WorkFileOpenNo = WorkNo;
}

void WorkFileClose(std::int32_t WorkNo) noexcept {
    if (WorkNo == 0 || WorkNo != WorkFileOpenNo)
        return;
    WorkHandle.Close();
    WorkFileOpenNo = 0;
}

void WorkFileRead(std::int32_t WorkNo, std::int32_t FilePos, std::int16_t* Target,
                  std::int32_t Length) {
    WorkFileOpen(WorkNo);
    WorkHandle.Read(std::int64_t{FilePos} - 1, Target,
                    static_cast<std::size_t>(Length) * sizeof(std::int16_t));
}

void OrgFileReadChannel(std::int32_t OrgNo, std::int32_t FilePos, std::int16_t* Target,
                        std::int32_t Length) {
    OrgFileOpen(OrgNo);
    const OrgFileRec& File = OrgFileAt(OrgNo);
    const std::int64_t Offset = std::int64_t{FilePos} - 1;
    const auto Count = static_cast<std::size_t>(Length);
    const auto Step = static_cast<std::size_t>(OrgFileStep(File));
    if (File.OrgFileBits == 8)
        ReadPieces(OrgHandle, Offset, Count, Step, Step - 1,
                   [&](const std::uint8_t* Bytes, std::size_t First, std::size_t Units) {
                       DecodeBytes(Bytes, Step, Target + First, Units);
                   });
    else if (Step == 2)
        OrgHandle.Read(Offset, Target, Count * sizeof(std::int16_t));
    else
        ReadPieces(OrgHandle, Offset, Count, Step, 2,
                   [&](const std::uint8_t* Bytes, std::size_t First, std::size_t Units) {
                       DecodeEverySecond(AsSamples(Bytes), Target + First, Units);
                   });
    OrgCheckAfterRead(OrgNo);
}

void OrgFileReadFrames(std::int32_t OrgNo, std::int32_t FilePos, std::int16_t* Left,
                       std::int16_t* Right, std::int32_t Length) {
    OrgFileOpen(OrgNo);
    const OrgFileRec& File = OrgFileAt(OrgNo);
    const std::int64_t Offset = std::int64_t{FilePos} - 1;
    const auto Count = static_cast<std::size_t>(Length);
    if (File.OrgFileBits == 8)
        ReadPieces(OrgHandle, Offset, Count, 2, 0,
                   [&](const std::uint8_t* Bytes, std::size_t First, std::size_t Units) {
                       DecodeBytes(Bytes, 2, Left + First, Units);
                       DecodeBytes(Bytes + 1, 2, Right + First, Units);
                   });
    else
        ReadPieces(OrgHandle, Offset, Count, 4, 0,
                   [&](const std::uint8_t* Bytes, std::size_t First, std::size_t Units) {
                       DecodeFrames(AsSamples(Bytes), Left + First, Right + First, Units);
                   });
    OrgCheckAfterRead(OrgNo);
}

OrgChecksJoined::OrgChecksJoined() noexcept {
    ChecksJoined = true;
}

OrgChecksJoined::~OrgChecksJoined() {
    ChecksJoined = false;
}

void OrgChecksJoined::Finish() {
    if (OrgFileOpenNo != 0)
        OrgIdentityCheck(OrgFileOpenNo);
}

const FileForReading* BlockHandle(const BlockRec& Block) noexcept {
    try {
        if (Block.BlockKind == BlockOrgFile) {
            OrgFileOpen(Block.FileNo);
            return &OrgHandle;
        }
        if (Block.BlockKind == BlockWorkFile) {
            WorkFileOpen(Block.FileNo);
            return &WorkHandle;
        }
    } catch (const Failure&) {
        return nullptr;
    }
    return nullptr;
}

} // namespace quoril
