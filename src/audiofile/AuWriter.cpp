#include "audiofile/AuHeader.h"
#include "audiofile/OpenSaveClass.h"
#include "audiofile/SoundWrite.h"
#include "base/Arithmetic.h"
#include "base/MsgBoxMod.h"

namespace quoril {

namespace {

constexpr const char* WriteErrorTitle = "Sound Clip (.au) file write error";

[[nodiscard]] SampleCode CodeOfMode() {
    switch (AuWriteMode) {
    case AuULaw:
        return SampleCode::ULaw;
    case AuLinear8:
        return SampleCode::Bytes;
    default:
        return SampleCode::BigEndian;
    }
}

/// Fixes AuWriteMode, by a question where there is a choice and it was not made yet. What was
/// chosen for a document of the other depth is no choice for this one.
void ChooseAuWriteMode(const FileMemoClass& Store, const char* WhatYesMeans) {
    if (Store.WavFmtBits == 8) {
        AuWriteMode = AuLinear8;
        return;
    }
    if (Store.WavFmtBits != 16 || AuWriteMode == AuULaw || AuWriteMode == AuLinear16)
        return;
    const std::string Question = "Do you wish compress the 16-bit data to 8-bit uLaw?\n"
                                 "Click 'Yes' - " +
                                 std::string(WhatYesMeans) + "\nClick 'No' - retain quality";
    const MsgBoxAnswer Answer =
        MsgBox(Question, "Choose .au file compress option", MsgBoxButtons::YesNo, MsgBoxAnswer::No);
    AuWriteMode = Answer == MsgBoxAnswer::Yes ? AuULaw : AuLinear16;
}

[[nodiscard]] WriteRefusal WritePart(FileMemoClass& Store, std::int32_t FromPos, std::int32_t ToPos,
                                     std::int32_t WorkChn, std::int32_t FileBlockLength,
                                     const std::string& FileName) {
    if (WriteRefusal Told = PartWriteRefusal(Store, FromPos, ToPos, FileName); !Told.Text.empty())
        return Told;
    if (!WriteBitsKnown(Store))
        return UnknownWriteFormat();
    ChooseAuWriteMode(Store, "save space loose quality");
    const WriteRange Range = PartRange(Store, FromPos, ToPos, WorkChn);
    const SampleCode Code = CodeOfMode();
    const auto Header = [&] {
        const std::int32_t FrameBytes = Range.OutChannels * BitsInFile(Code) / 8;
        return AuHeaderMake(AuWriteMode, Store.WavFmtFreq, Range.OutChannels,
                            MulLong(FrameBytes, Range.Frames()));
    };
    WriteSoundPart(Store, Range, FileBlockLength, Code, Header, FileName);
    return {};
}

} // namespace

bool OpenSaveClass::FileWriteAuSnd(FileMemoClass& Store, const std::string& FileName) {
    ChooseAuWriteMode(Store, "save space & loose quality");
    return FileWriteAuSndPart(Store, 1, Store.WavWaveINos, 0, FileName);
}

bool OpenSaveClass::FileWriteAuSndPart(FileMemoClass& Store, std::int32_t FromPos,
                                       std::int32_t ToPos, std::int32_t WorkChn,
                                       const std::string& FileName) {
    return RunWriter(WriteErrorTitle, [&] {
        return WritePart(Store, FromPos, ToPos, WorkChn, FileBlockLength, FileName);
    });
}

} // namespace quoril
