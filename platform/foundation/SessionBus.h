#pragma once

#include <gio/gio.h>

#include <functional>

namespace mirrolet::platform {

/// The session bus, on a thread of its own, so that neither the bus nor a program on the bus can hold this
/// program up. There is one per process, started on first use and never ended.
class SessionBus {
  public:
    using Task = std::function<void(GDBusConnection* connection)>;

    static SessionBus& shared();
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;

    /// Runs the task on the bus's thread, whose thread-default GLib context is the bus's. The task runs as
    /// soon as there is a connection, or with nullptr once it is known that there is no bus. A bus that
    /// refuses the first connection, or that shieldQt() has given up, counts as no bus. A lost connection is
    /// made again as soon as the bus is back, and the task runs again with each new connection. The previous
    /// connection can still be used during that call. The task is kept for the rest of the process. Any
    /// thread.
    void follow(Task task);
    /// Runs the task on the bus's thread, after the tasks passed before. Any thread.
    void run(std::function<void()> task);
    /// Keeps Qt from waiting for a bus that hangs. If the bus hangs, logs one line, and lets Qt and the
    /// program go on as if there were no bus. To be called before the application object is made.
    void shieldQt();

  private:
    struct State;
    SessionBus();
    State* state; ///< Lives as long as the process, because its thread does.
};

} // namespace mirrolet::platform
