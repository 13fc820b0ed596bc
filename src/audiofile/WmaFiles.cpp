// Export to WMA, by way of a WAV file between the document and the encoder.
#include "audiofile/EncoderParams.h"
#include "audiofile/EncoderRun.h"
#include "audiofile/FrameWriter.h"
#include "audiofile/OpenSaveClass.h"
#include "base/MsgBoxMod.h"
#include "platform/FileSystem.h"

namespace quoril {

namespace {

void (*TakeCommandLine)(const std::string& Shown) = nullptr;

} // namespace

void SetCommandLineRoutine(void (*Routine)(const std::string& Shown)) noexcept {
    TakeCommandLine = Routine;
}

bool OpenSaveClass::FileWriteWma(FileMemoClass& Store, const std::string& FileName) {
    const std::string Encoder = GetEncoderPath(EncoderWma);
    if (Encoder.empty())
        return false;
    std::int32_t BitRate = 0;
    bool Ok = false;
    GetWmaParameters(Store.WavFmtFreq, Store.WavFmtChannel, BitRate, Ok);
    if (!Ok)
        return false;
    if (!CanBeReplaced(FileName)) {
        MsgBox("There is a problem in deleting the existing file\n" + FileName +
               "\nPlease delete this file manually and try again");
        return false;
    }
    const SessionFile Wav(".wav");
    if (!FileWriteWave(Store, Wav.Name()))
        return false; // told by the writer
    if (!FileExists(Wav.Name())) {
        MsgBox("Error writing intermediate wave file");
        return false;
    }
    const auto CommandTo = [&](const std::string& Output) {
        return WmaEncodeCommand(Encoder, BitRate, Store.WavFmtFreq, Store.WavFmtChannel, Wav.Name(),
                                Output);
    };
    if (TakeCommandLine != nullptr)
        TakeCommandLine(CommandLineShown(CommandTo(FileName)));
    const SessionFile Encoded(".wma");
    return EncodeInto(CommandTo(Encoded.Name()), Encoded.Name(), FileName);
}

} // namespace quoril
