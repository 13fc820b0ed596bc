#include "audiofile/OpenSaveClass.h"
#include "audiofile/SoundWrite.h"

namespace quoril {

bool OpenSaveClass::FileWriteRaw(FileMemoClass& Store, const std::string& FileName) {
    return FileWriteRawPart(Store, 1, Store.WavWaveINos, 0, FileName);
}

bool OpenSaveClass::FileWriteRawPart(FileMemoClass& Store, std::int32_t FromPos, std::int32_t ToPos,
                                     std::int32_t WorkChn, const std::string& FileName) {
    return RunWriter("Wave file write error", [&] {
        WriteRefusal Told = PartWriteRefusal(Store, FromPos, ToPos, FileName);
        if (Told.Text.empty())
            WriteSoundPart(
                Store, PartRange(Store, FromPos, ToPos, WorkChn), FileBlockLength,
                PlainCode(Store.WavFmtBits), [] { return std::vector<std::uint8_t>(); }, FileName);
        return Told;
    });
}

} // namespace quoril
