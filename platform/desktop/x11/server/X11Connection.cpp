#include "platform/desktop/x11/server/X11Connection.h"

#include "platform/desktop/x11/server/XcbReply.h"
#include "platform/desktop/x11/server/XcbXkb.h"
#include "platform/foundation/NSLog.h"

#include <xcb/composite.h>
#include <xcb/damage.h>
#include <xcb/randr.h>
#include <xcb/render.h>
#include <xcb/res.h>
#include <xcb/shape.h>
#include <xcb/xcbext.h>
#include <xcb/xfixes.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <pthread.h>
#include <utility>

namespace mirrolet::platform::desktop::x11 {

namespace {

constexpr std::uint32_t mostErrorsLogged = 8;

const xcb_screen_t* screenOf(xcb_connection_t* connection, int number) {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (int i = 0; i < number && screens.rem > 1; ++i)
        xcb_screen_next(&screens);
    return screens.data;
}

const xcb_query_extension_reply_t* present(xcb_connection_t* connection, xcb_extension_t* extension) {
    const auto* data = xcb_get_extension_data(connection, extension);
    return data && data->present ? data : nullptr;
}

bool atLeast(std::uint32_t major, std::uint32_t minor, std::uint32_t wantedMajor, std::uint32_t wantedMinor) {
    return std::pair(major, minor) >= std::pair(wantedMajor, wantedMinor);
}

} // namespace

X11Connection::Subscription::Subscription(Subscription&& other) noexcept
    : connection(std::exchange(other.connection, nullptr)), number(other.number) {}

X11Connection::Subscription& X11Connection::Subscription::operator=(Subscription&& other) noexcept {
    std::swap(connection, other.connection);
    std::swap(number, other.number);
    return *this;
}

X11Connection::Subscription::~Subscription() {
    if (connection)
        connection->unsubscribe(number);
}

std::unique_ptr<X11Connection> X11Connection::open(const std::string& display, std::string& problem) {
    const char* name = display.empty() ? std::getenv("DISPLAY") : display.c_str();
    if (!name || !*name) {
        problem = "no X display: DISPLAY is not set";
        return nullptr;
    }
    int screenNumber = 0;
    xcb_connection_t* connection = xcb_connect(name, &screenNumber);
    if (xcb_connection_has_error(connection)) {
        xcb_disconnect(connection);
        problem = std::string("cannot connect to the X server at ") + name;
        return nullptr;
    }
    return std::unique_ptr<X11Connection>(new X11Connection(connection, screenNumber));
}

X11Connection::X11Connection(xcb_connection_t* connection, int screenNumber)
    : connection(connection), defaultScreenNumber(screenNumber),
      defaultScreen(screenOf(connection, screenNumber)) {
    for (auto* extension : {&xcb_composite_id, &xcb_damage_id, &xcb_render_id, &xcb_xfixes_id, &xcb_shape_id,
                            &xcb_randr_id, &xcb_res_id, &xcb_xkb_id})
        xcb_prefetch_extension_data(connection, extension);
    interned = std::make_unique<Atoms>(connection, screenNumber);
    queryExtensions();
    hidden = xcb_generate_id(connection);
    const std::uint32_t values[] = {1, XCB_EVENT_MASK_PROPERTY_CHANGE};
    xcb_create_window(connection, 0, hidden, root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
}

void X11Connection::queryExtensions() {
    // Several extensions refuse every other request until the client has said which version it speaks.
    if (present(connection, &xcb_composite_id)) {
        const XcbReply<xcb_composite_query_version_reply_t> reply(xcb_composite_query_version_reply(
            connection, xcb_composite_query_version(connection, 0, 4), nullptr));
        available.composite = reply && atLeast(reply->major_version, reply->minor_version, 0, 2);
    }
    if (present(connection, &xcb_render_id)) {
        const XcbReply<xcb_render_query_version_reply_t> reply(
            xcb_render_query_version_reply(connection, xcb_render_query_version(connection, 0, 11), nullptr));
        available.render = reply && atLeast(reply->major_version, reply->minor_version, 0, 10);
    }
    if (const auto* data = present(connection, &xcb_damage_id)) {
        const XcbReply<xcb_damage_query_version_reply_t> reply(
            xcb_damage_query_version_reply(connection, xcb_damage_query_version(connection, 1, 1), nullptr));
        available.damageFirstEvent = reply ? data->first_event : 0;
    }
    if (const auto* data = present(connection, &xcb_xfixes_id)) {
        const XcbReply<xcb_xfixes_query_version_reply_t> reply(
            xcb_xfixes_query_version_reply(connection, xcb_xfixes_query_version(connection, 5, 0), nullptr));
        available.xfixesFirstEvent = reply ? data->first_event : 0;
    }
    if (const auto* data = present(connection, &xcb_shape_id)) {
        available.shape = true;
        available.shapeFirstEvent = data->first_event;
    }
    if (const auto* data = present(connection, &xcb_randr_id)) {
        const XcbReply<xcb_randr_query_version_reply_t> reply(
            xcb_randr_query_version_reply(connection, xcb_randr_query_version(connection, 1, 5), nullptr));
        available.randr = reply != nullptr;
        available.randrFirstEvent = reply ? data->first_event : 0;
    }
    if (present(connection, &xcb_res_id)) {
        const XcbReply<xcb_res_query_version_reply_t> reply(
            xcb_res_query_version_reply(connection, xcb_res_query_version(connection, 1, 2), nullptr));
        available.xres = reply && atLeast(reply->server_major, reply->server_minor, 1, 2);
    }
    if (const auto* data = present(connection, &xcb_xkb_id)) {
        const XcbReply<xcb_xkb_use_extension_reply_t> reply(
            xcb_xkb_use_extension_reply(connection, xcb_xkb_use_extension(connection, 1, 0), nullptr));
        available.xkbFirstEvent = reply && reply->supported ? data->first_event : 0;
    }
}

X11Connection::~X11Connection() {
    if (reader.joinable()) {
        // Wakes the reader: a message to our own window that it takes as the sign to end.
        xcb_client_message_event_t stop{};
        stop.response_type = XCB_CLIENT_MESSAGE;
        stop.format = 32;
        stop.window = hidden;
        stop.type = interned->MANAGER;
        xcb_send_event(connection, 0, hidden, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&stop));
        flush();
        reader.join();
    }
    xcb_disconnect(connection);
}

X11Connection::Subscription X11Connection::subscribe(std::uint8_t eventType, EventHandler handler) {
    const std::lock_guard guard(entriesLock);
    const auto number = nextNumber++;
    entries.push_back({number, eventType, std::make_shared<EventHandler>(std::move(handler))});
    return {this, number};
}

void X11Connection::unsubscribe(std::uint64_t number) {
    {
        const std::lock_guard guard(entriesLock);
        std::erase_if(entries, [number](const Entry& entry) { return entry.number == number; });
    }
    const std::lock_guard wait(running);
}

void X11Connection::selectOnRoot(std::uint32_t eventMask) {
    const std::lock_guard guard(rootMaskLock);
    rootMask |= eventMask;
    applyRootMask();
}

void X11Connection::watchTopLevels(bool watch) {
    const std::lock_guard guard(rootMaskLock);
    topLevelWatchers += watch ? 1 : -1;
    applyRootMask();
}

void X11Connection::applyRootMask() {
    const std::uint32_t mask =
        topLevelWatchers > 0 ? rootMask | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY : rootMask;
    xcb_change_window_attributes(connection, root(), XCB_CW_EVENT_MASK, &mask);
    flush();
}

void X11Connection::start() {
    reader = std::thread([this] {
        pthread_setname_np(pthread_self(), "mirrolet.x11");
        readEvents();
    });
}

void X11Connection::readEvents() {
    while (const XcbReply<xcb_generic_event_t> event{xcb_wait_for_event(connection)}) {
        if (event->response_type == 0) {
            noteError(reinterpret_cast<const xcb_generic_error_t&>(*event));
            continue;
        }
        if ((event->response_type & 0x7f) == XCB_CLIENT_MESSAGE) {
            const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
            if (message.window == hidden && message.type == interned->MANAGER)
                return;
        }
        dispatch(*event);
    }
    if (lost)
        lost();
}

void X11Connection::dispatch(const xcb_generic_event_t& event) {
    const auto type = static_cast<std::uint8_t>(event.response_type & 0x7f);
    const std::lock_guard hold(running);
    std::vector<Entry> called;
    {
        const std::lock_guard guard(entriesLock);
        std::copy_if(entries.begin(), entries.end(), std::back_inserter(called),
                     [type](const Entry& entry) { return entry.eventType == type; });
    }
    for (const auto& entry : called)
        (*entry.handler)(event);
}

void X11Connection::noteError(const xcb_generic_error_t& error) {
    // Windows and what hangs on them die between any two requests; that is the daily round, not a fault.
    const bool expected = error.error_code == XCB_WINDOW || error.error_code == XCB_DRAWABLE ||
                          error.error_code == XCB_PIXMAP || error.error_code == XCB_MATCH ||
                          error.error_code >= 128;
    if (expected || errorsLogged >= mostErrorsLogged)
        return;
    ++errorsLogged;
    NSLog("X11: unexpected error " + std::to_string(error.error_code) + " for request " +
          std::to_string(error.major_code) + "." + std::to_string(error.minor_code) + " on resource " +
          std::to_string(error.resource_id));
}

bool X11Connection::succeeds(xcb_void_cookie_t checked, std::uint8_t* errorCode) const {
    const XcbReply<xcb_generic_error_t> error(xcb_request_check(connection, checked));
    if (error && errorCode)
        *errorCode = error->error_code;
    return !error && !xcb_connection_has_error(connection);
}

} // namespace mirrolet::platform::desktop::x11
