#include "audiofile/AuHeader.h"
#include "audiofile/OpenSaveClass.h"
#include "audiofile/SoundLoad.h"
#include "base/MsgBoxMod.h"
#include "base/ProgressReport.h"
#include "settings/STD1.h"

#include <algorithm>
#include <array>
#include <optional>

namespace quoril {

namespace {

/// One encoding: how its samples are coded, or with what name it is refused.
struct AuEncoding {
    std::int32_t Number;
    const char* RefusedAs;
    SampleCode Code = SampleCode::Bytes;
    std::int32_t DocumentBits = 0;
};

constexpr std::array Encodings = {
    AuEncoding{AuULaw, nullptr, SampleCode::ULaw, 16},
    AuEncoding{AuLinear8, nullptr, SampleCode::Bytes, 8},
    AuEncoding{AuLinear16, nullptr, SampleCode::BigEndian, 16},
    AuEncoding{4, "24-bit linear PCM"},
    AuEncoding{5, "32-bit linear PCM"},
    AuEncoding{6, "32-bit IEEE floating point"},
    AuEncoding{7, "64-bit IEEE floating point"},
    AuEncoding{23, "8-bit ISDN u-law compressed (CCITT)"},
};

/// One load of one Sun/NeXT file. The old document stays until every check is passed.
class AuLoad final : private SoundLoad {
  public:
    using SoundLoad::SoundLoad;
    LoadEnding Run();

  private:
    /// The row of an encoding that can be read; null when it cannot, which is told.
    [[nodiscard]] static const AuEncoding* TakeEncoding(std::int32_t Number);
};

const AuEncoding* AuLoad::TakeEncoding(std::int32_t Number) {
    const auto* const Found = std::ranges::find(Encodings, Number, &AuEncoding::Number);
    if (Found != Encodings.end() && Found->RefusedAs == nullptr)
        return Found;
    MsgBox(std::string("Could not open this format .au file\n") +
           (Found == Encodings.end() ? "" : Found->RefusedAs));
    return nullptr;
}

LoadEnding AuLoad::Run() {
    const ProgressScope Progress(BarColorGather);
    if (!FileThere(FileName) || !TakeLength(AuShortestFile, "No audio Data found in file"))
        return LoadEnding::Refused;
    TellLowSpace(2 * Length);
    OpenFile();
    const AuHead Head = AuHeadRead(File);
    if (!Head.IsSoundClip) {
        Refuse("This is not a Sound Clip (au) file");
        return LoadEnding::Refused;
    }
    DataStart = Head.DataOffset;
    Rate = Head.Rate;
    if (!RateFits(Rate))
        return LoadEnding::Refused;
    Channels = Head.Channels;
    if (Channels != 1 && Channels != 2) {
        Refuse("Channel info invalid");
        return LoadEnding::Refused;
    }
    const AuEncoding* Encoding = TakeEncoding(Head.Encoding);
    if (Encoding == nullptr)
        return LoadEnding::Refused;
    CountFrames(Channels * BitsInFile(Encoding->Code) / 8.0, Head.DataSize);
    BeginDocument(Encoding->DocumentBits);
    FillStore(
        [&](LooseBlocks& Left, LooseBlocks& Right) { DecodeAll(Encoding->Code, Left, Right); });
    return LoadEnding::Loaded;
}

} // namespace

void OpenSaveClass::FileLoadAuSnd(FileMemoClass& Store, const std::string& FileName, bool& Result) {
    RunLoad(Result, "Sound Clip (Au) file loading failed",
            [&] { return AuLoad(Store, FileName, FileBlockLength).Run(); });
}

} // namespace quoril
