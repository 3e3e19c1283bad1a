#pragma once

#include <gio/gio.h>

#include <functional>

namespace mirrolet::platform {

/// The session bus. It has a thread of its own, so that neither the bus nor a program on the bus can block
/// this program. A process has one SessionBus, which is made on first use and never destroyed.
class SessionBus {
  public:
    using Task = std::function<void(GDBusConnection* connection)>;

    static SessionBus& shared();
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;

    /// Calls `task` with the connection, on the bus's thread, as soon as there is a connection. If the first
    /// connection fails or shieldQt() has given up, there is no bus, and `task` is called once with nullptr.
    /// After a connection was lost, a new one is made as soon as the bus is back. `task` is then called again
    /// with the new connection, and may still use the previous one during that call. The bus's GLib context
    /// is the thread-default context during the calls. `task` is never destroyed. Any thread.
    void follow(Task task);
    /// Calls `task` on the bus's thread, after the tasks that were passed before. Any thread.
    void run(std::function<void()> task);
    /// Keeps Qt from waiting for a bus that does not answer. Waits less than a second for the bus. If the bus
    /// has not answered by then, logs one line and makes Qt and the program work without a bus. Call this
    /// before the QApplication is made.
    void shieldQt();

  private:
    struct State;
    SessionBus();
    State* state; ///< Never destroyed, because the bus's thread uses it until the process ends.
};

} // namespace mirrolet::platform
