#include "platform/desktop/wayland/pipewire/PipeWireLoop.h"

#include <mutex>

namespace mirrolet::platform::desktop::wayland {

namespace {

pw_thread_loop* makeLoop() {
    static std::once_flag once;
    std::call_once(once, [] { pw_init(nullptr, nullptr); });
    return pw_thread_loop_new("mirrolet.pw", nullptr);
}

} // namespace

PipeWireLoop::PipeWireLoop() : loop(makeLoop()) {}

bool PipeWireLoop::start() {
    return loop && pw_thread_loop_start(loop.get()) == 0;
}

void PipeWireLoop::stop() {
    if (loop)
        pw_thread_loop_stop(loop.get());
}

} // namespace mirrolet::platform::desktop::wayland
