#pragma once

#include <gio/gio.h>

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
    /// connected, or with nullptr once it is known that there is none, which one that refuses the first time
    /// or is given up counts as. Then once more with each later connection: one that is lost is made anew as
    /// soon as the bus is back at its place, and can still be used when the task is called with the new one.
    /// For the rest of the process. Any thread.
    void follow(Task task);
    /// On the bus's thread, after what was passed here before. Any thread.
    void run(std::function<void()> task);
    /// The toolkit waits for the bus on the main thread. If the bus hangs, says so in one line and goes on,
    /// toolkit and all, as if there were none. Before the application object is made.
    void shieldToolkit();

  private:
    struct State;
    SessionBus();
    State* state; ///< Lives as long as the process: its thread does.
};

} // namespace mirrolet::platform
