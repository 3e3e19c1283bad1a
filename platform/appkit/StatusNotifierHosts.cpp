#include "platform/appkit/StatusNotifierHosts.h"

#include "platform/dispatch/DispatchQueue.h"
#include "platform/foundation/GLibPointer.h"
#include "platform/foundation/GLibUserData.h"
#include "platform/foundation/SessionBus.h"

#include <utility>

namespace mirrolet::platform {

namespace {

constexpr auto watcherName = "org.kde.StatusNotifierWatcher";
constexpr auto watcherPath = "/StatusNotifierWatcher";

} // namespace

// Only the thread of the session bus uses the members, except `changed`, which only the main thread uses.
struct StatusNotifierHosts::Watch : std::enable_shared_from_this<Watch>, GLibUserData<Watch> {
    std::function<void(bool)> changed; ///< Empty once the StatusNotifierHosts is destroyed.
    GDBusConnection* connection = nullptr;
    guint nameWatch = 0;
    guint signalWatch = 0;

    void begin(GDBusConnection* bus);
    void end();
    void ask();
    void report(bool present);

    static void onAnswer(GObject* connection, GAsyncResult* result, gpointer data);
};

void StatusNotifierHosts::Watch::report(bool present) {
    DispatchQueue::main().async([weak = weak_from_this(), present] {
        if (const auto self = weak.lock(); self && self->changed)
            self->changed(present);
    });
}

void StatusNotifierHosts::Watch::begin(GDBusConnection* bus) {
    end();
    connection = bus;
    if (!bus) {
        report(false);
        return;
    }
    nameWatch = g_bus_watch_name_on_connection(
        bus, watcherName, G_BUS_NAME_WATCHER_FLAGS_NONE,
        [](GDBusConnection*, const char*, const char*, gpointer data) {
            if (const auto self = held(data))
                self->ask();
        },
        [](GDBusConnection*, const char*, gpointer data) {
            if (const auto self = held(data))
                self->report(false);
        },
        hold(shared_from_this()), drop);
    // ask() is called after each signal of the registry, because some registries do not announce every host
    // that comes or goes.
    signalWatch = g_dbus_connection_signal_subscribe(
        bus, watcherName, watcherName, nullptr, watcherPath, nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
        [](GDBusConnection*, const char*, const char*, const char*, const char*, GVariant*, gpointer data) {
            if (const auto self = held(data))
                self->ask();
        },
        hold(shared_from_this()), drop);
}

void StatusNotifierHosts::Watch::end() {
    if (const auto number = std::exchange(nameWatch, 0))
        g_bus_unwatch_name(number);
    if (const auto number = std::exchange(signalWatch, 0))
        g_dbus_connection_signal_unsubscribe(connection, number);
}

void StatusNotifierHosts::Watch::ask() {
    // The call has no time limit, because a time-out would wrongly count as the answer "no". While the
    // registry hangs, the answer is simply not known yet. If the registry ends, the bus ends the call with an
    // error.
    g_dbus_connection_call(connection, watcherName, watcherPath, "org.freedesktop.DBus.Properties", "Get",
                           g_variant_new("(ss)", watcherName, "IsStatusNotifierHostRegistered"),
                           G_VARIANT_TYPE("(v)"), G_DBUS_CALL_FLAGS_NO_AUTO_START, G_MAXINT, nullptr,
                           onAnswer, hold(shared_from_this()));
}

void StatusNotifierHosts::Watch::onAnswer(GObject* connection, GAsyncResult* result, gpointer data) {
    const GLibPointer<GVariant> answer(
        g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, nullptr));
    GVariant* wrapped = nullptr;
    if (answer)
        g_variant_get(answer.get(), "(v)", &wrapped);
    const GLibPointer<GVariant> value(wrapped);
    const bool present = value && g_variant_is_of_type(value.get(), G_VARIANT_TYPE_BOOLEAN) &&
                         g_variant_get_boolean(value.get());
    if (const auto self = held(data))
        self->report(present);
    drop(data);
}

StatusNotifierHosts::StatusNotifierHosts(std::function<void(bool)> changed)
    : watch(std::make_shared<Watch>()) {
    watch->changed = std::move(changed);
    SessionBus::shared().follow([weak = std::weak_ptr(watch)](GDBusConnection* connection) {
        if (const auto self = weak.lock())
            self->begin(connection);
    });
}

StatusNotifierHosts::~StatusNotifierHosts() {
    watch->changed = nullptr;
    SessionBus::shared().run([ended = std::move(watch)] { ended->end(); });
}

} // namespace mirrolet::platform
