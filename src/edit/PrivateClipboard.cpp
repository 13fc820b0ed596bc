#include "edit/PrivateClipboard.h"

#include "audiofile/FrameWriter.h"
#include "base/Arithmetic.h"
#include "base/CommandFailure.h"
#include "base/Failure.h"
#include "base/MsgBoxMod.h"
#include "base/ProgressReport.h"
#include "base/Random.h"
#include "edit/ClipBits.h"
#include "edit/ClipDescription.h"
#include "edit/ClipMarker.h"
#include "edit/SystemClipboard.h"
#include "platform/FileHandle.h"
#include "settings/STD1.h"
#include "storage/DiskSpaceGuardMod.h"
#include "storage/FileMemoClass.h"

#include <chrono>
#include <map>
#include <utility>

namespace quoril {

std::unique_ptr<BlockCarrBuffClass> ClipCarrL;
std::unique_ptr<BlockCarrBuffClass> ClipCarrR;
std::int32_t ClipPointer = 0;

namespace {

constexpr const char* GetFailedTitle = "Get Wave Form from Clipboard Failed";
constexpr double PointerRange = 16000000.0;

using CarrierPtr = std::unique_ptr<BlockCarrBuffClass>;

/// Whether the clip was copied here. Otherwise another process has described it.
bool ClipIsOwn = false;

void DropClip() {
    ClipPointer = 0;
    ClipIsOwn = false;
    ClipCarrL.reset();
    ClipCarrR.reset();
}

std::int32_t NewClipPointer() {
    const auto Clock = std::chrono::system_clock::now().time_since_epoch().count();
    RandomSeed(static_cast<double>(Clock));
    std::int32_t Drawn = 0;
    while (Drawn == 0) // 0 says that there is no clip
        Drawn = RoundToLong(RandomDraw() * PointerRange);
    return Drawn;
}

const BlockRec& BlockOf(std::int32_t BlockNo) {
    return BlockTable[static_cast<std::size_t>(BlockNo)];
}

/// Whether the name of an original file still leads to the file that was opened.
bool OrgFileIsThere(std::int32_t FileNo) {
    const OrgFileRec& File = OrgFileTable[static_cast<std::size_t>(FileNo)];
    return FileThere(File.OrgFileName) && IdentityOfFile(File.OrgFileName) == File.OrgFileIdentity;
}

/// Writes what other processes would not find to files: what is only in memory, and what lies in a
/// file that has been replaced or deleted while it was open here. Fails where that cannot be read
/// here either.
void BlocksToFiles(const BlockCarrBuffClass& Carrier) {
    std::map<std::int32_t, bool> There; // asked once for each file, since blocks may be many
    const auto Reachable = [&There](std::int32_t FileNo) {
        const auto [Entry, New] = There.try_emplace(FileNo, false);
        if (New)
            Entry->second = OrgFileIsThere(FileNo);
        return Entry->second;
    };
    for (const std::int32_t BlockNo : Carrier.Blocks().Numbers()) {
        if (BlockOf(BlockNo).BlockKind == BlockOrgFile && !Reachable(BlockOf(BlockNo).FileNo))
            BlockToPrivateMemory(BlockNo);
        if (BlockOf(BlockNo).BlockKind == BlockMemory)
            BlockToFile(BlockNo);
    }
}

/// A carrier of copies whose samples all lie in files, or are silent and need none.
CarrierPtr CarrierInFiles(const BlockCarrBuffClass& Source) {
    CarrierPtr Copy = CarrierCopy(Source);
    BlocksToFiles(*Copy);
    return Copy;
}

void Describe(const BlockCarrBuffClass* Carrier, std::int32_t Channel) {
    std::vector<std::int32_t> Words = {0};
    if (Carrier != nullptr)
        BlockSetToLongs(Carrier->Blocks().Numbers(), Words);
    ClipDescriptionWrite(ClipDescriptionName(AppPath, Channel), Words);
}

/// What is described there is no whole clip any more, and a line that leads to it may still be on
/// the desktop's clipboard.
void DescriptionsDelete() {
    FileDelete(ClipDescriptionName(AppPath, 1));
    FileDelete(ClipDescriptionName(AppPath, 2));
    FileDelete(ClipFilesName(AppPath));
}

/// Describes the clip whole or not at all.
void DescribeClip() {
    try {
        ClipFilesWrite(ClipFilesName(AppPath), OrgFilesEntered(ClipCarrL.get(), ClipCarrR.get()));
        Describe(ClipCarrL.get(), 1);
        Describe(ClipCarrR.get(), 2);
    } catch (...) {
        DescriptionsDelete();
        throw;
    }
}

/// Whether the line on the desktop's clipboard leads to the clip of that number. Otherwise the
/// descriptions may be those of a later copy elsewhere.
bool LineLeadsTo(std::int32_t Pointer) {
    const auto Marker = ClipMarkerRead(CurrentSystemClipboard().Text());
    return Marker && Marker->ClipPointer == Pointer;
}

/// A file is about to be overwritten, and samples of the clip that lay in it lie elsewhere now:
/// other processes must not look for them there.
void DescribeAgain() {
    if (!ClipIsOwn || ClipCarrL == nullptr || !LineLeadsTo(ClipPointer))
        return;
    try {
        BlocksToFiles(*ClipCarrL);
        if (ClipCarrR != nullptr)
            BlocksToFiles(*ClipCarrR);
        DescribeClip();
    } catch (const Failure&) {
        // The file can be written all the same. A paste elsewhere finds no clip and says so.
        DescriptionsDelete();
    }
}

void PutClip(std::int32_t WorkChn, std::int32_t Bits, std::int32_t Freq,
             const BlockCarrBuffClass* CarrL, const BlockCarrBuffClass* CarrR) {
    ClipCarrL = CarrierInFiles(WorkChn == 2 ? *CarrR : *CarrL);
    if (WorkChn == 0)
        ClipCarrR = CarrierInFiles(*CarrR);
    DescribeClip();
    ClipMarker Marker;
    Marker.Channels = WorkChn == 0 ? 2 : 1;
    Marker.Length = ClipCarrL->WaveINos;
    Marker.Bits = Bits;
    Marker.Freq = Freq;
    Marker.ClipPointer = NewClipPointer();
    Marker.Folder = AppPath;
    CurrentSystemClipboard().Clear();
    CurrentSystemClipboard().SetText(ClipMarkerLine(Marker));
    ClipPointer = Marker.ClipPointer;
    ClipIsOwn = true;
    SetFileReleasedRoutine(DescribeAgain);
}

bool RateMayDiffer(const ClipMarker& Marker) {
    if (Marker.Freq == WaveStore->WavFmtFreq)
        return true;
    return MsgBox("The sampling rate of the audio found in clipboard is different\n" +
                      Marker.FreqText +
                      " Hz\nThis will be pasted with different pitch and duration\n"
                      "It is recommended to make the formats same before copying\n"
                      "Do you wish to proceed any way?",
                  {}, MsgBoxButtons::YesNo, MsgBoxAnswer::No) == MsgBoxAnswer::Yes;
}

/// Takes the clip of another process over: all descriptions are checked before any sample is read.
/// False when the user finds the disk too full.
bool ImportClip(const ClipMarker& Marker) {
    DropClip();
    const auto Left = ClipDescriptionRead(ClipDescriptionName(Marker.Folder, 1));
    const ClipMoment Copied = ClipMomentRead(Marker.Folder);
    std::vector<std::int32_t> Right;
    if (Marker.Channels == 2)
        Right = ClipDescriptionRead(ClipDescriptionName(Marker.Folder, 2));
    const auto Check = [&] {
        ClipDescriptionCheck(Left, Marker.Length, Copied);
        if (!Right.empty())
            ClipDescriptionCheck(Right, 0, Copied);
    };
    Check();
    const std::int64_t Bytes = std::int64_t{Marker.Length} * (Marker.Channels == 2 ? 4 : 2);
    if (!DiskSpaceGuard(Bytes + Left[0]))
        return false;
    Check(); // the user may have thought for long, and saved elsewhere meanwhile
    BlockSet BlocksL;
    BlockSet BlocksR;
    auto NewL = std::make_unique<BlockCarrBuffClass>();
    auto NewR = Marker.Channels == 2 ? std::make_unique<BlockCarrBuffClass>() : nullptr;
    ClipDescriptionImport(Left, Right, BlocksL, BlocksR);
    NewL->BuffBlocksPutFresh(std::move(BlocksL));
    if (NewR != nullptr)
        NewR->BuffBlocksPutFresh(std::move(BlocksR));
    Check(); // what was read was read from these files
    ClipCarrL = std::move(NewL);
    ClipCarrR = std::move(NewR);
    ClipPointer = Marker.ClipPointer;
    return true;
}

} // namespace

bool PutClipboard(std::int32_t WorkChn, std::int32_t Bits, std::int32_t Freq,
                  const BlockCarrBuffClass* CarrL, const BlockCarrBuffClass* CarrR) {
    bool Room = false;
    RunCommand({}, [&] {
        std::int64_t Bytes = 0;
        for (const BlockCarrBuffClass* const Carrier :
             {WorkChn != 2 ? CarrL : nullptr, WorkChn != 1 ? CarrR : nullptr})
            if (Carrier != nullptr)
                Bytes += std::int64_t{2} * Carrier->WaveINos;
        Room = DiskSpaceGuard(Bytes);
    });
    if (!Room)
        return false;
    const std::int32_t Before = ClipIsOwn ? ClipPointer : 0;
    DropClip();
    if (RunCommand({}, [&] { PutClip(WorkChn, Bits, Freq, CarrL, CarrR); }))
        return true;
    DropClip();
    if (Before != 0 && LineLeadsTo(Before))
        DescriptionsDelete();
    return false;
}

bool GetClipboard(std::unique_ptr<BlockCarrBuffClass>& CarrL,
                  std::unique_ptr<BlockCarrBuffClass>& CarrR, std::int32_t WorkChn) {
    bool Found = false;
    bool Refused = false;
    const bool Went = RunCommand(GetFailedTitle, [&] {
        const ProgressScope Progress(BarColorGather);
        const auto Marker = ClipMarkerRead(CurrentSystemClipboard().Text());
        if (!Marker || !RateMayDiffer(*Marker))
            return;
        Refused = Marker->ClipPointer != ClipPointer && !ImportClip(*Marker);
        if (Refused || ClipCarrL == nullptr) // a line without a number leads to no clip
            return;
        const BlockCarrBuffClass& Second = ClipCarrR != nullptr ? *ClipCarrR : *ClipCarrL;
        if (Marker->Channels == 2 || WorkChn != 2)
            CarrL = CarrierCopy(*ClipCarrL);
        if (Marker->Channels == 2 || WorkChn != 1)
            CarrR = CarrierCopy(Second);
        ClipBitsChange(WorkChn != 2 ? CarrL.get() : nullptr, WorkChn != 1 ? CarrR.get() : nullptr,
                       Marker->Bits, WaveStore->WavFmtBits);
        Found = true;
    });
    if (Went && !Found && !Refused)
        MsgBox("No Waveform found (or invalid data) in Clipboard", GetFailedTitle);
    return Found;
}

void ClearClipboard() {
    if (ClipPointer != 0) {
        const auto Marker = ClipMarkerRead(CurrentSystemClipboard().Text());
        if (Marker && Marker->ClipPointer == ClipPointer)
            CurrentSystemClipboard().Clear();
    }
    DropClip();
}

} // namespace quoril
