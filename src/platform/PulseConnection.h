// A connection to the sound server of the desktop, for one thread at a time.
#pragma once

#include <chrono>
#include <functional>
#include <memory>

struct pa_context;
struct pa_mainloop;

namespace quoril {

/// Nothing comes to pass by itself: the server is heard only within Connect and WaitUntil, or while
/// the owner lets the loop run. Starts no server.
class PulseConnection {
  public:
    PulseConnection();
    ~PulseConnection();
    PulseConnection(const PulseConnection&) = delete;
    PulseConnection& operator=(const PulseConnection&) = delete;

    /// False when there is no way to a server at all: the connection cannot even be tried.
    [[nodiscard]] bool CanBeTried() const noexcept { return Server != nullptr; }
    /// True as soon as a server answers; false when none does within the limit.
    [[nodiscard]] bool Connect(std::chrono::milliseconds Limit);
    /// Hears the server until `Holds`. False at the limit, and when the server is gone.
    [[nodiscard]] bool WaitUntil(const std::function<bool()>& Holds,
                                 std::chrono::milliseconds Limit);
    /// The server has not gone away.
    [[nodiscard]] bool IsGood() const noexcept;

    [[nodiscard]] pa_mainloop* Loop() const noexcept { return EventLoop.get(); }
    [[nodiscard]] pa_context* Context() const noexcept { return Server.get(); }

  private:
    struct LoopEnd {
        void operator()(pa_mainloop* Ended) const;
    };
    struct ContextEnd {
        void operator()(pa_context* Ended) const;
    };
    std::unique_ptr<pa_mainloop, LoopEnd> EventLoop;
    std::unique_ptr<pa_context, ContextEnd> Server;
};

} // namespace quoril
