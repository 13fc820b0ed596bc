#include "audiofile/OpenSaveClass.h"
#include "audiofile/RawFormat.h"
#include "audiofile/SoundLoad.h"
#include "base/ProgressReport.h"
#include "settings/STD1.h"

namespace quoril {

namespace {

constexpr std::int64_t RawShortestFile = 8;

/// One load of one file that has no header.
class RawLoad final : private SoundLoad {
  public:
    using SoundLoad::SoundLoad;
    LoadEnding Run();
};

LoadEnding RawLoad::Run() {
    if (!FileThere(FileName) || !TakeLength(RawShortestFile, "File size is too small to load"))
        return LoadEnding::Refused;
    RawChoice Choice;
    if (!AskRawFormat(Choice))
        return LoadEnding::RefusedQuietly;
    const ProgressScope Progress(BarColorGather);
    OpenFile();
    TellLowSpace(Length);
    Channels = Choice.Channels();
    Rate = Choice.Freq();
    DataStart = Choice.DataOffsetCmb;
    const std::int32_t Bits = Choice.Bits();
    TakeFrames(AvailableFrames(Channels * Bits / 8.0));
    BeginDocument(Bits);
    FillStore(
        [&](LooseBlocks& Left, LooseBlocks& Right) { DecodeAll(PlainCode(Bits), Left, Right); });
    return LoadEnding::Loaded;
}

} // namespace

void OpenSaveClass::FileLoadRaw(FileMemoClass& Store, const std::string& FileName, bool& Result) {
    RunLoad(Result, "Raw file loading failed",
            [&] { return RawLoad(Store, FileName, FileBlockLength).Run(); });
}

} // namespace quoril
