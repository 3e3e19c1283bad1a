#pragma once

#include "platform/desktop/x11/server/Atoms.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace mirrolet::platform::desktop::x11 {

/// The backend's own connection to the X server, never the toolkit's, so that every error is ours to read.
/// Requests may be made from any thread; events are read by one thread of the connection and handed to who
/// subscribed.
class X11Connection {
  public:
    using EventHandler = std::function<void(const xcb_generic_event_t&)>;

    /// Ends a subscription when destroyed; waits for a handler that is running, unless called from it. Must
    /// not be destroyed while holding a lock that the handler takes.
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

    /// First event numbers and versions of the extensions; 0 or false where the server lacks one.
    struct Extensions {
        bool composite = false; ///< 0.2 or later: NameWindowPixmap.
        bool render = false;    ///< 0.10 or later.
        bool shape = false;
        bool xres = false; ///< 1.2 or later: QueryClientIds.
        bool randr = false;
        std::uint8_t damageFirstEvent = 0;
        std::uint8_t xfixesFirstEvent = 0;
        std::uint8_t shapeFirstEvent = 0;
        std::uint8_t xkbFirstEvent = 0;
        std::uint8_t randrFirstEvent = 0;
    };

    /// Connects to a display (empty: $DISPLAY). On failure returns nothing and says why in `problem`, one
    /// line.
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
    /// A window of ours that is never mapped: owner of grabs, target of messages.
    [[nodiscard]] xcb_window_t ownWindow() const { return hidden; }

    /// Events of one type (`response_type` without the send-event bit), on the connection's thread, in order.
    [[nodiscard]] Subscription subscribe(std::uint8_t eventType, EventHandler handler);
    /// Adds to the events that this connection selects on the root window; never takes one away.
    void selectOnRoot(std::uint32_t eventMask);
    /// SubstructureNotify of the root window, counted: they are many, so only while someone needs them.
    void watchTopLevels(bool watch);

    /// Called once, on the connection's thread, when the server is gone. Set before start().
    void setLost(std::function<void()> handler) { lost = std::move(handler); }
    /// Starts reading events. Once, after the subscriptions that must not miss any.
    void start();

    void flush() const { xcb_flush(connection); }
    /// Waits for a checked request. True if it went well; what the error was is the caller's business. For
    /// requests whose failure is expected (a window that died).
    bool succeeds(xcb_void_cookie_t checked, std::uint8_t* errorCode = nullptr) const;
    /// An unchecked request's error arrives as an event and is ignored when it only says that a window,
    /// drawable, damage or pixmap is gone, or a match failed because of it; anything else is a bug of ours
    /// and is logged once.
  private:
    X11Connection(xcb_connection_t* connection, int screenNumber);
    void queryExtensions();
    void applyRootMask();
    void readEvents();
    void dispatch(const xcb_generic_event_t& event);
    void noteError(const xcb_generic_error_t& error);
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
    xcb_window_t hidden = 0;
    std::function<void()> lost;

    std::mutex rootMaskLock;
    std::uint32_t rootMask = 0;
    int topLevelWatchers = 0;

    std::mutex entriesLock;       ///< Guards entries and nextNumber.
    std::recursive_mutex running; ///< Held while handlers run, so that unsubscribe() can wait for them.
    std::vector<Entry> entries;
    std::uint64_t nextNumber = 1;
    std::uint32_t errorsLogged = 0;
    std::thread reader;
};

} // namespace mirrolet::platform::desktop::x11
