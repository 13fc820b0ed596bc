// The one exception of the program.
#pragma once

#include <stdexcept>
#include <string>

namespace quoril {

/// A command cannot go on. The text is what the user reads, in whole words; it names the file or
/// device concerned. Thrown anywhere, caught once by the command that is running.
class Failure : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// A failure of an operating system call: the system's own text for `ErrorCode` (an errno value),
/// followed by the name of the file that it happened to, if there is one.
class SystemFailure : public Failure {
  public:
    SystemFailure(int ErrorCode, const std::string& FileName);
    [[nodiscard]] int Code() const noexcept { return CodeOfError; }

  private:
    int CodeOfError;
};

} // namespace quoril
