#include "audiofile/SoundWrite.h"

#include "base/CommandFailure.h"
#include "base/Failure.h"
#include "base/MsgBoxMod.h"
#include "base/ProgressReport.h"

#include <cerrno>

namespace quoril {

bool WriteBitsKnown(const FileMemoClass& Store) {
    return Store.WavFmtBits == 8 || Store.WavFmtBits == 16;
}

WriteRefusal UnknownWriteFormat() {
    return {"Format not Known to write wave file", {}};
}

WriteRefusal PartWriteRefusal(const FileMemoClass& Store, std::int32_t FromPos, std::int32_t ToPos,
                              const std::string& FileName) {
    const std::int32_t Frames = Store.WavWaveINos;
    if (Frames == 0)
        return {"Zero size wave found", "Writing wave error"};
    if (FromPos < 1 || ToPos > Frames || ToPos < FromPos)
        return {"Invalid selection to save selected", {}};
    if (FileName.empty())
        return {"No file name given to write", {}};
    return {};
}

bool WriteSoundFile(FileMemoClass& Store, const WriteRange& Range, std::int32_t FileBlockLength,
                    SampleCode Code, const HeaderMaker& Header, const std::string& FileName) {
    return WriteAudioFile(FileName, [&](FileReplacement& File) {
        const std::int32_t Bits = BitsInFile(Code);
        const std::vector<std::uint8_t> Head = Header();
        File.Write(0, Head.data(), Head.size());
        WriteFrames(Store, Range, FramesPerChunk(FileBlockLength, Bits, Range.OutChannels),
                    Range.OutChannels * Bits / 8, FrameCoderFor(Code), File,
                    static_cast<std::int64_t>(Head.size()));
    });
}

void WriteSoundPart(FileMemoClass& Store, const WriteRange& Range, std::int32_t FileBlockLength,
                    SampleCode Code, const HeaderMaker& Header, const std::string& FileName) {
    if (!WriteSoundFile(Store, Range, FileBlockLength, Code, Header, FileName))
        throw SystemFailure(EACCES, FileName);
}

bool RunWriter(const char* Title, const std::function<WriteRefusal()>& Write) {
    WriteRefusal Told;
    const bool Ended = RunCommand(Title, [&] {
        const ProgressScope Progress(BarColorWriteFile);
        Told = Write();
    });
    if (!Told.Text.empty())
        MsgBox(Told.Text, Told.Title);
    return Ended && Told.Text.empty();
}

} // namespace quoril
