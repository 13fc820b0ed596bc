// An open descriptor of the system, closed at the end of its scope.
#pragma once

#include <cerrno>
#include <cstddef>
#include <unistd.h>
#include <utility>

namespace quoril {

class Descriptor {
  public:
    Descriptor() noexcept = default;
    explicit Descriptor(int Opened) noexcept : Handle(Opened) {}
    ~Descriptor() { Reset(); }
    Descriptor(Descriptor&& Other) noexcept : Handle(std::exchange(Other.Handle, -1)) {}
    Descriptor& operator=(Descriptor&& Other) noexcept {
        if (this != &Other) {
            Reset();
            Handle = std::exchange(Other.Handle, -1);
        }
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    [[nodiscard]] bool IsOpen() const noexcept { return Handle >= 0; }
    [[nodiscard]] int Get() const noexcept { return Handle; }

    void Reset() noexcept {
        if (Handle >= 0)
            ::close(std::exchange(Handle, -1));
    }
    /// Closes and tells whether the system kept all that was written; errno says why it did not.
    [[nodiscard]] bool Close() noexcept {
        return Handle < 0 || ::close(std::exchange(Handle, -1)) == 0;
    }

  private:
    int Handle = -1;
};

/// Reads once, again when a signal came between. The count of bytes, 0 at the end, -1 with errno.
[[nodiscard]] inline ssize_t ReadOnce(const Descriptor& From, void* Target,
                                      std::size_t Bytes) noexcept {
    ssize_t Count;
    do
        Count = ::read(From.Get(), Target, Bytes);
    while (Count < 0 && errno == EINTR);
    return Count;
}

/// Writes all bytes; false with errno when that is not possible.
[[nodiscard]] inline bool WriteAll(const Descriptor& To, const char* Source,
                                   std::size_t Bytes) noexcept {
    while (Bytes > 0) {
        const ssize_t Count = ::write(To.Get(), Source, Bytes);
        if (Count < 0 && errno == EINTR)
            continue;
        if (Count < 0)
            return false;
        Source += Count;
        Bytes -= static_cast<std::size_t>(Count);
    }
    return true;
}

} // namespace quoril
