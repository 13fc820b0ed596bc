// What a sound callback does beside copying: memory that it asks for or gives back, locks that it
// takes, files that it opens.
#pragma once

#include <cstdint>
#include <string>

namespace quoril::test {

/// While it lives, the threads of one name are watched. What the sound libraries do by themselves
/// is counted apart: they are not ours to change. One at a time.
class CallbackWatch {
  public:
    /// The name that the system shows for the thread, at most 15 letters.
    explicit CallbackWatch(const std::string& ThreadName);
    ~CallbackWatch();
    CallbackWatch(const CallbackWatch&) = delete;
    CallbackWatch& operator=(const CallbackWatch&) = delete;

    [[nodiscard]] static std::int64_t Allocations() noexcept;
    [[nodiscard]] static std::int64_t Frees() noexcept;
    [[nodiscard]] static std::int64_t Locks() noexcept;
    [[nodiscard]] static std::int64_t Opens() noexcept;
    /// The same of the sound libraries, all in one: shows that the thread is watched at all.
    [[nodiscard]] static std::int64_t OfLibraries() noexcept;
};

} // namespace quoril::test
