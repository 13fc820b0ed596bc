#include "audiofile/FrameWriter.h"

#include "base/Failure.h"
#include "base/ProgressReport.h"
#include "base/UserFileWriting.h"
#include "platform/FileSystem.h"
#include "settings/STD1.h"
#include "storage/WoroFileBlockMod.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <system_error>
#include <vector>

namespace quoril {

namespace {

/// Frames that are converted at a time: few enough for the processor's cache, and so a file of any
/// length needs no more memory than its blocks do.
constexpr std::int32_t SliceFrames = 65536;

/// The document's samples in slices.
class SliceReader {
  public:
    explicit SliceReader(FileMemoClass& Document) : Store(Document) {}

    void Read(std::int32_t FromPos, std::int32_t ToPos, std::int32_t StoreChn) {
        if (!LeavingMemory && Collected(FromPos, ToPos, StoreChn))
            return;
        LeavingMemory = true;
        Store.QuickBuffGet(FromPos, ToPos - FromPos + 1, StoreChn, Left, Right);
    }

    [[nodiscard]] std::span<const std::int16_t> Samples(bool OfRight, std::int32_t Count) const {
        const SampleArray& Array = OfRight ? Right : Left;
        return std::span(Array).subspan(1, static_cast<std::size_t>(Count));
    }

  private:
    /// Collecting brings blocks into memory, and that fails when others cannot be pushed out: a
    /// full disk for work files must not keep the user from saving elsewhere. What is wrong with
    /// the samples themselves comes again, and is told, when they are read without moving blocks.
    bool Collected(std::int32_t FromPos, std::int32_t ToPos, std::int32_t StoreChn) {
        try {
            Store.WaveCollectBuff(FromPos, ToPos, StoreChn, Left, Right);
            return true;
        } catch (const std::exception&) {
            return false;
        }
    }

    FileMemoClass& Store;
    bool LeavingMemory = false;
    SampleArray Left;
    SampleArray Right;
};

} // namespace

std::int32_t FramesPerChunk(std::int32_t FileBlockLength, std::int32_t Bits,
                            std::int32_t Channels) noexcept {
    const std::int32_t Samples = Bits == 8 ? 2 * FileBlockLength : FileBlockLength;
    return Samples / Channels;
}

WriteRange PartRange(const FileMemoClass& Store, std::int32_t FromPos, std::int32_t ToPos,
                     std::int32_t WorkChn) noexcept {
    const bool Stereo = Store.WavFmtChannel == 2;
    WriteRange Range{.FromPos = FromPos, .ToPos = ToPos, .OutChannels = 1, .StoreChn = 1};
    if (Stereo && WorkChn == 0) {
        Range.OutChannels = 2;
        Range.StoreChn = 0;
    } else if (Stereo && WorkChn == 2) {
        Range.StoreChn = 2;
    }
    return Range;
}

namespace {

/// The writing of a range, chunk by chunk.
class FrameWriting {
  public:
    FrameWriting(FileMemoClass& Store, const WriteRange& Wanted, std::int32_t FramesOfChunk,
                 std::int32_t BytesOfFrame, const FrameCoder& HowCoded, FileForWriting& Target,
                 std::int64_t FirstByteOfTarget)
        : Reader(Store), Range(Wanted), ChunkFrames(FramesOfChunk), FrameBytes(BytesOfFrame),
          Coder(HowCoded), File(Target), FirstByte(FirstByteOfTarget),
          Bytes(static_cast<std::size_t>(std::min(SliceFrames, Total)) *
                static_cast<std::size_t>(FrameBytes)) {}

    void Run() {
        const UserFileWriting HalfWritten([this] { WriteTheRest(); });
        while (Position < Total) {
            // Events come in here, and with them what would end the process.
            ProgressFrm->SetCurrentProgress(static_cast<float>(Position) /
                                            static_cast<float>(Total));
            WriteChunk();
        }
    }

  private:
    void WriteTheRest() {
        while (Position < Total)
            WriteChunk();
    }
    void WriteChunk() {
        const std::int32_t ChunkEnd = Position + std::min(ChunkFrames, Total - Position);
        while (Position < ChunkEnd)
            WriteSlice(std::min(SliceFrames, ChunkEnd - Position));
    }
    void WriteSlice(std::int32_t Count) {
        const std::int32_t First = Range.FromPos + Position;
        Reader.Read(First, First + (Count - 1), Range.StoreChn);
        const bool Both = Range.StoreChn == 0;
        Coder(Reader.Samples(Range.StoreChn == 2, Count),
              Both ? Reader.Samples(true, Count) : std::span<const std::int16_t>(), Bytes.data());
        File.Write(FirstByte + std::int64_t{Position} * FrameBytes, Bytes.data(),
                   static_cast<std::size_t>(Count) * static_cast<std::size_t>(FrameBytes));
        Position += Count;
    }

    SliceReader Reader;
    const WriteRange& Range;
    const std::int32_t Total = Range.Frames();
    const std::int32_t ChunkFrames;
    const std::int32_t FrameBytes;
    const FrameCoder& Coder;
    FileForWriting& File;
    const std::int64_t FirstByte;
    std::vector<std::uint8_t> Bytes; ///< of one slice
    std::int32_t Position = 0;       ///< frames that are in the file
};

} // namespace

void WriteFrames(FileMemoClass& Store, const WriteRange& Range, std::int32_t ChunkFrames,
                 std::int32_t FrameBytes, const FrameCoder& Coder, FileForWriting& File,
                 std::int64_t FirstByte) {
    FrameWriting(Store, Range, ChunkFrames, FrameBytes, Coder, File, FirstByte).Run();
}

namespace {

void (*FileReleased)() = nullptr;

void BlocksLeaveFile(const std::string& FileName) {
    std::error_code Ignored; // what cannot be looked at cannot be written either, and is told then
    const auto Kind = std::filesystem::status(FileName, Ignored).type();
    if (Kind == std::filesystem::file_type::block ||
        Kind == std::filesystem::file_type::character || Kind == std::filesystem::file_type::fifo ||
        Kind == std::filesystem::file_type::socket)
        throw Failure("This is not a plain file\n" + FileName);
    OrgFileReleaseByName(FileName);
    if (!FileThere(FileName))
        return;
    // The same file under another name: a link, or a path written differently. Also a file that no
    // block reads any more may still be open, and locked by that.
    const FileIdentity Target = IdentityOfFile(FileName);
    for (std::size_t OrgNo = 1; OrgNo < OrgFileTable.size(); ++OrgNo) {
        const OrgFileRec& File = OrgFileTable[OrgNo];
        if (!File.OrgFileName.empty() && File.OrgFileIdentity.Device == Target.Device &&
            File.OrgFileIdentity.Inode == Target.Inode)
            OrgFileRelease(static_cast<std::int32_t>(OrgNo));
    }
}

} // namespace

void ReleaseFileToWrite(const std::string& FileName) {
    BlocksLeaveFile(FileName);
    if (FileReleased != nullptr)
        FileReleased();
}

bool DeleteFileToWrite(const std::string& FileName) noexcept {
    return !IsWriteProtected(FileName) && FileDelete(FileName);
}

void SetFileReleasedRoutine(void (*Routine)()) noexcept {
    FileReleased = Routine;
}

} // namespace quoril
