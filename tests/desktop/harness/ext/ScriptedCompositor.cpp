#include "tests/desktop/harness/ext/ScriptedCompositor.h"

#include "tests/desktop/harness/HarnessError.h"
#include "tests/desktop/harness/ext/ScriptedCapture.h"
#include "tests/desktop/harness/ext/ScriptedLists.h"

#include <algorithm>
#include <cstring>
#include <ext-foreign-toplevel-list-v1-server-protocol.h>
#include <future>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>
#include <wayland-server.h>
#include <wlr-foreign-toplevel-management-unstable-v1-server-protocol.h>

namespace mirrolet::harness {

namespace {

constexpr int wlrVersion = 3;

int listenAt(const std::string& path) {
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
    if (bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        listen(descriptor, 8) != 0)
        throw HarnessError("cannot listen at " + path);
    return descriptor;
}

void destroyList(wl_client*, wl_resource* resource) {
    wl_resource_destroy(resource);
}

} // namespace

ScriptedCompositor::ScriptedCompositor(const Options& options)
    : display(wl_display_create()), wakeUp(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    wl_display_add_socket_fd(display, listenAt(socket()));
    addCaptureGlobals(display);
    wl_global_create(display, &ext_foreign_toplevel_list_v1_interface, 1, this, bindList);
    if (options.tellsStates)
        wl_global_create(display, &zwlr_foreign_toplevel_manager_v1_interface, wlrVersion, this, bindManager);
    const auto wake = [](int, std::uint32_t, void* self) {
        static_cast<ScriptedCompositor*>(self)->runTasks();
        return 0;
    };
    wakeUps = wl_event_loop_add_fd(wl_display_get_event_loop(display), wakeUp, WL_EVENT_READABLE, wake, this);
    thread = std::thread([this] { serve(); });
}

ScriptedCompositor::~ScriptedCompositor() {
    run([this] { isEnding = true; });
    thread.join();
    wl_display_destroy_clients(display);
    wl_event_source_remove(wakeUps);
    wl_display_destroy(display);
    ::close(wakeUp);
}

void ScriptedCompositor::serve() {
    while (!isEnding) {
        wl_event_loop_dispatch(wl_display_get_event_loop(display), -1);
        wl_display_flush_clients(display);
    }
}

void ScriptedCompositor::runTasks() {
    std::uint64_t count = 0;
    [[maybe_unused]] const auto bytes = ::read(wakeUp, &count, sizeof count);
    std::vector<std::function<void()>> due;
    {
        const std::lock_guard lock(tasksLock);
        due.swap(tasks);
    }
    for (const auto& task : due)
        task();
}

void ScriptedCompositor::run(const std::function<void()>& task) const {
    std::promise<void> done;
    {
        const std::lock_guard lock(tasksLock);
        tasks.emplace_back([&] {
            task();
            wl_display_flush_clients(display);
            done.set_value();
        });
    }
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = write(wakeUp, &one, sizeof one);
    done.get_future().wait();
}

void ScriptedCompositor::bindList(wl_client* client, void* self, std::uint32_t version, std::uint32_t id) {
    static const struct ext_foreign_toplevel_list_v1_interface calls {
        [](wl_client*, wl_resource*) {}, destroyList
    };
    auto& compositor = *static_cast<ScriptedCompositor*>(self);
    auto* made =
        wl_resource_create(client, &ext_foreign_toplevel_list_v1_interface, static_cast<int>(version), id);
    wl_resource_set_implementation(made, &calls, self, [](wl_resource* gone) {
        std::erase(static_cast<ScriptedCompositor*>(wl_resource_get_user_data(gone))->lists, gone);
    });
    compositor.lists.push_back(made);
    for (const auto& window : compositor.windows)
        if (!window->isClosed)
            listWindow(*window, made);
}

void ScriptedCompositor::bindManager(wl_client* client, void* self, std::uint32_t version, std::uint32_t id) {
    static const struct zwlr_foreign_toplevel_manager_v1_interface calls {
        [](wl_client*, wl_resource*) {}
    };
    auto& compositor = *static_cast<ScriptedCompositor*>(self);
    auto* made = wl_resource_create(client, &zwlr_foreign_toplevel_manager_v1_interface,
                                    static_cast<int>(version), id);
    wl_resource_set_implementation(made, &calls, self, [](wl_resource* gone) {
        std::erase(static_cast<ScriptedCompositor*>(wl_resource_get_user_data(gone))->managers, gone);
    });
    compositor.managers.push_back(made);
    for (const auto& window : compositor.windows)
        if (!window->isClosed)
            manageWindow(*window, made);
}

std::size_t ScriptedCompositor::open(const Window& window) {
    std::size_t index = 0;
    run([&] {
        index = windows.size();
        auto& made = *windows.emplace_back(std::make_unique<ScriptedWindow>());
        made.title = window.title;
        made.application = window.application;
        made.hidesApplication = window.hidesApplication;
        made.states = window.states;
        made.formats = window.formats;
        made.picture = {window.width, window.height,
                        std::vector<std::uint32_t>(static_cast<std::size_t>(window.width * window.height))};
        for (auto* each : lists)
            listWindow(made, each);
        for (auto* each : managers)
            manageWindow(made, each);
    });
    return index;
}

void ScriptedCompositor::setTitle(std::size_t window, const std::string& title, Lists wanted) {
    run([&] {
        auto& changed = *windows[window];
        changed.title = title;
        if (wanted != Lists::wlr)
            for (auto* handle : changed.listed)
                sendExtTitle(handle, changed);
        if (wanted != Lists::ext)
            for (auto* handle : changed.managed)
                sendWlrTitle(handle, changed);
    });
}

void ScriptedCompositor::setStates(std::size_t window, std::uint32_t states) {
    run([&] {
        windows[window]->states = states;
        for (auto* handle : windows[window]->managed)
            sendStates(handle, *windows[window]);
    });
}

void ScriptedCompositor::paint(std::size_t window, const platform::desktop::PixelRect& part,
                               std::uint32_t colour) {
    run([&] {
        auto& picture = windows[window]->picture;
        for (int y = part.y; y < part.y + part.height; ++y)
            std::fill_n(picture.pixels.begin() + y * picture.width + part.x, part.width, colour);
        damage(*windows[window], part);
    });
}

void ScriptedCompositor::resize(std::size_t window, int width, int height, std::uint32_t colour,
                                Resize order) {
    run([&] {
        auto& changed = *windows[window];
        changed.picture = {width, height,
                           std::vector<std::uint32_t>(static_cast<std::size_t>(width * height), colour)};
        if (order == Resize::failFirst)
            damage(changed, changed.whole());
        for (auto* session : changed.sessions)
            sendConstraints(*session);
        damage(changed, changed.whole());
    });
}

void ScriptedCompositor::failFrames(std::size_t window, const std::vector<std::uint32_t>& reasons) {
    run([&] {
        windows[window]->failures.assign(reasons.begin(), reasons.end());
        damage(*windows[window], {});
    });
}

void ScriptedCompositor::stopSessions(std::size_t window, bool failing) {
    run([&] {
        for (auto* session : windows[window]->sessions) {
            if (failing)
                windows[window]->failures = {2};
            answerPending(*session);
            stopSession(*session);
        }
        windows[window]->failures.clear();
    });
}

void ScriptedCompositor::close(std::size_t window, First order) {
    run([&] {
        auto& closed = *windows[window];
        closed.isClosed = true;
        if (order == First::stopped)
            for (auto* session : closed.sessions)
                stopSession(*session);
        for (auto* handle : closed.listed)
            ext_foreign_toplevel_handle_v1_send_closed(handle);
        for (auto* handle : closed.managed)
            zwlr_foreign_toplevel_handle_v1_send_closed(handle);
        for (auto* session : closed.sessions)
            stopSession(*session);
    });
}

template <typename Fact> auto ScriptedCompositor::read(std::size_t window, Fact fact) const {
    decltype(fact(*windows[window])) result{};
    run([&] { result = fact(*windows[window]); });
    return result;
}

Picture ScriptedCompositor::picture(std::size_t window) const {
    return read(window, [](const auto& each) { return each.picture; });
}

std::size_t ScriptedCompositor::openSessions(std::size_t window) const {
    return read(window, [](const auto& each) { return each.sessions.size(); });
}

int ScriptedCompositor::sessionsOpened(std::size_t window) const {
    return read(window, [](const auto& each) { return each.sessionsOpened; });
}

int ScriptedCompositor::framesAsked(std::size_t window) const {
    return read(window, [](const auto& each) { return each.framesAsked; });
}

} // namespace mirrolet::harness
