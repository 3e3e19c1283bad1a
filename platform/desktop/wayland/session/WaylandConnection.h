#pragma once

#include "platform/foundation/Mutex.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <vector>
#include <wayland-client.h>

namespace mirrolet::platform::desktop::wayland {

/// A connection to the compositor. Before start(), its events are handled in waitForReplies(). After start(),
/// its own thread handles them.
class WaylandConnection {
  public:
    /// Connects to $WAYLAND_DISPLAY and reads the compositor's list of interfaces (its globals). On failure,
    /// returns nullptr and puts the reason into `problem`, as one line.
    static std::unique_ptr<WaylandConnection> open(std::string& problem);
    /// Ends the thread. Objects that were bound must be destroyed after end() and before the connection.
    ~WaylandConnection();
    WaylandConnection(const WaylandConnection&) = delete;
    WaylandConnection& operator=(const WaylandConnection&) = delete;

    /// Returns whether the compositor offers this interface to this program.
    [[nodiscard]] bool offers(const wl_interface& interface) const;
    /// Binds a global in the highest version that both sides and the caller know. Returns nullptr if the
    /// compositor does not offer the global. To be called before start().
    template <typename Object> Object* bind(const wl_interface& interface, std::uint32_t highestVersion) {
        return static_cast<Object*>(bindGlobal(interface, highestVersion));
    }
    /// Waits until the compositor has answered all requests so far, and handles the events of the answers. To
    /// be called before start().
    void waitForReplies();

    /// Starts the thread. Calls `lost` on that thread if the compositor closes the connection.
    void start(std::function<void()> lost);
    /// Posts a task to the connection's thread. Tasks run in order. After start(), objects of the protocol
    /// are made only in tasks. Otherwise the thread could handle an object's first event before the object
    /// has a listener. Any thread.
    void post(std::function<void()> task);
    /// Ends the thread. No event is handled and no task runs from then on. Must not be called on that thread.
    void end();

  private:
    struct Global {
        std::uint32_t name;
        std::uint32_t version;
    };

    WaylandConnection(wl_display* display, int wakeUp);
    static void addGlobal(void* self, wl_registry* registry, std::uint32_t name, const char* interface,
                          std::uint32_t version);
    void* bindGlobal(const wl_interface& interface, std::uint32_t highestVersion);
    void run(const std::function<void()>& lost);
    [[nodiscard]] bool handleEvents();
    void runTasks();
    void wake() const;

    wl_display* const display;
    const int wakeUp; ///< An event descriptor that wakes the thread.
    wl_registry* registry = nullptr;
    std::map<std::string, Global> globals;
    std::atomic<bool> ending = false;
    std::thread thread;

    Mutex tasksMutex;
    std::vector<std::function<void()>> tasks MIRROLET_GUARDED_BY(tasksMutex);
};

} // namespace mirrolet::platform::desktop::wayland
