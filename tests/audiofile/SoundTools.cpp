#include "SoundTools.h"

#include "platform/ChildProcess.h"
#include "support/TestSession.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace quoril::test {

void RunTool(const std::vector<std::string>& Arguments) {
    const ChildResult How = RunAndWait(Arguments);
    ASSERT_TRUE(How.Started) << Arguments[0]
                             << " is needed by this test and cannot be started: " << How.StartError;
    ASSERT_EQ(How.ExitCode, 0) << Arguments[0]
                               << " failed: " << ::testing::PrintToString(Arguments);
}

Samples SamplesOf(const Bytes& Raw, std::int32_t Bits) {
    Samples All;
    if (Bits == 8)
        for (const std::uint8_t Byte : Raw)
            All.push_back(static_cast<std::int16_t>(Byte - 128));
    else
        for (std::size_t i = 0; i + 1 < Raw.size(); i += 2)
            All.push_back(static_cast<std::int16_t>(Raw[i] | (Raw[i + 1] << 8)));
    return All;
}

Samples ReadBySox(const std::string& Path, std::int32_t Bits, const std::string& Raw) {
    RunTool({"sox", "-V1", "-D", Path, "-t", "raw", "-L", "-e",
             Bits == 8 ? "unsigned-integer" : "signed-integer", "-b", std::to_string(Bits), Raw});
    return SamplesOf(TestSession::ReadFile(Raw), Bits);
}

Samples ReadByFfmpeg(const std::string& Path, std::int32_t Bits, const std::string& Raw) {
    RunTool({"ffmpeg", "-v", "error", "-y", "-i", Path, "-f", Bits == 8 ? "u8" : "s16le", Raw});
    return SamplesOf(TestSession::ReadFile(Raw), Bits);
}

void MakeBySox(const std::string& Path, std::int32_t Channels, std::int32_t Rate,
               const std::vector<std::string>& Form) {
    std::vector<std::string> Line = {
        "sox", "-V1", "-R", "-D", "-n", "-r", std::to_string(Rate), "-c", std::to_string(Channels)};
    Line.insert(Line.end(), Form.begin(), Form.end());
    Line.insert(Line.end(), {Path, "synth", "0.311", "whitenoise"});
    if (Channels == 2)
        Line.insert(Line.end(), {"sine", "137"});
    RunTool(Line);
}

void MakeByFfmpeg(const std::string& Path, std::int32_t Channels, std::int32_t Rate,
                  const std::string& Codec, const std::vector<std::string>& More) {
    const std::string Source = fmt::format(
        "aevalsrc={}:s={}:d=0.311",
        Channels == 2 ? "1.6*random(0)-0.8|0.9*sin(137*2*PI*t)" : "1.6*random(0)-0.8", Rate);
    std::vector<std::string> Line = {"ffmpeg", "-v", "error", "-y",   "-f",
                                     "lavfi",  "-i", Source,  "-c:a", Codec};
    Line.insert(Line.end(), More.begin(), More.end());
    Line.push_back(Path);
    RunTool(Line);
}

} // namespace quoril::test
