#pragma once

#include "platform/foundation/Mutex.h"

#include <memory>
#include <pipewire/pipewire.h>

namespace mirrolet::platform::desktop::wayland {

/// Owns a thread that handles the events of one PipeWire connection, and a lock. The thread holds the lock
/// while it runs callbacks. Any other thread must hold the lock while it uses an object of the connection.
class MIRROLET_THREAD_ATTRIBUTE(capability("mutex")) PipeWireLoop {
  public:
    PipeWireLoop();
    /// Starts the thread. Returns false if it cannot be started.
    bool start();
    /// Ends the thread. The caller must not hold the lock.
    void stop();
    [[nodiscard]] pw_loop* get() const { return pw_thread_loop_get_loop(loop.get()); }

    void lock() MIRROLET_THREAD_ATTRIBUTE(acquire_capability()) { pw_thread_loop_lock(loop.get()); }
    void unlock() MIRROLET_THREAD_ATTRIBUTE(release_capability()) { pw_thread_loop_unlock(loop.get()); }
    /// Tells Clang's check that the lock is held. For callbacks, because the thread holds the lock while it
    /// runs them.
    void isHeld() const MIRROLET_THREAD_ATTRIBUTE(assert_capability(this)) {}

  private:
    struct Destroy {
        void operator()(pw_thread_loop* owned) const { pw_thread_loop_destroy(owned); }
    };
    std::unique_ptr<pw_thread_loop, Destroy> loop;
};

} // namespace mirrolet::platform::desktop::wayland
