#include "platform/desktop/x11/server/X11Connection.h"

#include <algorithm>
#include <cstdlib>
#include <pthread.h>
#include <utility>

namespace mirrolet::platform::desktop::x11 {

namespace {

const xcb_screen_t* screenOf(xcb_connection_t* connection, int number) {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (int i = 0; i < number && screens.rem > 1; ++i)
        xcb_screen_next(&screens);
    return screens.data;
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
    interned = std::make_unique<Atoms>(connection, screenNumber);
    available = Extensions(connection);
    errors = std::make_unique<ErrorLog>(available);
    hidden = xcb_generate_id(connection);
    const std::uint32_t values[] = {1, XCB_EVENT_MASK_PROPERTY_CHANGE};
    xcb_create_window(connection, 0, hidden, root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
}

X11Connection::~X11Connection() {
    if (reader.joinable()) {
        ending = true;
        // Wakes the reader, which waits for an event.
        xcb_client_message_event_t wakeUp{};
        wakeUp.response_type = XCB_CLIENT_MESSAGE;
        wakeUp.format = 32;
        wakeUp.window = hidden;
        xcb_send_event(connection, 0, hidden, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char*>(&wakeUp));
        flush();
        reader.join();
    }
    xcb_disconnect(connection);
}

X11Connection::Subscription X11Connection::subscribeTo(std::uint8_t eventType, EventHandler handler) {
    const MutexLock lock(entriesMutex);
    const auto number = nextNumber++;
    entries.push_back({number, eventType, std::make_shared<EventHandler>(std::move(handler))});
    return {this, number};
}

void X11Connection::unsubscribe(std::uint64_t number) {
    {
        const MutexLock lock(entriesMutex);
        std::erase_if(entries, [number](const Entry& entry) { return entry.number == number; });
    }
    const MutexLock lock(handlersMutex);
}

void X11Connection::selectOnRoot(std::uint32_t eventMask) {
    const MutexLock lock(rootMaskMutex);
    rootMask |= eventMask;
    applyRootMask();
}

void X11Connection::watchTopLevels(bool watch) {
    const MutexLock lock(rootMaskMutex);
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
        if (ending)
            return;
        errors->noteAnswered(event->full_sequence);
        if (event->response_type == 0) {
            errors->note(reinterpret_cast<const xcb_generic_error_t&>(*event));
            continue;
        }
        dispatch(*event);
    }
    if (lost)
        lost();
}

void X11Connection::dispatch(const xcb_generic_event_t& event) {
    const auto type = static_cast<std::uint8_t>(event.response_type & 0x7f);
    const MutexLock handlersLock(handlersMutex);
    std::vector<Entry> called;
    {
        const MutexLock lock(entriesMutex);
        std::copy_if(entries.begin(), entries.end(), std::back_inserter(called),
                     [type](const Entry& entry) { return entry.eventType == type; });
    }
    for (const auto& entry : called)
        (*entry.handler)(event);
}

bool X11Connection::succeeds(xcb_void_cookie_t checked, ErrorSet expected, XError* met) const {
    const XcbReply<xcb_generic_error_t> error(xcb_request_check(connection, checked));
    if (!error)
        return !xcb_connection_has_error(connection);
    errors->note(*error, expected);
    if (met)
        *met = errors->kindOf(*error);
    return false;
}

} // namespace mirrolet::platform::desktop::x11
