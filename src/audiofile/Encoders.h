// The encoders that the user has: programs that turn WAV files into other formats and back.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quoril {

enum Encoders : std::int32_t { EncoderMp3 = 1, EncoderWma = 2 };

/// What is told and kept of one encoder.
struct EncoderFacts {
    std::int32_t WhichEncoder;
    const char* Section; ///< of the settings
    const char* Key;
    const char* Caption; ///< of `EncChoseAppFrm`
    const char* Remark;  ///< `RemLbl`
    const char* BrowsedName;
    const char* Program;     ///< what is proposed, where it is found
    const char* OtherwiseIn; ///< what is proposed otherwise, behind a drive's letter
    const char* Needed;      ///< the program that does the work; its package has the same name
};
[[nodiscard]] const EncoderFacts& EncoderFactsOf(std::int32_t WhichEncoder);

/// The path that was chosen, as it stands in the settings; empty when none was.
[[nodiscard]] std::string ChosenEncoder(std::int32_t WhichEncoder);
void ChooseEncoder(std::int32_t WhichEncoder, const std::string& Path);
/// What `EncChoseAppFrm` begins with: the path that was chosen, or else the encoder found on $PATH
/// or beside the program, or else a usual place of it.
[[nodiscard]] std::string EncoderToPropose(std::int32_t WhichEncoder);
/// What the user is to install; empty when everything is there.
[[nodiscard]] std::string EncoderMissing(std::int32_t WhichEncoder);

/// Implemented by `EncChoseAppFrm`, and by tests: lets the user choose, by ChooseEncoder.
class EncChoseAppDialog {
  public:
    virtual ~EncChoseAppDialog() = default;
    virtual void ShowEncChoseApp(std::int32_t WhichEncoder) = 0;
};
/// Names who asks from now on; the object must outlive its use. With null every dialog counts as
/// cancelled.
void SetEncChoseAppDialog(EncChoseAppDialog* Receiver) noexcept;

/// The path of an encoder that is there, for which the user is asked when none is known. Empty when
/// there is none: the user was told, or cancelled.
[[nodiscard]] std::string GetEncoderPath(std::int32_t WhichEncoder);

// ---- Command lines, as lists of arguments

using CommandLine = std::vector<std::string>;
[[nodiscard]] CommandLine Mp3DecodeCommand(const std::string& Encoder, const std::string& Mp3File,
                                           const std::string& WavFile);
/// `BitRate` in kilobits per second; 0 becomes 128.
[[nodiscard]] CommandLine Mp3EncodeCommand(const std::string& Encoder, std::int32_t BitRate,
                                           const std::string& WavFile, const std::string& Mp3File);
/// `BitRate` in bits per second; 0 becomes 128 kilobits. `Freq` in Hz.
[[nodiscard]] CommandLine WmaEncodeCommand(const std::string& Encoder, std::int32_t BitRate,
                                           std::int32_t Freq, std::int32_t Channels,
                                           const std::string& WavFile, const std::string& WmaFile);
/// A command line as text, with quotation marks around the paths among its words.
[[nodiscard]] std::string CommandLineShown(const CommandLine& Words);

} // namespace quoril
