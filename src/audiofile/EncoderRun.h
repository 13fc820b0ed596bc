// Encoders at work: what goes into them, the wait for their end, and what becomes of their output.
#pragma once

#include "audiofile/Encoders.h"

#include <functional>
#include <string>

namespace quoril {

/// A file in the session folder that goes at the end of the scope.
class SessionFile {
  public:
    /// A name "tm" with a number and this ending, with its point, that no file has. None is made.
    explicit SessionFile(const char* Ending);
    ~SessionFile();
    SessionFile(const SessionFile&) = delete;
    SessionFile& operator=(const SessionFile&) = delete;

    [[nodiscard]] const std::string& Name() const noexcept { return FileName; }
    /// It stays from now on, for who reads from it.
    void Keep() noexcept { Kept = true; }

  private:
    std::string FileName;
    bool Kept = false;
};

/// Implemented by `EncRunFrm`, and by tests.
class EncoderWaitDialog {
  public:
    virtual ~EncoderWaitDialog() = default;
    /// Shows that an encoder works, and lets the user go on or end it. `HasEnded` is to be asked
    /// often, at least twice a second. False when the user wants its end.
    virtual bool WaitForEncoder(const std::string& Encoder,
                                const std::function<bool()>& HasEnded) = 0;
};
/// Names who waits from now on; the object must outlive its use. With null an encoder is waited
/// for whatever it does.
void SetEncoderWaitDialog(EncoderWaitDialog* Receiver) noexcept;

enum class EncoderEnding { Done, EndedByUser };
struct EncoderResult {
    EncoderEnding How = EncoderEnding::Done;
    int ExitCode = 0;
    std::string LastWords; ///< the last line that it said
};

/// Runs an encoder to its end. Throws Failure when it does not start.
[[nodiscard]] EncoderResult RunEncoder(const CommandLine& Command);

/// Runs an encoder that writes `Encoded`, a file of the session, and puts what it wrote in the
/// place of `FileName`. False when the user ended it. Throws Failure when it failed or wrote
/// nothing; in both cases the file that was there is unchanged.
[[nodiscard]] bool EncodeInto(const CommandLine& Command, const std::string& Encoded,
                              const std::string& FileName);

} // namespace quoril
