#include "audiofile/FrameWriter.h"
#include "audiofile/OpenSaveClass.h"
#include "audiofile/ULawTable.h"
#include "audiofile/WavHeader.h"
#include "base/Arithmetic.h"
#include "base/CommandFailure.h"
#include "base/DocumentState.h"
#include "base/MsgBoxMod.h"
#include "base/ProgressReport.h"
#include "settings/STD1.h"
#include "storage/UndoOffScope.h"
#include "storage/WoroFileBlockMod.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace quoril {

namespace {

constexpr std::int64_t MostFileBytes = 2146435072;
constexpr double MostFrames = 2143289344.0;
constexpr std::int32_t LowestRate = 1000;
constexpr std::int32_t HighestRate = 200000;

/// How far a load came: all the way, or to a refusal, which some are told a second time.
enum class Ending { Loaded, Refused, RefusedQuietly };

/// Blocks that no list holds yet; those that are still here at the end are freed.
class LooseBlocks {
  public:
    LooseBlocks() = default;
    ~LooseBlocks() { BlockSetFree(Set); }
    LooseBlocks(const LooseBlocks&) = delete;
    LooseBlocks& operator=(const LooseBlocks&) = delete;

    /// Takes what `Make` gives; a block that has no place here is never made.
    template <class MakeType>
    std::int32_t Add(MakeType&& Make) {
        Set.reserve(Set.size() + 1);
        Set.push_back(Make());
        return Set.back();
    }
    void GiveTo(BlockCarrBuffClass& Carrier) { Carrier.BuffBlocksPutFresh(std::exchange(Set, {})); }

  private:
    BlockSet Set;
};

/// One load of one WAV file.
class WavLoad {
  public:
    WavLoad(FileMemoClass& Document, const std::string& Name, std::int32_t BlockLength)
        : Store(Document), FileName(Name), FileBlockLength(BlockLength) {}

    Ending Run();

  private:
    /// Each of these tells the user what is wrong before it refuses.
    [[nodiscard]] bool TakeLength();
    [[nodiscard]] bool AcceptTag();
    [[nodiscard]] bool TakeFormat(WavHead& Head);
    void CountFrames(const WavHead& Head);

    void FillStore();
    void DecodeULaw(LooseBlocks& Left, LooseBlocks& Right);
    void PlaceBlocks(LooseBlocks& Left, LooseBlocks& Right);
    std::int32_t PlaceOne(LooseBlocks& Set, std::int32_t Count, std::int32_t OrgNo,
                          std::int64_t FileOffset, std::int32_t Position) const;
    [[nodiscard]] bool Stereo() const { return Channels == 2; }
    void ShowProgress(std::int32_t Position) const;
    bool Refuse(const std::string& Text) const {
        MsgBox(Text, "Error Loading " + FileName);
        return false;
    }

    FileMemoClass& Store;
    const std::string& FileName;
    const std::int32_t FileBlockLength;

