#pragma once

#include "platform/desktop/x11/server/Atoms.h"
#include "platform/desktop/x11/server/ErrorLog.h"
#include "platform/desktop/x11/server/ErrorSet.h"
#include "platform/desktop/x11/server/EventType.h"
#include "platform/desktop/x11/server/Extensions.h"
#include "platform/desktop/x11/server/XcbReply.h"
#include "platform/foundation/Mutex.h"

#include <xcb/xcb.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

namespace mirrolet::platform::desktop::x11 {

/// The backend's own connection to the X server. Qt's connection is not used, because Qt reads the errors of
/// its own connection. Requests may be made from any thread. The connection's own thread reads the events and
/// calls the handlers of the subscriptions.
class X11Connection {
  public:
    /// Keeps an event handler subscribed until this object is destroyed. The destructor waits for a running
    /// call of the handler, so the caller must not hold a mutex that the handler locks. A handler may destroy
    /// its own subscription.
    class Subscription {
      public:
        Subscription() = default;
        Subscription(Subscription&& other) noexcept;
        Subscription& operator=(Subscription&& other) noexcept;
        ~Subscription();

      private:
        friend class X11Connection;
        Subscription(X11Connection* connection, std::uint64_t number)
            : connection(connection), number(number) {}
        X11Connection* connection = nullptr;
        std::uint64_t number = 0;
    };

    /// Connects to a display, or to $DISPLAY if `display` is empty. On failure, returns nullptr and sets
    /// `problem` to the reason in one line.
    static std::unique_ptr<X11Connection> open(const std::string& display, std::string& problem);
    ~X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    [[nodiscard]] xcb_connection_t* xcb() const { return connection; }
    [[nodiscard]] const xcb_screen_t& screen() const { return *defaultScreen; }
    [[nodiscard]] int screenNumber() const { return defaultScreenNumber; }
    [[nodiscard]] xcb_window_t root() const { return defaultScreen->root; }
    [[nodiscard]] const Atoms& atoms() const { return *interned; }
    [[nodiscard]] const Extensions& extensions() const { return available; }
    /// Returns a window of this connection that is never mapped. The backend changes a property of this
    /// window when it needs an event from the server.
    [[nodiscard]] xcb_window_t ownWindow() const { return hidden; }

    /// Calls the handler with every event of one type, on the connection's thread, in order. A handler with a
    /// second parameter gets the event's sequence number as well. The returned subscription is empty if the
    /// server lacks the extension that the event belongs to.
    template <typename Event, typename Handler> [[nodiscard]] Subscription subscribe(Handler handler);
    /// Calls the handler only with events that were selected on this window. See `selectedOn()`.
    template <typename Event, typename Handler>
    [[nodiscard]] Subscription subscribe(xcb_window_t window, Handler handler);
    /// Selects these events on the root window, in addition to the events that are selected already.
    void selectOnRoot(std::uint32_t eventMask);
    /// Selects SubstructureNotify events on the root window while any caller needs them. Each caller passes
    /// true when it begins to need the events and false when it no longer needs them. The events are not
    /// selected all the time, because they are many.
    void watchTopLevels(bool watch);

    /// Sets the handler that is called once, on the connection's thread, when the server is gone. Must be
    /// called before start().
    void setLost(std::function<void()> handler) { lost = std::move(handler); }
    /// Starts reading events. Must be called once, after the subscriptions that must not miss an event have
    /// been made.
    void start();

    // The caller names the errors that a request is expected to cause, either as an argument of reply() or
    // succeeds(), or with an `ExpectErrors` object around the request. Any other error is logged.

    void flush() const { xcb_flush(connection); }
    /// Waits for a reply: `reply<xcb_get_geometry_reply>(cookie, windowGone)`. Returns an empty pointer after
    /// an error, and when the server is lost. Logs an error that is not expected, because such an error is a
    /// fault of this program.
    template <auto Wait, typename Cookie> auto reply(Cookie cookie, ErrorSet expected = {}) const;
    /// Waits for a checked request and returns whether the request succeeded. After an error, stores the
    /// error in `met` unless `met` is nullptr. Logs an error that is not expected, because such an error is a
    /// fault of this program.
    bool succeeds(xcb_void_cookie_t checked, ErrorSet expected, XError* met = nullptr) const;
    /// Returns the log of unexpected errors. `ExpectErrors` tells this log which errors are expected of
    /// requests whose result nobody waits for.
    [[nodiscard]] ErrorLog& errorLog() const { return *errors; }

  private:
    using EventHandler = std::function<void(const xcb_generic_event_t&)>;

    X11Connection(xcb_connection_t* connection, int screenNumber);
    Subscription subscribeTo(std::uint8_t eventType, EventHandler handler);
    void applyRootMask() MIRROLET_REQUIRES(rootMaskMutex);
    void readEvents();
    void dispatch(const xcb_generic_event_t& event);
    void unsubscribe(std::uint64_t number);

    struct Entry {
        std::uint64_t number;
        std::uint8_t eventType;
        std::shared_ptr<EventHandler> handler;
    };

    xcb_connection_t* connection;
    int defaultScreenNumber;
    const xcb_screen_t* defaultScreen = nullptr;
    std::unique_ptr<Atoms> interned;
    Extensions available;
    std::unique_ptr<ErrorLog> errors;
    xcb_window_t hidden = 0;
    std::function<void()> lost;

    Mutex rootMaskMutex; ///< Held while the event mask is sent to the server.
    std::uint32_t rootMask MIRROLET_GUARDED_BY(rootMaskMutex) = 0;
    int topLevelWatchers MIRROLET_GUARDED_BY(rootMaskMutex) = 0;

    /// Held while handlers run, so that unsubscribe() can wait for them.
    RecursiveMutex handlersMutex;
    Mutex entriesMutex MIRROLET_ACQUIRED_AFTER(handlersMutex);
    std::vector<Entry> entries MIRROLET_GUARDED_BY(entriesMutex);
    std::uint64_t nextNumber MIRROLET_GUARDED_BY(entriesMutex) = 1;
    std::atomic<bool> ending = false; ///< Tells the reader thread to end when it gets the next event.
    std::thread reader;
};

template <typename Event, typename Handler>
X11Connection::Subscription X11Connection::subscribe(Handler handler) {
    const auto number = EventType<Event>::number(available);
    if (number == 0)
        return {};
    return subscribeTo(number, [handler = std::move(handler)](const xcb_generic_event_t& event) {
        // XCB hands out every event as the generic struct, which begins with the same fields.
        const auto& typed = reinterpret_cast<const Event&>(event);
        if (!EventType<Event>::matches(typed))
            return;
        if constexpr (std::is_invocable_v<Handler, const Event&, std::uint32_t>)
            handler(typed, event.full_sequence);
        else
            handler(typed);
    });
}

template <typename Event, typename Handler>
X11Connection::Subscription X11Connection::subscribe(xcb_window_t window, Handler handler) {
    return subscribe<Event>([window, handler = std::move(handler)](const Event& event) {
        if (selectedOn(event) == window)
            handler(event);
    });
}

template <auto Wait, typename Cookie> auto X11Connection::reply(Cookie cookie, ErrorSet expected) const {
    xcb_generic_error_t* raw = nullptr;
    auto* answer = Wait(connection, cookie, &raw);
    const XcbReply<xcb_generic_error_t> error(raw);
    if (error)
        errors->note(*error, expected);
    return XcbReply<std::remove_pointer_t<decltype(answer)>>(answer);
}

} // namespace mirrolet::platform::desktop::x11
