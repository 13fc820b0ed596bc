// MP3 files, by way of a WAV file between the document and the encoder.
#include "audiofile/DocumentFile.h"
#include "audiofile/EncoderParams.h"
#include "audiofile/EncoderRun.h"
#include "audiofile/FrameWriter.h"
#include "audiofile/OpenSaveClass.h"
#include "audiofile/WavHeader.h"
#include "base/CommandFailure.h"
#include "base/MsgBoxMod.h"
#include "platform/FileSystem.h"
#include "settings/STD1.h"

namespace quoril {

namespace {

/// What is known before the sound is written for the encoder.
struct Mp3Job {
    std::string Encoder; ///< empty when nothing is to be done
    std::int32_t BitRate = 0;
};

Mp3Job AskForJob(std::int32_t Freq, bool UsePrevPrm) {
    Mp3Job Job{GetEncoderPath(EncoderMp3), 0};
    if (Job.Encoder.empty())
        return Job;
    std::int32_t StereoMode = 0; // kept for the dialog; the command line has no place for it
    bool Ok = false;
    GetMp3Parameters(Freq, UsePrevPrm, Job.BitRate, StereoMode, Ok);
    if (!Ok)
        Job.Encoder.clear();
    return Job;
}

bool Encode(const Mp3Job& Job, const std::string& WavFile, const std::string& Mp3File) {
    const SessionFile Encoded(".mp3");
    return EncodeInto(Mp3EncodeCommand(Job.Encoder, Job.BitRate, WavFile, Encoded.Name()),
                      Encoded.Name(), Mp3File);
}

std::int32_t RateOfWav(const std::string& FileName) {
    const FileForReading File(FileName);
    return WavHead(File, File.Length()).Rate();
}

/// Writes the document or a part of it by `WriteWav`, and encodes that. True when the file is
/// there.
template <class WriteType>
bool WriteMp3(std::int32_t Freq, bool UsePrevPrm, const std::string& FileName,
              const WriteType& WriteWav) {
    bool Written = false;
    RunCommand({}, [&] {
        CheckCanBeReplaced(FileName);
        const Mp3Job Job = AskForJob(Freq, UsePrevPrm);
        if (Job.Encoder.empty())
            return;
        const SessionFile Wav(".wav");
        if (!WriteWav(Wav.Name()))
            return; // told by the writer
        if (FileExists(Wav.Name()))
            Written = Encode(Job, Wav.Name(), FileName);
        else
            MsgBox("Error writing intermediate wave file");
    });
    return Written;
}

} // namespace

void OpenSaveClass::FileLoadMp3(FileMemoClass& Store, const std::string& FileName, bool& Result) {
    Result = false;
    RunCommand({}, [&] {
        const std::string Encoder = GetEncoderPath(EncoderMp3);
        if (Encoder.empty())
            return;
        SessionFile Wav(".wav");
        const EncoderResult How = RunEncoder(Mp3DecodeCommand(Encoder, FileName, Wav.Name()));
        if (How.How == EncoderEnding::EndedByUser)
            return;
        if (!FileExists(Wav.Name())) {
            MsgBox("Failed in decoding to intermediate wave file");
            return;
        }
        FileLoadWave(Store, Wav.Name(), Result);
        // The document reads from it, and its last block takes it along.
        if (Result)
            Wav.Keep();
    });
}

bool OpenSaveClass::FileWriteMp3(FileMemoClass& Store, const std::string& FileName,
                                 bool UsePrevPrm) {
    return WriteMp3(Store.WavFmtFreq, UsePrevPrm, FileName,
                    [&](const std::string& Wav) { return FileWriteWave(Store, Wav); });
}

bool OpenSaveClass::FileWriteMp3Part(FileMemoClass& Store, std::int32_t FromPos, std::int32_t ToPos,
                                     std::int32_t WorkChn, const std::string& FileName) {
    return WriteMp3(Store.WavFmtFreq, false, FileName, [&](const std::string& Wav) {
        return FileWriteWavePart(Store, FromPos, ToPos, WorkChn, Wav);
    });
}

bool OpenSaveClass::ConvertWaveFileToMp3File(const std::string& WavFileName1,
                                             const std::string& Mp3FileName1, bool UsePrevPrm) {
    bool Written = false;
    RunCommand({}, [&] {
        if (!FileThere(WavFileName1))
            return;
        const Mp3Job Job = AskForJob(RateOfWav(WavFileName1), UsePrevPrm);
        if (Job.Encoder.empty())
            return;
        Written = Encode(Job, WavFileName1, Mp3FileName1);
        (void)FileDelete(WavFileName1);
    });
    return Written;
}

} // namespace quoril
