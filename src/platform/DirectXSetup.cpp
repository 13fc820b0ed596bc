#include "platform/DirectXSetup.h"

#include <chrono>
#include <memory>
#include <pulse/context.h>
#include <pulse/mainloop.h>

namespace quoril {

namespace {

using std::chrono::steady_clock;

constexpr std::int32_t VersionOfAnyServer = 8;
constexpr std::chrono::milliseconds LongestWait{500};

struct LoopEnd {
    void operator()(pa_mainloop* Loop) const { pa_mainloop_free(Loop); }
};

struct ContextEnd {
    void operator()(pa_context* Context) const {
        pa_context_disconnect(Context);
        pa_context_unref(Context);
    }
};

bool Answers(pa_mainloop* Loop, pa_context* Context) {
    if (pa_context_connect(Context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0)
        return false;
    const steady_clock::time_point Until = steady_clock::now() + LongestWait;
    while (PA_CONTEXT_IS_GOOD(pa_context_get_state(Context))) {
        if (pa_context_get_state(Context) == PA_CONTEXT_READY)
            return true;
        const auto Left =
            std::chrono::duration_cast<std::chrono::microseconds>(Until - steady_clock::now());
        if (Left.count() <= 0 || pa_mainloop_prepare(Loop, static_cast<int>(Left.count())) < 0 ||
            pa_mainloop_poll(Loop) < 0 || pa_mainloop_dispatch(Loop) < 0)
            return false;
    }
    return false;
}

} // namespace

std::optional<DirectXVersion> DirectXSetupGetVersion() {
    const std::unique_ptr<pa_mainloop, LoopEnd> Loop(pa_mainloop_new());
    if (!Loop)
        return std::nullopt;
    const std::unique_ptr<pa_context, ContextEnd> Context(
        pa_context_new(pa_mainloop_get_api(Loop.get()), "Quoril Wave Editor"));
    if (!Context)
        return std::nullopt;
    if (!Answers(Loop.get(), Context.get()))
        return DirectXVersion{};
    return DirectXVersion{true, VersionOfAnyServer, 0};
}

} // namespace quoril
