// Whether a file of the user's is half written at the moment, for whoever is to end the process.
#pragma once

#include <functional>

namespace quoril {

/// A file that is being written, from its first byte to its last. The user wants what it is to
/// hold, and what is written so far lies on the disk, so the process must not end within the scope.
class UserFileWriting {
  public:
    /// `WriteTheRest` writes what is still missing, without letting any events in. May throw.
    explicit UserFileWriting(std::function<void()> WriteTheRest);
    ~UserFileWriting();
    UserFileWriting(const UserFileWriting&) = delete;
    UserFileWriting& operator=(const UserFileWriting&) = delete;

    [[nodiscard]] static bool IsOn() noexcept;
    /// Completes the file, if there is one, for a process that cannot go on. False when that
    /// failed.
    static bool FinishNow() noexcept;

  private:
    std::function<void()> Rest;
    UserFileWriting* Around; ///< the scope that this one stands in
};

} // namespace quoril
