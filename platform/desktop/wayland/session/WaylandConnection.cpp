#include "platform/desktop/wayland/session/WaylandConnection.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>

namespace mirrolet::platform::desktop::wayland {

std::unique_ptr<WaylandConnection> WaylandConnection::open(std::string& problem) {
    auto* display = wl_display_connect(nullptr);
    if (!display) {
        problem = std::string("cannot connect to the Wayland compositor: ") + std::strerror(errno);
        return nullptr;
    }
    const int wakeUp = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (wakeUp < 0) {
        problem = std::string("cannot watch the Wayland compositor: ") + std::strerror(errno);
        wl_display_disconnect(display);
        return nullptr;
    }
    auto connection = std::unique_ptr<WaylandConnection>(new WaylandConnection(display, wakeUp));
    connection->waitForReplies();
    return connection;
}

WaylandConnection::WaylandConnection(wl_display* display, int wakeUp) : display(display), wakeUp(wakeUp) {
    static const wl_registry_listener listener = {.global = addGlobal,
                                                  .global_remove = [](void*, wl_registry*, std::uint32_t) {}};
    registry = wl_display_get_registry(display);
    wl_registry_add_listener(registry, &listener, this);
}

WaylandConnection::~WaylandConnection() {
    end();
    wl_registry_destroy(registry);
    wl_display_disconnect(display);
    close(wakeUp);
}

void WaylandConnection::addGlobal(void* self, wl_registry* /*registry*/, std::uint32_t name,
                                  const char* interface, std::uint32_t version) {
    auto& connection = *static_cast<WaylandConnection*>(self);
    // After start() a new global is ignored. It could not be bound, and other threads may be reading
    // `globals`.
    if (!connection.thread.joinable())
        connection.globals.emplace(interface, Global{name, version});
}

bool WaylandConnection::offers(const wl_interface& interface) const {
    return globals.contains(interface.name);
}

void* WaylandConnection::bindGlobal(const wl_interface& interface, std::uint32_t highestVersion) {
    const auto found = globals.find(interface.name);
    if (found == globals.end())
        return nullptr;
    const auto version =
        std::min({found->second.version, highestVersion, static_cast<std::uint32_t>(interface.version)});
    return wl_registry_bind(registry, found->second.name, &interface, version);
}

void WaylandConnection::waitForReplies() {
    wl_display_roundtrip(display);
}

void WaylandConnection::start(std::function<void()> lost) {
    thread = std::thread([this, lost = std::move(lost)] { run(lost); });
    pthread_setname_np(thread.native_handle(), "mirrolet.wl");
}

void WaylandConnection::post(std::function<void()> task) {
    {
        const MutexLock lock(tasksMutex);
        tasks.push_back(std::move(task));
    }
    wake();
}

void WaylandConnection::end() {
    ending = true;
    wake();
    if (thread.joinable())
        thread.join();
}

void WaylandConnection::wake() const {
    const std::uint64_t one = 1;
    // The write does not fail, because an event descriptor only adds up the numbers and is never full.
    [[maybe_unused]] const auto written = write(wakeUp, &one, sizeof one);
}

void WaylandConnection::run(const std::function<void()>& lost) {
    while (!ending) {
        if (!handleEvents()) {
            lost();
            return;
        }
        runTasks();
    }
}

/// Waits for events or a wake-up, and handles the events. Returns false if the connection is broken.
bool WaylandConnection::handleEvents() {
    while (wl_display_prepare_read(display) != 0)
        if (wl_display_dispatch_pending(display) < 0)
            return false;
    wl_display_flush(display); // After a failure, reading fails too.
    pollfd waiting[] = {{wl_display_get_fd(display), POLLIN, 0}, {wakeUp, POLLIN, 0}};
    const bool ready = poll(waiting, 2, -1) > 0;
    if (ready && waiting[1].revents != 0) {
        std::uint64_t count = 0;
        [[maybe_unused]] const auto bytes = read(wakeUp, &count, sizeof count);
    }
    if (!ready || waiting[0].revents == 0) {
        wl_display_cancel_read(display);
        return true;
    }
    return wl_display_read_events(display) == 0 && wl_display_dispatch_pending(display) >= 0;
}

void WaylandConnection::runTasks() {
    std::vector<std::function<void()>> due;
    {
        const MutexLock lock(tasksMutex);
        due.swap(tasks);
    }
    for (const auto& task : due)
        if (!ending)
            task();
}

} // namespace mirrolet::platform::desktop::wayland
