#include "audiofile/FrameWriter.h"
#include "audiofile/OpenSaveClass.h"
#include "audiofile/SoundLoad.h"
#include "audiofile/WavHeader.h"
#include "base/Arithmetic.h"
#include "base/MsgBoxMod.h"
#include "base/ProgressReport.h"
#include "settings/STD1.h"
#include "storage/WoroFileBlockMod.h"

#include <fmt/format.h>

#include <algorithm>

namespace quoril {

namespace {

/// One load of one WAV file.
class WavLoad final : private SoundLoad {
  public:
    using SoundLoad::SoundLoad;
    LoadEnding Run();

  private:
    /// Each of these tells the user what is wrong before it refuses.
    [[nodiscard]] bool AcceptTag() const;
    [[nodiscard]] bool TakeFormat(WavHead& Head);

    void PlaceBlocks(LooseBlocks& Left, LooseBlocks& Right);
    std::int32_t PlaceOne(LooseBlocks& Set, std::int32_t Count, std::int32_t OrgNo,
                          std::int64_t FileOffset, std::int32_t Position) const;

    std::int32_t Tag = WavTagPcm;
    std::int32_t Bits = 16;
};

bool WavLoad::AcceptTag() const {
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
    if (!RateFits(Rate))
        return false;
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
    CheckSameFile(OrgFileTable[static_cast<std::size_t>(OrgNo)].OrgFileIdentity);
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
        const std::int64_t Offset = DataStart + std::int64_t{Position} * ByteStep;
        const std::int32_t LeftNo = PlaceOne(Left, Count, OrgNo, Offset, Position);
        if (Stereo())
            OrgPairAdd(LeftNo, PlaceOne(Right, Count, OrgNo, Offset + SampleBytes, Position));
        Position += Count;
    } while (Position < Frames);
}

LoadEnding WavLoad::Run() {
    const ProgressScope Progress(BarColorGather);
    if (!FileThere(FileName) || !TakeLength(WavShortestFile, "No wave Data found in file"))
        return LoadEnding::Refused;
    TellLowSpace(2 * Length);
    OpenFile();
    WavHead Head(File, Length);
    Tag = Head.FormatTag();
    if (!AcceptTag())
        return LoadEnding::RefusedQuietly;
    if (!TakeFormat(Head))
        return LoadEnding::Refused;
    // Half a byte for each frame of 4-bit mono is none.
    CountFrames(RoundEven(Bits / 8.0 * Channels), Head.DataSize());
    FillStore([this](LooseBlocks& Left, LooseBlocks& Right) {
        if (Tag == WavTagULaw) {
            Store.WavFmtBits = 16;
            DecodeAll(SampleCode::ULaw, Left, Right);
        } else {
            PlaceBlocks(Left, Right);
        }
    });
    return LoadEnding::Loaded;
}

} // namespace

void OpenSaveClass::FileLoadWave(FileMemoClass& Store, const std::string& FileName, bool& Result) {
    RunLoad(Result, "Wave file loading failed",
            [&] { return WavLoad(Store, FileName, FileBlockLength).Run(); });
}

} // namespace quoril
