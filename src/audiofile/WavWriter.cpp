#include "audiofile/FrameWriter.h"
#include "audiofile/OpenSaveClass.h"
#include "audiofile/SampleForms.h"
#include "audiofile/WavHeader.h"
#include "base/Arithmetic.h"
#include "base/CommandFailure.h"
#include "base/MsgBoxMod.h"
#include "base/ProgressReport.h"

#include <cerrno>
#include <cstring>

namespace quoril {

namespace {

/// What the user reads instead of a written file; an empty text means that it was written.
struct Refusal {
    std::string Text;
    std::string Title;
};

[[nodiscard]] Refusal UnknownFormat() {
    return {"Format not Known to write wave file", {}};
}

[[nodiscard]] bool BitsKnown(const FileMemoClass& Store) {
    return Store.WavFmtBits == 8 || Store.WavFmtBits == 16;
}

[[nodiscard]] FrameCoder WavCoder(std::int32_t Bits) {
    if (Bits == 16)
        return [](std::span<const std::int16_t> Left, std::span<const std::int16_t> Right,
                  std::uint8_t* Out) {
            if (Right.empty())
                std::memcpy(Out, Left.data(), Left.size_bytes());
            else
                InterleaveSamples(Left.data(), Right.data(), Left.size(), Out);
        };
    return [](std::span<const std::int16_t> Left, std::span<const std::int16_t> Right,
              std::uint8_t* Out) {
        const bool Fits = Right.empty()
                              ? BytesFromSamples(Left.data(), Left.size(), Out)
                              : InterleaveBytes(Left.data(), Right.data(), Left.size(), Out);
        if (!Fits)
            FailOverflow();
    };
}

/// False when another program holds the file, or it is protected against writing.
[[nodiscard]] bool WriteWavFile(FileMemoClass& Store, const WriteRange& Range,
                                std::int32_t FileBlockLength, const std::string& FileName) {
    return WriteAudioFile(FileName, [&](FileReplacement& File) {
        const WaveFormat Format{Range.OutChannels, Store.WavFmtFreq, Store.WavFmtBits};
        const auto Header = WavHeaderMake(Format, Range.Frames());
        AuWriteMode = 0;
        File.Write(0, Header.data(), Header.size());
        WriteFrames(Store, Range, FramesPerChunk(FileBlockLength, Format.Bits, Format.Channel),
                    Format.Channel * Format.Bits / 8, WavCoder(Format.Bits), File, WavHeaderBytes);
    });
}

[[nodiscard]] Refusal WriteWhole(FileMemoClass& Store, std::int32_t FileBlockLength,
                                 const std::string& FileName) {
    const std::int32_t Frames = Store.WavWaveINos;
    if (FileName.empty())
        return {"No file name given to write", {}};
    if (Frames == 0)
        return {"Zero size wave found", "Writing wave error"};
    if ((Store.WavFmtChannel != 1 && Store.WavFmtChannel != 2) || !BitsKnown(Store))
        return UnknownFormat();
    if (!WriteWavFile(Store, PartRange(Store, 1, Frames, 0), FileBlockLength, FileName))
        return {"This file " + FileName +
                    " is locked,\nmay be used by another program.\nRelease that file and try again",
                "Failed to write wave file"};
    return {};
}

[[nodiscard]] Refusal WritePart(FileMemoClass& Store, std::int32_t FromPos, std::int32_t ToPos,
                                std::int32_t WorkChn, std::int32_t FileBlockLength,
                                const std::string& FileName) {
    const std::int32_t Frames = Store.WavWaveINos;
    if (Frames == 0)
        return {"Zero size wave found", "Writing wave error"};
    if (FromPos < 1 || ToPos > Frames || ToPos < FromPos)
        return {"Invalid selection to save selected", {}};
    if (FileName.empty())
        return {"No file name given to write", {}};
    if (!BitsKnown(Store))
        return UnknownFormat();
    if (!WriteWavFile(Store, PartRange(Store, FromPos, ToPos, WorkChn), FileBlockLength, FileName))
        throw SystemFailure(EACCES, FileName);
    return {};
}

/// The frame of both writers. True when the file was written.
template <class WriteType>
bool RunWriter(WriteType&& Write) {
    Refusal Told;
    const bool Ended = RunCommand("Wave file write error", [&] {
        const ProgressScope Progress(BarColorWriteFile);
        Told = Write();
    });
    if (!Told.Text.empty())
        MsgBox(Told.Text, Told.Title);
    return Ended && Told.Text.empty();
}

} // namespace

bool OpenSaveClass::FileWriteWave(FileMemoClass& Store, const std::string& FileName) {
    return RunWriter([&] { return WriteWhole(Store, FileBlockLength, FileName); });
}

bool OpenSaveClass::FileWriteWavePart(FileMemoClass& Store, std::int32_t FromPos,
                                      std::int32_t ToPos, std::int32_t WorkChn,
                                      const std::string& FileName) {
    return RunWriter(
        [&] { return WritePart(Store, FromPos, ToPos, WorkChn, FileBlockLength, FileName); });
}

} // namespace quoril
