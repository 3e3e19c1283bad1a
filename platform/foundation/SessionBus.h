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
    /// connected, or with nullptr once it is known that there is none. Never, if the bus hangs. Once more
    /// with each later connection: one that is lost closes, and is made anew as soon as the bus is back at
    /// its place. The one before is still to be had then. For the rest of the process; any thread.
    void follow(Task task);
    /// On the bus's thread, after what was passed here before. Any thread.
    void run(std::function<void()> task);

    /// Whether it is known by then if there is a bus: if not, it hangs. Not on the bus's own thread.
    [[nodiscard]] bool isKnown(std::chrono::milliseconds patience);
    /// The toolkit waits for the bus on the main thread. If the bus hangs, says so in one line and goes on,
    /// toolkit and all, as if there were none. Before the application object is made.
    void shieldToolkit();

  private:
    struct State;
    SessionBus();
    State* state; ///< Lives as long as the process: its thread does.
};

} // namespace mirrolet::platform
