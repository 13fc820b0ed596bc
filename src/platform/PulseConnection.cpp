#include "platform/PulseConnection.h"

#include <pulse/context.h>
#include <pulse/mainloop.h>

namespace quoril {

using std::chrono::steady_clock;

void PulseConnection::LoopEnd::operator()(pa_mainloop* Ended) const {
    pa_mainloop_free(Ended);
}

void PulseConnection::ContextEnd::operator()(pa_context* Ended) const {
    pa_context_disconnect(Ended);
    pa_context_unref(Ended);
}

PulseConnection::PulseConnection() : EventLoop(pa_mainloop_new()) {
    if (EventLoop)
        Server.reset(pa_context_new(pa_mainloop_get_api(Loop()), "Quoril Wave Editor"));
}

PulseConnection::~PulseConnection() = default;

bool PulseConnection::IsGood() const noexcept {
    return Server && PA_CONTEXT_IS_GOOD(pa_context_get_state(Context()));
}

bool PulseConnection::Connect(std::chrono::milliseconds Limit) {
    if (!Server || pa_context_connect(Context(), nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0)
        return false;
    return WaitUntil([this] { return pa_context_get_state(Context()) == PA_CONTEXT_READY; }, Limit);
}

bool PulseConnection::WaitUntil(const std::function<bool()>& Holds,
                                std::chrono::milliseconds Limit) {
    const steady_clock::time_point Until = steady_clock::now() + Limit;
    while (!Holds()) {
        const auto Left =
            std::chrono::duration_cast<std::chrono::microseconds>(Until - steady_clock::now());
        if (!IsGood() || Left.count() <= 0 ||
            pa_mainloop_prepare(Loop(), static_cast<int>(Left.count())) < 0 ||
            pa_mainloop_poll(Loop()) < 0 || pa_mainloop_dispatch(Loop()) < 0)
            return false;
    }
    return true;
}

} // namespace quoril
