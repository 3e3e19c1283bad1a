#pragma once

#include <gio/gio.h>

#include <chrono>
#include <functional>

namespace mirrolet::platform {

/// The session bus, on a thread of its own: nothing that others do or leave undone on the bus, nor a bus that
/// hangs, ever holds the program up. One per process, started on first use and never ended.
class SessionBus {
  public:
    using Task = std::function<void(GDBusConnection* connection)>;

    static SessionBus& shared();
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;

    /// Runs the task on the bus's thread, whose own GLib context is the default one there: once the bus is
    /// connected, or with nullptr once it is known that there is none. Never, if the bus hangs. Any thread.
    void whenKnown(Task task);

    /// Whether the bus is connected, waiting at most so long for it. Not on the bus's own thread.
    [[nodiscard]] bool isConnected(std::chrono::milliseconds patience);

  private:
    struct State;
    SessionBus();
    State* state; ///< Lives as long as the process: its thread does.
};

} // namespace mirrolet::platform
