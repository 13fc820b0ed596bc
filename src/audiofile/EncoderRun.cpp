#include "audiofile/EncoderRun.h"

#include "audiofile/FrameWriter.h"
#include "base/Failure.h"
#include "base/ProgressReport.h"
#include "base/UserFileWriting.h"
#include "platform/ChildProcess.h"
#include "platform/FileHandle.h"
#include "platform/FileSystem.h"
#include "settings/STD1.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <vector>

namespace quoril {

namespace {

constexpr int WaitMs = 500;
/// Encoders that are as quick show no window.
constexpr int MsUntilWindow = 150;
constexpr int MostMsAtEnd = 60000;

EncoderWaitDialog* Dialog = nullptr;

/// The last line with letters in a file of an encoder's words. A carriage return begins a line
/// anew, as on a terminal.
std::string LastLineOf(const std::string& FileName) {
    constexpr std::int64_t MostBytes = 2000;
    constexpr std::size_t MostShown = 200;
    if (!FileExists(FileName))
        return {};
    const FileForReading File(FileName);
    const std::int64_t From = std::max<std::int64_t>(0, File.Length() - MostBytes);
    std::string Text(static_cast<std::size_t>(MostBytes), '\0');
    Text.resize(File.ReadSome(From, Text.data(), Text.size()));
    std::ranges::replace_if(
        Text, [](char Each) { return static_cast<unsigned char>(Each) < ' '; }, '\n');
    const std::size_t Last = Text.find_last_not_of("\n ");
    if (Last == std::string::npos)
        return {};
    const std::size_t First = Text.find_last_of('\n', Last) + 1; // 0 without one
    return Text.substr(First, std::min(Last + 1 - First, MostShown));
}

EncoderResult Finish(WorkerProcess& Encoder, const std::string& Words) {
    return {EncoderEnding::Done, Encoder.ExitCode(), LastLineOf(Words)};
}

/// True when it has ended by itself.
bool WaitForEnd(WorkerProcess& Encoder, const std::string& Name) {
    if (Encoder.EndedWithin(MsUntilWindow))
        return true;
    if (Dialog != nullptr)
        return Dialog->WaitForEncoder(Name, [&Encoder] { return Encoder.EndedWithin(0); });
    while (!Encoder.EndedWithin(WaitMs))
        ProgressFrm->BlinkLamp();
    return true;
}

/// Throws Failure unless the encoder has written a file.
void CheckEncoded(const EncoderResult& Result, const CommandLine& Command,
                  const std::string& Encoded, const std::string& FileName) {
    const bool WroteNothing = !FileExists(Encoded) || IdentityOfFile(Encoded).Bytes == 0;
    if (Result.ExitCode == 0 && !WroteNothing)
        return;
    std::string Text = Result.ExitCode != 0
                           ? fmt::format("The encoder failed (exit code {})", Result.ExitCode)
                           : "The encoder wrote nothing";
    Text += "\n" + Command.front();
    if (!Result.LastWords.empty())
        Text += "\n\n" + Result.LastWords;
    if (FileExists(FileName))
        Text += "\n\nThe file that was there before is unchanged.";
    throw Failure(Text);
}

void CopyInto(FileReplacement& Target, const std::string& From) {
    constexpr std::size_t BytesAtOnce = std::size_t{1} << 20;
    const FileForReading Source(From);
    std::vector<std::uint8_t> Bytes(BytesAtOnce);
    for (std::int64_t Offset = 0;;) {
        const std::size_t Count = Source.ReadSome(Offset, Bytes.data(), Bytes.size());
        if (Count == 0)
            return;
        Target.Write(Offset, Bytes.data(), Count);
        Offset += static_cast<std::int64_t>(Count);
    }
}

/// What was encoded takes its place, once.
class Placing {
  public:
    Placing(const CommandLine& Words, std::string EncodedFile, std::string TargetFile)
        : Command(Words), Encoded(std::move(EncodedFile)), FileName(std::move(TargetFile)) {}

    void Place(const EncoderResult& Result) {
        if (std::exchange(Placed, true))
            return;
        CheckEncoded(Result, Command, Encoded, FileName);
        const bool Written =
            WriteAudioFile(FileName, [this](FileReplacement& File) { CopyInto(File, Encoded); });
        if (!Written)
            throw SystemFailure(EACCES, FileName);
    }

  private:
    const CommandLine& Command;
    std::string Encoded;
    std::string FileName;
    bool Placed = false;
};

} // namespace

SessionFile::SessionFile(const char* Ending) {
    std::int64_t Number = SecondsSinceMidnight();
    do
        FileName = fmt::format("{}/tm{}{}", SessionDir, Number++, Ending);
    while (FileExists(FileName) || FolderExists(FileName));
}

SessionFile::~SessionFile() {
    if (!Kept)
        (void)FileDelete(FileName);
}

void SetEncoderWaitDialog(EncoderWaitDialog* Receiver) noexcept {
    Dialog = Receiver;
}

EncoderResult RunEncoder(const CommandLine& Command) {
    const SessionFile Words(".txt");
    WorkerProcess Encoder(Command, Words.Name());
    if (!WaitForEnd(Encoder, Command.front()))
        return {EncoderEnding::EndedByUser, -1, {}};
    return Finish(Encoder, Words.Name());
}

bool EncodeInto(const CommandLine& Command, const std::string& Encoded,
                const std::string& FileName) {
    const SessionFile Words(".txt");
    WorkerProcess Encoder(Command, Words.Name());
    Placing Target(Command, Encoded, FileName);
    // A process that must end waits for the encoder, as the user wants the file; not for ever.
    const UserFileWriting HalfWritten([&] {
        if (!Encoder.EndedWithin(MostMsAtEnd))
            throw Failure("The encoder does not end\n" + Command.front());
        Target.Place(Finish(Encoder, Words.Name()));
    });
    if (!WaitForEnd(Encoder, Command.front()))
        return false;
    Target.Place(Finish(Encoder, Words.Name()));
    return true;
}

} // namespace quoril
