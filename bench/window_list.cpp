// Measures what one poll of the windows costs. Compares a poll of 500 windows with the same requests sent one
// by one, each after the answer to the one before. Also measures the processor time of a poll of 50 and of
// 10000 windows. Starts its own X server, and prints a table.

#include "platform/desktop/x11/windows/X11WindowList.h"
#include "tests/desktop/harness/XClient.h"
#include "tests/desktop/harness/XServer.h"

#include <xcb/res.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace mirrolet::platform::desktop::x11;
using mirrolet::harness::Reply;
using mirrolet::harness::XClient;

/// Makes many windows from several clients, and lists them in the properties that a window manager would set.
class Desktop {
  public:
    Desktop(const mirrolet::harness::XServer& server, std::size_t windowCount) : manager(server) {
        // One client makes many windows, because an X server accepts at most 256 clients.
        const std::size_t windowsOfClient = std::max<std::size_t>(10, windowCount / 50);
        for (std::size_t i = 0; i < windowCount; ++i) {
            if (i % windowsOfClient == 0)
                clients.push_back(std::make_unique<XClient>(server));
            windows.push_back(makeWindow(*clients.back(), i));
        }
        for (const auto& client : clients)
            client->sync();
        publish(manager.root(), "_NET_CLIENT_LIST_STACKING", windows);
        const auto check = makeWindow(manager, 0);
        publish(manager.root(), "_NET_SUPPORTING_WM_CHECK", {check});
        publish(check, "_NET_SUPPORTING_WM_CHECK", {check});
        publish(manager.root(), "_NET_ACTIVE_WINDOW", {windows.back()});
        manager.sync();
    }

    std::vector<xcb_window_t> windows;

  private:
    static xcb_window_t makeWindow(XClient& client, std::size_t index) {
        auto* xcb = client.xcb();
        const auto window = xcb_generate_id(xcb);
        // All windows are at the same place, and each window is below the earlier ones. An X server shows
        // many windows faster if they are obscured.
        xcb_create_window(xcb, XCB_COPY_FROM_PARENT, window, client.root(), 0, 0, 300, 200, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        const std::string title = "A document of some length, number " + std::to_string(index) + " - Editor";
        const std::string name("editor\0Editor", 14);
        text(client, window, client.atom("_NET_WM_NAME"), client.atom("UTF8_STRING"), title);
        text(client, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, title);
        text(client, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, name);
        const auto type = client.atom("_NET_WM_WINDOW_TYPE_NORMAL");
        xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, window, client.atom("_NET_WM_WINDOW_TYPE"),
                            XCB_ATOM_ATOM, 32, 1, &type);
        const std::uint32_t below = XCB_STACK_MODE_BELOW;
        xcb_configure_window(xcb, window, XCB_CONFIG_WINDOW_STACK_MODE, &below);
        xcb_map_window(xcb, window);
        return window;
    }

    static void text(XClient& client, xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                     const std::string& value) {
        xcb_change_property(client.xcb(), XCB_PROP_MODE_REPLACE, window, property, type, 8,
                            static_cast<std::uint32_t>(value.size()), value.data());
    }

    void publish(xcb_window_t window, const std::string& property, const std::vector<xcb_window_t>& list) {
        xcb_change_property(manager.xcb(), XCB_PROP_MODE_REPLACE, window, manager.atom(property),
                            XCB_ATOM_WINDOW, 32, static_cast<std::uint32_t>(list.size()), list.data());
    }

    XClient manager;
    std::vector<std::unique_ptr<XClient>> clients;
};

