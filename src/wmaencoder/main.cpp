// quoril-wma-encoder -input WAV -output WMA -a_setting KILOBITS_KILOHERTZ_CHANNELS: encodes a WAV
// file as Windows Media Audio by ffmpeg, which takes this process's place. 44 kilohertz stand for
// 44100 Hz, as this command line has always counted. Exit code: that of ffmpeg; 2 for other
// arguments, 127 without ffmpeg.
#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

constexpr int WrongArguments = 2;
constexpr int NoProgram = 127;
/// The encoder of ffmpeg takes no lower rate.
constexpr int FewestKilobits = 24;
/// The rates whose whole kilohertz a setting names.
constexpr std::array<int, 7> Rates = {8000, 11025, 16000, 22050, 32000, 44100, 48000};

struct Setting {
    int Kilobits = 0;
    int Rate = 0; // Hz
    int Channels = 0;
};

struct Job {
    std::string Input;
    std::string Output;
    std::string SettingText;
};

std::optional<Setting> SettingOf(const std::string& Text) {
    Setting Read;
    int Kilohertz = 0;
    int Length = 0;
    if (std::sscanf(Text.c_str(), "%4d_%3d_%1d%n", &Read.Kilobits, &Kilohertz, &Read.Channels,
                    &Length) != 3 ||
        static_cast<std::size_t>(Length) != Text.size())
        return std::nullopt;
    const auto* const Rate =
        std::ranges::find_if(Rates, [Kilohertz](int Each) { return Each / 1000 == Kilohertz; });
    if (Rate == Rates.end() || Read.Kilobits < 1 || Read.Channels < 1 || Read.Channels > 2)
        return std::nullopt;
    Read.Rate = *Rate;
    return Read;
}

std::optional<Job> JobOf(const std::vector<std::string>& Words) {
    Job Read;
    for (std::size_t At = 0; At + 1 < Words.size(); At += 2) {
        std::string* Place = Words[At] == "-input"       ? &Read.Input
                             : Words[At] == "-output"    ? &Read.Output
                             : Words[At] == "-a_setting" ? &Read.SettingText
                                                         : nullptr;
        if (Place == nullptr)
            return std::nullopt;
        *Place = Words[At + 1];
    }
    const bool Whole = Words.size() == 6 && !Read.Input.empty() && !Read.Output.empty() &&
                       !Read.SettingText.empty();
    return Whole ? std::optional(Read) : std::nullopt;
}

/// "file:" keeps ffmpeg from taking a name for an option or an address.
std::vector<std::string> CommandFor(const Job& What, const Setting& How) {
    return {"ffmpeg",
            "-nostdin",
            "-loglevel",
            "error",
            "-y",
            "-i",
            "file:" + What.Input,
            "-vn",
            "-c:a",
            "wmav2",
            "-b:a",
            std::to_string(std::max(How.Kilobits, FewestKilobits)) + "k",
            "-ar",
            std::to_string(How.Rate),
            "-ac",
            std::to_string(How.Channels),
            "-f",
            "asf",
            "file:" + What.Output};
}

} // namespace

int main(int Count, char** Words) {
    const auto What = JobOf(std::vector<std::string>(Words + 1, Words + Count));
    const auto How = What ? SettingOf(What->SettingText) : std::nullopt;
    if (!How) {
        std::fputs("usage: quoril-wma-encoder -input WAV -output WMA "
                   "-a_setting KILOBITS_KILOHERTZ_CHANNELS\n",
                   stderr);
        return WrongArguments;
    }
    std::vector<std::string> Command = CommandFor(*What, *How);
    std::vector<char*> Arguments;
    Arguments.reserve(Command.size() + 1);
    for (std::string& Word : Command)
        Arguments.push_back(Word.data());
    Arguments.push_back(nullptr);
    ::execvp(Arguments.front(), Arguments.data());
    std::perror("ffmpeg, which does the work, cannot be started");
    return NoProgram;
}
