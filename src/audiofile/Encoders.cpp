#include "audiofile/Encoders.h"

#include "base/MsgBoxMod.h"
#include "platform/ChildProcess.h"
#include "platform/FileSystem.h"
#include "platform/ProgramPlaces.h"
#include "platform/Text.h"
#include "settings/STD1.h"

#include <fmt/format.h>

#include <array>

namespace quoril {

namespace {

constexpr std::array<EncoderFacts, 2> AllFacts = {
    {{EncoderMp3, "Mp3", "ExeName", " Need a command line Mp3 encoder",
      "Enter (or browse) the location of the \"mp3 command line encoder\". Please see the help if "
      "needed.",
      "(Lame.exe)", "lame", ":\\Program Files\\Lame\\lame.exe", "lame"},
     {EncoderWma, "Wma", "WM8EUTILExe", " Need a command line Wma encoder",
      "Enter (or browse) the location of the \"Windows Media 8 Encoding Utility (WM8EUTIL.exe)\". "
      "Please see the help if needed.",
      "(WM8EUTIL.exe)", "quoril-wma-encoder",
      ":\\Program Files\\Windows Media Components\\Tools\\WM8EUTIL.exe", "ffmpeg"}}};

/// The letter of the drive that the system's programs lie on; here there are none.
constexpr const char* DriveLetter = "C";
constexpr std::int32_t UsualKilobits = 128;

EncChoseAppDialog* Dialog = nullptr;

/// The file of a program on $PATH; empty when it is not there.
std::string OnPath(const std::string& Program) {
    for (const std::string& File : ProgramFiles(Program))
        if (FileExists(File))
            return File;
    return {};
}

/// A name that no program takes for an option.
std::string AsArgument(const std::string& Path) {
    return Path.starts_with('-') ? "./" + Path : Path;
}

/// The path of a program that is never looked for on $PATH.
std::string AsProgram(const std::string& Path) {
    return Path.find('/') == std::string::npos ? "./" + Path : Path;
}

} // namespace

const EncoderFacts& EncoderFactsOf(std::int32_t WhichEncoder) {
    return WhichEncoder == EncoderWma ? AllFacts[1] : AllFacts[0];
}

std::string ChosenEncoder(std::int32_t WhichEncoder) {
    const EncoderFacts& Facts = EncoderFactsOf(WhichEncoder);
    // Read whole: a path may be longer than what IniGet gives.
    return Trim(ProfileGet(Facts.Section, Facts.Key, "", SettingsFileName()));
}

void ChooseEncoder(std::int32_t WhichEncoder, const std::string& Path) {
    const EncoderFacts& Facts = EncoderFactsOf(WhichEncoder);
    IniPut(Facts.Section, Facts.Key, Path);
}

std::string EncoderToPropose(std::int32_t WhichEncoder) {
    if (std::string Chosen = ChosenEncoder(WhichEncoder); !Chosen.empty())
        return Chosen;
    const EncoderFacts& Facts = EncoderFactsOf(WhichEncoder);
    if (std::string Beside = FolderOfProgram() + "/" + Facts.Program; FileExists(Beside))
        return Beside;
    const std::string Found = OnPath(Facts.Program);
    return Found.empty() ? std::string(DriveLetter) + Facts.OtherwiseIn : Found;
}

std::string EncoderMissing(std::int32_t WhichEncoder) {
    const EncoderFacts& Facts = EncoderFactsOf(WhichEncoder);
    if (!OnPath(Facts.Needed).empty())
        return {};
    return fmt::format(
        "{} is not installed. Install the package \"{}\", or choose another encoder.", Facts.Needed,
        Facts.Needed);
}

void SetEncChoseAppDialog(EncChoseAppDialog* Receiver) noexcept {
    Dialog = Receiver;
}

std::string GetEncoderPath(std::int32_t WhichEncoder) {
    std::string Path = ChosenEncoder(WhichEncoder);
    if (FileThere(Path))
        return Path;
    if (Dialog != nullptr)
        Dialog->ShowEncChoseApp(WhichEncoder);
    Path = ChosenEncoder(WhichEncoder);
    if (FileThere(Path))
        return Path;
    if (!Path.empty())
        MsgBox("File not found\n" + Path);
    return {};
}

CommandLine Mp3DecodeCommand(const std::string& Encoder, const std::string& Mp3File,
                             const std::string& WavFile) {
    return {AsProgram(Encoder), "--decode", AsArgument(Mp3File), AsArgument(WavFile)};
}

CommandLine Mp3EncodeCommand(const std::string& Encoder, std::int32_t BitRate,
                             const std::string& WavFile, const std::string& Mp3File) {
    return {AsProgram(Encoder), "-b", std::to_string(BitRate == 0 ? UsualKilobits : BitRate),
            AsArgument(WavFile), AsArgument(Mp3File)};
}

CommandLine WmaEncodeCommand(const std::string& Encoder, std::int32_t BitRate, std::int32_t Freq,
                             std::int32_t Channels, const std::string& WavFile,
                             const std::string& WmaFile) {
    const std::int32_t Kilobits = BitRate == 0 ? UsualKilobits : BitRate / 1000;
    return {AsProgram(Encoder),
            "-input",
            AsArgument(WavFile),
            "-output",
            AsArgument(WmaFile),
            "-a_setting",
            fmt::format("{}_{}_{}", Kilobits, Freq / 1000, Channels)};
}

std::string CommandLineShown(const CommandLine& Words) {
    std::string Shown;
    for (const std::string& Word : Words) {
        const bool IsPath = Word.find('/') != std::string::npos;
        Shown += (Shown.empty() ? "" : " ") + (IsPath ? '"' + Word + '"' : Word);
    }
    return Shown;
}

} // namespace quoril