/// Sends the same requests as one poll, but waits for each answer before it sends the next request.
void readOneAtATime(xcb_connection_t* xcb, const X11Connection& connection,
                    const std::vector<xcb_window_t>& windows) {
    const auto& atoms = connection.atoms();
    const std::array<xcb_atom_t, 7> properties = {
        atoms._NET_WM_NAME,       XCB_ATOM_WM_NAME,  atoms._NET_WM_STATE,      atoms._NET_WM_WINDOW_TYPE,
        atoms._GTK_FRAME_EXTENTS, XCB_ATOM_WM_CLASS, atoms._GTK_APPLICATION_ID};
    const xcb_res_client_id_spec_t all{XCB_NONE, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    std::free(xcb_res_query_client_ids_reply(xcb, xcb_res_query_client_ids(xcb, 1, &all), nullptr));
    for (const auto window : windows) {
        std::free(xcb_get_window_attributes_reply(xcb, xcb_get_window_attributes(xcb, window), nullptr));
        std::free(xcb_get_geometry_reply(xcb, xcb_get_geometry(xcb, window), nullptr));
        std::free(xcb_translate_coordinates_reply(
            xcb, xcb_translate_coordinates(xcb, window, connection.root(), 0, 0), nullptr));
        for (const auto property : properties)
            std::free(xcb_get_property_reply(
                xcb, xcb_get_property(xcb, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, 1024),
                nullptr));
    }
}

double milliseconds(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

/// Calls `call` `count` times, with a pause before each call as before each poll. Returns the time that each
/// call took on the given clock, in milliseconds and sorted.
template <typename Call> std::vector<double> sample(clockid_t clock, std::size_t count, Call call) {
    std::vector<double> times;
    for (std::size_t i = 0; i < count; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        const auto start = milliseconds(clock);
        call();
        times.push_back(milliseconds(clock) - start);
    }
    std::sort(times.begin(), times.end());
    return times;
}

double median(const std::vector<double>& sorted) {
    return sorted[sorted.size() / 2];
}

struct Backend {
    explicit Backend(const std::string& display) {
        std::string problem;
        connection = X11Connection::open(display, problem);
        if (!connection)
            throw std::runtime_error(problem);
        applications = std::make_unique<X11Applications>(*connection, previousFocus);
        list =
            std::make_unique<X11WindowList>(*connection, *applications, [](xcb_window_t) { return false; });
    }
    std::unique_ptr<X11Connection> connection;
    PreviousFocus previousFocus;
    std::unique_ptr<X11Applications> applications;
    std::unique_ptr<X11WindowList> list;
};

void compareReadings() {
    const mirrolet::harness::XServer server;
    const Desktop desktop(server, 500);
    const Backend backend(server.display());
    const auto rows = backend.list->onScreenWindows();
    const auto together = sample(CLOCK_MONOTONIC, 60, [&] { (void)backend.list->onScreenWindows(); });
    const auto oneByOne = sample(CLOCK_MONOTONIC, 20, [&] {
        readOneAtATime(backend.connection->xcb(), *backend.connection, desktop.windows);
    });
    std::printf("windows listed                              %8zu\n", rows ? rows->size() : 0);
    std::printf("500 windows                                  least   median\n");
    std::printf("one reading                          ms  %8.2f %8.2f\n", together[0], median(together));
    std::printf("one request at a time                ms  %8.2f %8.2f\n", oneByOne[0], median(oneByOne));
    std::printf("ratio (to reach: 0.10)                   %8.3f %8.3f\n", together[0] / oneByOne[0],
                median(together) / median(oneByOne));
}

void measurePoll() {
    const mirrolet::harness::XServer server;
    const Desktop desktop(server, 50);
    const Backend backend(server.display());
    (void)backend.list->onScreenWindows();
    const auto poll = [&] {
        (void)backend.list->onScreenWindows();
        (void)backend.applications->frontmost();
    };
    std::printf("a poll of 50 windows, processor time ms  %8.3f (median; to reach: 4)\n",
                median(sample(CLOCK_PROCESS_CPUTIME_ID, 101, poll)));
}

void measureFlood() {
    const mirrolet::harness::XServer server;
    const Desktop desktop(server, 10000);
    const Backend backend(server.display());
    (void)backend.list->onScreenWindows();
    const auto times = sample(CLOCK_PROCESS_CPUTIME_ID, 11, [&] { (void)backend.list->onScreenWindows(); });
    std::printf("10000 windows, processor time        ms  %8.3f (median)\n", median(times));
}

} // namespace

int main() {
    compareReadings();
    measurePoll();
    measureFlood();
}
