// Time, bytes and files for the benchmarks.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace quoril {
class FileMemoClass;
}

namespace quoril::bench {

/// A folder for one run in $TMPDIR (or /var/tmp), with session and settings places set;
/// removed at the end.
class BenchFolder {
  public:
    BenchFolder();
    ~BenchFolder();
    BenchFolder(const BenchFolder&) = delete;
    BenchFolder& operator=(const BenchFolder&) = delete;
    [[nodiscard]] std::string Path(const std::string& Name) const { return Root + "/" + Name; }

  private:
    std::string Root;
};

/// Seconds that `What` takes.
[[nodiscard]] double SecondsOf(const std::function<void()>& What);
/// The shortest of several runs.
[[nodiscard]] double BestSecondsOf(int Rounds, const std::function<void()>& What);
/// Bytes that this process has asked the system to read so far.
[[nodiscard]] std::int64_t BytesRead();
/// The largest resident memory of this process so far, in bytes.
[[nodiscard]] std::int64_t PeakMemory();
/// A canonical 16-bit WAV file at 44100 Hz. `Real`: with samples; otherwise one large hole.
void MakeWav(const std::string& FileName, std::int32_t Channels, std::int64_t Frames, bool Real);
/// Opens a file into `Store`. Throws when it cannot be opened.
void OpenWav(FileMemoClass& Store, const std::string& FileName);
/// Makes `WaveStore` a new document with that file opened.
void DocumentOf(const std::string& FileName);
/// Makes `WaveStore` a stereo document of 44100 Hz whose samples lie in two work files. Both are
/// second names of the file `Samples`, which holds `Frames` 16-bit samples and more.
void DocumentInWorkFiles(const std::string& Samples, std::int32_t Frames);
/// One line of the report: name, value, unit, and the limit that it is held against: at
/// most that, or with a negative limit at least its size; 0 is none.
void Report(const char* Name, double Value, const char* Unit, double Limit);

} // namespace quoril::bench
