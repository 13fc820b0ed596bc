#include "audiofile/OpenSaveClass.h"
#include "audiofile/SoundWrite.h"
#include "audiofile/WavHeader.h"

namespace quoril {

namespace {

constexpr const char* WriteErrorTitle = "Wave file write error";

[[nodiscard]] HeaderMaker HeaderOf(const FileMemoClass& Store, const WriteRange& Range) {
    return [&Store, Range] {
        const WaveFormat Format{Range.OutChannels, Store.WavFmtFreq, Store.WavFmtBits};
        const auto Header = WavHeaderMake(Format, Range.Frames());
        AuWriteMode = 0;
        return std::vector<std::uint8_t>(Header.begin(), Header.end());
    };
}

[[nodiscard]] WriteRefusal WriteWhole(FileMemoClass& Store, std::int32_t FileBlockLength,
                                      const std::string& FileName) {
    const std::int32_t Frames = Store.WavWaveINos;
    if (FileName.empty())
        return {"No file name given to write", {}};
    if (Frames == 0)
        return {"Zero size wave found", "Writing wave error"};
    if ((Store.WavFmtChannel != 1 && Store.WavFmtChannel != 2) || !WriteBitsKnown(Store))
        return UnknownWriteFormat();
    const WriteRange Range = PartRange(Store, 1, Frames, 0);
    if (!WriteSoundFile(Store, Range, FileBlockLength, PlainCode(Store.WavFmtBits),
                        HeaderOf(Store, Range), FileName))
        return {"This file " + FileName +
                    " is locked,\nmay be used by another program.\nRelease that file and try again",
                "Failed to write wave file"};
    return {};
}

[[nodiscard]] WriteRefusal WritePart(FileMemoClass& Store, std::int32_t FromPos, std::int32_t ToPos,
                                     std::int32_t WorkChn, std::int32_t FileBlockLength,
                                     const std::string& FileName) {
    if (WriteRefusal Told = PartWriteRefusal(Store, FromPos, ToPos, FileName); !Told.Text.empty())
        return Told;
    if (!WriteBitsKnown(Store))
        return UnknownWriteFormat();
    const WriteRange Range = PartRange(Store, FromPos, ToPos, WorkChn);
    WriteSoundPart(Store, Range, FileBlockLength, PlainCode(Store.WavFmtBits),
                   HeaderOf(Store, Range), FileName);
    return {};
}

} // namespace

bool OpenSaveClass::FileWriteWave(FileMemoClass& Store, const std::string& FileName) {
    return RunWriter(WriteErrorTitle, [&] { return WriteWhole(Store, FileBlockLength, FileName); });
}

bool OpenSaveClass::FileWriteWavePart(FileMemoClass& Store, std::int32_t FromPos,
                                      std::int32_t ToPos, std::int32_t WorkChn,
                                      const std::string& FileName) {
    return RunWriter(WriteErrorTitle, [&] {
        return WritePart(Store, FromPos, ToPos, WorkChn, FileBlockLength, FileName);
    });
}

} // namespace quoril