    FileIdentity Identity; ///< of the file whose header was read
    FileForReading File;
    std::int64_t Length = 0; ///< bytes of the file that count
    bool ToldTooLarge = false;
    std::int32_t Tag = WavTagPcm;
    std::int32_t Channels = 1;
    std::int32_t Rate = 0;
    std::int32_t Bits = 16;
    std::int32_t DataStart = 0; ///< offset of the first sample, from 0
    std::int32_t Frames = 0;
};

bool WavLoad::TakeLength() {
    Identity = IdentityOfFile(FileName);
    Length = Identity.Bytes;
    if (Length < WavShortestFile)
        return Refuse("No wave Data found in file");
    if (Length > MostFileBytes) {
        MsgBox("This wav file is too large\nOnly about 2GB will be opened");
        Length = MostFileBytes;
        ToldTooLarge = true;
    }
    // Whatever the answer is: it has told the user, and the file itself needs no room at once.
    (void)FreeDiskEnough(2 * Length);
    return true;
}

bool WavLoad::AcceptTag() {
    switch (Tag) {
    case WavTagPcm:
    case WavTagULaw:
        return true;
    case WavTagAdpcm:
        MsgBox("Can not open this (4bit/adpcm) format");
        return true;
    case WavTagMp3:
        MsgBox("This is mp3-compressed data (inside a .wav file)\n"
               "Please rename this file from .wav to .mp3 and open it.\n"
               "Contact us if you need help.");
        return false;
    default:
        return MsgBox(fmt::format("Format Tag = {}\n"
                                  "This special format can not be opened.\n"
                                  "Please contact us with the format tag number.\n\n"
                                  "Click 'OK' to try to open it any way.",
                                  Tag),
                      {}, MsgBoxButtons::OkCancel) == MsgBoxAnswer::Ok;
    }
}

bool WavLoad::TakeFormat(WavHead& Head) {
    if (!Head.FindData())
        return Refuse("The String 'Data' - is not found");
    DataStart = Head.DataStart();
    Rate = Head.Rate();
    if (Rate < LowestRate || Rate > HighestRate) {
        MsgBox(fmt::format("Sampling rate {} Hz is not supported", Rate));
        return false;
    }
    // From here on the old document is gone.
    Store.StorageReset();
    Store.WavFmtFreq = Rate;
    Channels = Head.Channels();
    if (Channels != 1 && Channels != 2)
        return Refuse("Channel info invalid at byte location 23");
    Store.WavFmtChannel = Channels;
    Bits = Head.Bits();
    if (Bits != 4 && Bits != 8 && Bits != 16)
        return Refuse(fmt::format(
            "Bits per sample {} is invalid or not supported (at byte location 35)", Bits));
    return true;
}

void WavLoad::CountFrames(const WavHead& Head) {
    const double FrameBytes = RoundEven(Bits / 8.0 * Channels);
    if (FrameBytes == 0.0) // half a byte for each frame of 4-bit mono
        throw Failure("Division by zero");
    const double AvailableFrames = std::floor(static_cast<double>(Length - DataStart) / FrameBytes);
    double HeaderFrames = RoundEven(Head.DataSize() / FrameBytes);
    if (HeaderFrames > AvailableFrames) {
        MsgBox(fmt::format("Header shows that the size of audio is\n"
                           "{:.0f} Samples ({:.3f} Seconds)\n"
                           "But as per the size of the file it will be\n"
                           "{:.0f} Samples ({:.3f} Seconds)",
                           HeaderFrames, HeaderFrames / Rate, AvailableFrames,
                           AvailableFrames / Rate));
        HeaderFrames = AvailableFrames;
    }
    if (HeaderFrames > MostFrames) {
        HeaderFrames = MostFrames;
        if (!ToldTooLarge)
            MsgBox("This wav file is too long\nOnly about 2GB will be opened");
    }
    Frames = RoundToLong(HeaderFrames);
}

void WavLoad::ShowProgress(std::int32_t Position) const {
    ProgressFrm->SetCurrentProgress(
        Frames == 0 ? 0.0F : static_cast<float>(Position) / static_cast<float>(Frames));
}

void WavLoad::DecodeULaw(LooseBlocks& Left, LooseBlocks& Right) {
    constexpr std::int32_t SliceFrames = 65536;
    const auto& Table = ULawDecodeTable();
    const std::int32_t ChunkFrames = FramesPerChunk(FileBlockLength, 8, Channels);
    std::vector<std::uint8_t> Codes(std::size_t{SliceFrames} * static_cast<std::size_t>(Channels));
    for (std::int32_t Position = 0; Position < Frames;) {
        ShowProgress(Position);
        const std::int32_t Count = std::min(ChunkFrames, Frames - Position);
        SampleRun SamplesL = SampleRun::Unfilled(Count);
        SampleRun SamplesR = Stereo() ? SampleRun::Unfilled(Count) : SampleRun();
        for (std::int32_t Done = 0; Done < Count;) {
            const std::int32_t Slice = std::min(SliceFrames, Count - Done);
            const auto Bytes = static_cast<std::size_t>(Slice) * static_cast<std::size_t>(Channels);
            File.Read(std::int64_t{DataStart} + std::int64_t{Position + Done} * Channels,
                      Codes.data(), Bytes);
            std::int16_t* ToL = SamplesL.Write() + Done;
            if (Stereo()) {
                std::int16_t* ToR = SamplesR.Write() + Done;
                for (std::size_t i = 0; i < Bytes; i += 2) {
                    *ToL++ = Table[Codes[i]];
                    *ToR++ = Table[Codes[i + 1]];
                }
            } else {
                for (std::size_t i = 0; i < Bytes; ++i)
                    *ToL++ = Table[Codes[i]];
            }
            Done += Slice;
        }
        const auto Keep = [&](LooseBlocks& Set, SampleRun& Samples) {
            const std::int32_t BlockNo =
                Set.Add([&] { return BlockNewFilled(Count, std::move(Samples)); });
            BlockTable[static_cast<std::size_t>(BlockNo)].BlockStart = Position + 1;
        };
        Keep(Left, SamplesL);
        if (Stereo())
            Keep(Right, SamplesR);
        Position += Count;
    }
}

std::int32_t WavLoad::PlaceOne(LooseBlocks& Set, std::int32_t Count, std::int32_t OrgNo,
                               std::int64_t FileOffset, std::int32_t Position) const {
    const std::int32_t FilePos = ToLong(FileOffset + 1);
    const std::int32_t BlockNo = Set.Add([&] { return BlockNew(Count, BlockSilence); });
    BlockRec& Block = BlockTable[static_cast<std::size_t>(BlockNo)];
    Block.BlockKind = BlockOrgFile;
    Block.FileNo = OrgNo;
    Block.FilePos = FilePos;
    Block.BlockStart = Position + 1;
    ++OrgFileTable[static_cast<std::size_t>(OrgNo)].OrgFileUse;
    return BlockNo;
}

void WavLoad::PlaceBlocks(LooseBlocks& Left, LooseBlocks& Right) {
    const std::int32_t OrgNo = OrgFileAdd(FileName, Channels, Bits);
    Store.OrgRoFileInUse = OrgNo;
    // The user may have been asked something since the header was read.
    if (OrgFileTable[static_cast<std::size_t>(OrgNo)].OrgFileIdentity != Identity)
        throw Failure("Another program changed the file while it was being opened.\n" + FileName);
    if (Bits != 8 && Bits != 16)
        return;
    Store.WavFmtBits = Bits;
    const std::int32_t SampleBytes = Bits / 8;
    const std::int32_t ByteStep = SampleBytes * Channels;
    const std::int32_t ChunkFrames = FramesPerChunk(FileBlockLength, Bits, Channels);
    std::int32_t Position = 0;
    do {
        ShowProgress(Position);
        const std::int32_t Count = std::min(ChunkFrames, Frames - Position);
        const std::int64_t Offset = std::int64_t{DataStart} + std::int64_t{Position} * ByteStep;
        const std::int32_t LeftNo = PlaceOne(Left, Count, OrgNo, Offset, Position);
        if (Stereo())
            OrgPairAdd(LeftNo, PlaceOne(Right, Count, OrgNo, Offset + SampleBytes, Position));
        Position += Count;
    } while (Position < Frames);
}

void WavLoad::FillStore() {
    BlockCarrBuffClass CarrierL;
    BlockCarrBuffClass CarrierR;
    AuWriteMode = 0;
    {
        LooseBlocks Left;
        LooseBlocks Right;
        if (Tag == WavTagULaw) {
            Store.WavFmtBits = 16;
            DecodeULaw(Left, Right);
        } else {
            PlaceBlocks(Left, Right);
        }
        Left.GiveTo(CarrierL);
        Right.GiveTo(CarrierR);
    }
    File.Close();
    const UndoOffScope NoUndo(Store);
    Store.WaveDataInsert(1, Stereo() ? 0 : 1, &CarrierL, &CarrierR, {}, true);
}

Ending WavLoad::Run() {
    if (!FileThere(FileName) || !TakeLength())
        return Ending::Refused;
    File = FileForReading(FileName);
    if (File.Identity() != Identity)
        throw Failure("Another program changed the file while it was being opened.\n" + FileName);
    WavHead Head(File, Length);
    Tag = Head.FormatTag();
    if (!AcceptTag())
        return Ending::RefusedQuietly;
    if (!TakeFormat(Head))
        return Ending::Refused;
    CountFrames(Head);
    try {
        FillStore();
    } catch (...) {
        // One channel may be in already, or some of its blocks.
        Store.OrgRoFileInUse = 0;
        Store.StorageReset();
        throw;
    }
    return Ending::Loaded;
}

} // namespace

void OpenSaveClass::FileLoadWave(FileMemoClass& Store, const std::string& FileName, bool& Result) {
    Result = false;
    Ending How = Ending::RefusedQuietly;
    RunCommand("Wave file load error", [&] {
        const ProgressScope Progress(BarColorGather);
        How = WavLoad(Store, FileName, FileBlockLength).Run();
    });
    if (How == Ending::Refused)
        MsgBox("Wave file loading failed");
    if (How != Ending::Loaded)
        return;
    WaveChanged = false;
    BookmarkChanged = false;
    Result = true;
}

} // namespace quoril
