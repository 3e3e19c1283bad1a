#include "platform/desktop/wayland/plasma/KeyboardLayouts.h"

#include "platform/foundation/GLibUserData.h"

#include <utility>

namespace mirrolet::platform::desktop::wayland {

namespace {

constexpr auto layoutsName = "org.kde.keyboard";
constexpr auto layoutsPath = "/Layouts";
constexpr auto layoutsInterface = "org.kde.KeyboardLayouts";

using LayoutsData = GLibUserData<KeyboardLayouts>;

} // namespace

void KeyboardLayouts::use(GDBusConnection* bus) {
    end();
    if (!bus)
        return;
    connection.reset(G_DBUS_CONNECTION(g_object_ref(bus)));
    nameWatch = g_bus_watch_name_on_connection(
        bus, layoutsName, G_BUS_NAME_WATCHER_FLAGS_NONE,
        [](GDBusConnection*, const char*, const char*, gpointer data) {
            if (const auto self = LayoutsData::held(data))
                self->ask();
        },
        [](GDBusConnection*, const char*, gpointer data) {
            if (const auto self = LayoutsData::held(data))
                self->layout = 0;
        },
        LayoutsData::hold(shared_from_this()), LayoutsData::drop);
    // KWin has two signals: another layout is active, or the list of layouts has changed. Both may change the
    // number.
    signalWatch = g_dbus_connection_signal_subscribe(
        bus, layoutsName, layoutsInterface, nullptr, layoutsPath, nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
        [](GDBusConnection*, const char*, const char*, const char*, const char*, GVariant*, gpointer data) {
            if (const auto self = LayoutsData::held(data))
                self->ask();
        },
        LayoutsData::hold(shared_from_this()), LayoutsData::drop);
}

void KeyboardLayouts::end() {
    if (const auto watch = std::exchange(nameWatch, 0))
        g_bus_unwatch_name(watch);
    if (const auto watch = std::exchange(signalWatch, 0))
        g_dbus_connection_signal_unsubscribe(connection.get(), watch);
    connection.reset();
}

void KeyboardLayouts::ask() {
    g_dbus_connection_call(connection.get(), layoutsName, layoutsPath, layoutsInterface, "getLayout", nullptr,
                           G_VARIANT_TYPE("(u)"), G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr, onAnswer,
                           LayoutsData::hold(shared_from_this()));
}

void KeyboardLayouts::onAnswer(GObject* source, GAsyncResult* result, gpointer data) {
    const GLibPointer<GVariant> answer(
        g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr));
    std::uint32_t number = 0;
    if (answer)
        g_variant_get(answer.get(), "(u)", &number);
    if (const auto self = LayoutsData::held(data); self && answer)
        self->layout = number;
    LayoutsData::drop(data);
}

} // namespace mirrolet::platform::desktop::wayland
