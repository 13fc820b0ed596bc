#include "audiofile/FrameWriter.h"

#include "base/Failure.h"
#include "base/ProgressReport.h"
#include "base/UserFileWriting.h"
#include "platform/FileSystem.h"
#include "settings/STD1.h"
#include "storage/PairReader.h"
#include "storage/WoroFileBlockMod.h"

#include <algorithm>
#include <cerrno>
#include <exception>
#include <vector>

namespace quoril {

namespace {

/// Frames that are written at a time. They are read where they lie: no block comes into memory for
/// the sake of saving, and a disk that is full for work files does not keep the user from it.
constexpr std::int32_t SliceFrames = 65536;

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

void (*FileReleased)() = nullptr;

/// Whether an original file is the file of this identity, whatever its own name is: a link, or a
/// path written differently.
bool IsTheFile(const OrgFileRec& File, const FileIdentity& Target) {
    return !File.OrgFileName.empty() && File.OrgFileIdentity.Device == Target.Device &&
           File.OrgFileIdentity.Inode == Target.Inode;
}

/// Whether somebody else holds the file. The document's own lock is no reason to wait, and stays:
/// a save that is refused must not let others take the samples away.
bool IsHeldByOthers(const std::string& FileName) {
    const OrgFileRec& Open = OrgFileTable.at(static_cast<std::size_t>(OrgFileOpenNo));
    return IsTheFile(Open, IdentityOfFile(FileName)) ? OrgFileOpenIsHeldByOthers()
                                                     : IsHeldLocked(FileName);
}

/// Brings every sample that the document reads from this file out of it, so that the file may get
/// other contents. Throws when they cannot be held elsewhere: then it must not be touched.
void BlocksLeaveFile(const std::string& FileName) {
    OrgFileReleaseByName(FileName);
    if (FileThere(FileName)) {
        // Also a file that no block reads any more may still be open, and locked by that.
        const FileIdentity Target = IdentityOfFile(FileName);
        for (std::size_t OrgNo = 1; OrgNo < OrgFileTable.size(); ++OrgNo)
            if (IsTheFile(OrgFileTable[OrgNo], Target))
                OrgFileRelease(static_cast<std::int32_t>(OrgNo));
    }
    if (FileReleased != nullptr)
        FileReleased();
}

/// The writing of a range, chunk by chunk.
class FrameWriting {
  public:
    FrameWriting(FileMemoClass& Store, const WriteRange& Wanted, std::int32_t FramesOfChunk,
                 std::int32_t BytesOfFrame, const FrameCoder& HowCoded, FileReplacement& Target,
                 std::int64_t FirstByteOfTarget)
        : Reader(Wanted.StoreChn == 2 ? nullptr : &Store.BlocksL(),
                 Wanted.StoreChn == 1 ? nullptr : &Store.BlocksR()),
          Range(Wanted), ChunkFrames(FramesOfChunk), FrameBytes(BytesOfFrame), Coder(HowCoded),
          File(Target), FirstByte(FirstByteOfTarget),
          Bytes(static_cast<std::size_t>(std::min(SliceFrames, Total)) *
                static_cast<std::size_t>(FrameBytes)) {}

    void Run() {
        const UserFileWriting HalfWritten([this] { FinishOrGiveUp(); });
        while (Position < Total) {
            // Events come in here, and with them what would end the process.
            ProgressFrm->SetCurrentProgress(static_cast<float>(Position) /
                                            static_cast<float>(Total));
            WriteChunk();
        }
        Finish();
    }

  private:
    void Finish() {
        while (Position < Total)
            WriteChunk();
        if (File.IsInPlace())
            return;
        BlocksLeaveFile(File.Name());
        File.PutInPlace();
    }
    void FinishOrGiveUp() {
        try {
            Finish();
        } catch (...) {
            File.GiveUp();
            throw;
        }
    }
    void WriteChunk() {
        const std::int32_t ChunkEnd = Position + std::min(ChunkFrames, Total - Position);
        while (Position < ChunkEnd)
            WriteSlice(std::min(SliceFrames, ChunkEnd - Position));
    }
    void WriteSlice(std::int32_t Count) {
        for (std::int32_t Done = 0; Done < Count;) {
            const std::int32_t Run = Reader.Read(Range.FromPos + Position + Done, Count - Done);
            const bool RightAlone = Range.StoreChn == 2;
            Coder(RightAlone ? Reader.Right() : Reader.Left(),
                  RightAlone ? std::span<const std::int16_t>() : Reader.Right(),
                  Bytes.data() + std::ptrdiff_t{Done} * FrameBytes);
            Done += Run;
        }
        File.Write(FirstByte + std::int64_t{Position} * FrameBytes, Bytes.data(),
                   static_cast<std::size_t>(Count) * static_cast<std::size_t>(FrameBytes));
        Position += Count;
    }

    PairReader Reader;
    const WriteRange& Range;
    const std::int32_t Total = Range.Frames();
    const std::int32_t ChunkFrames;
    const std::int32_t FrameBytes;
    const FrameCoder& Coder;
    FileReplacement& File;
    const std::int64_t FirstByte;
    std::vector<std::uint8_t> Bytes; ///< of one slice
    std::int32_t Position = 0;       ///< frames that are in the file
};

} // namespace

void WriteFrames(FileMemoClass& Store, const WriteRange& Range, std::int32_t ChunkFrames,
                 std::int32_t FrameBytes, const FrameCoder& Coder, FileReplacement& File,
                 std::int64_t FirstByte) {
    FrameWriting(Store, Range, ChunkFrames, FrameBytes, Coder, File, FirstByte).Run();
}

bool CanBeReplaced(const std::string& FileName) {
    return !FileThere(FileName) || !(IsWriteProtected(FileName) || IsHeldByOthers(FileName));
}

void CheckCanBeReplaced(const std::string& FileName) {
    if (!CanBeReplaced(FileName))
        throw SystemFailure(EACCES, FileName);
}

bool WriteAudioFile(const std::string& FileName,
                    const std::function<void(FileReplacement&)>& Write) {
    if (!CanBeReplaced(FileName))
        return false;
    if (!FileThere(FileName))
        BlocksLeaveFile(FileName); // a file that is gone; what is still to be had of it
    ReplaceFile(FileName, [&Write](FileReplacement& File) {
        Write(File);
        if (!File.IsInPlace())
            BlocksLeaveFile(File.Name());
    });
    return true;
}

void SetFileReleasedRoutine(void (*Routine)()) noexcept {
    FileReleased = Routine;
}

} // namespace quoril
