// Runs a tray for status icons on the session bus, for tests. Programs announce their icons to the registry
// of the tray, and the host of the tray displays them. Prints "ready" when the registry owns its D-Bus name,
// "item NAME" for each new icon and "gone" for each removed icon. Reads the commands "host 1" (adds the
// host), "host 0" (removes the host) and "click" (clicks the newest icon).

#include <gio/gio.h>

#include <cstdio>
#include <cstring>
#include <string>

namespace {

constexpr auto watcherName = "org.kde.StatusNotifierWatcher";
constexpr auto watcherPath = "/StatusNotifierWatcher";
constexpr auto description = R"(<node><interface name="org.kde.StatusNotifierWatcher">
  <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  <property name="ProtocolVersion" type="i" access="read"/>
  <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
  <signal name="StatusNotifierHostRegistered"/>
  <signal name="StatusNotifierHostUnregistered"/>
  <signal name="StatusNotifierItemRegistered"><arg type="s"/></signal>
</interface></node>)";

GDBusConnection* bus;
bool hostThere;
std::string latestItem;

void say(const std::string& line) {
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);
}

void onCall(GDBusConnection*, const char* sender, const char*, const char*, const char*, GVariant* arguments,
            GDBusMethodInvocation* call, gpointer) {
    const char* item = nullptr;
    g_variant_get(arguments, "(&s)", &item);
    latestItem = *item == '/' ? sender : item;
    g_dbus_method_invocation_return_value(call, nullptr);
    g_dbus_connection_emit_signal(bus, nullptr, watcherPath, watcherName, "StatusNotifierItemRegistered",
                                  g_variant_new("(s)", item), nullptr);
    say("item " + latestItem);
    g_bus_watch_name_on_connection(
        bus, sender, G_BUS_NAME_WATCHER_FLAGS_NONE, nullptr,
        [](GDBusConnection*, const char*, gpointer) { say("gone"); }, nullptr, nullptr);
}

GVariant* onGet(GDBusConnection*, const char*, const char*, const char*, const char* property, GError**,
                gpointer) {
    if (std::strcmp(property, "IsStatusNotifierHostRegistered") == 0)
        return g_variant_new_boolean(hostThere);
    if (std::strcmp(property, "ProtocolVersion") == 0)
        return g_variant_new_int32(0);
    return g_variant_new_strv(nullptr, 0);
}

gboolean onCommand(GIOChannel* input, GIOCondition, gpointer loop) {
    char* text = nullptr;
    if (g_io_channel_read_line(input, &text, nullptr, nullptr, nullptr) != G_IO_STATUS_NORMAL) {
        g_main_loop_quit(static_cast<GMainLoop*>(loop));
        return G_SOURCE_REMOVE;
    }
    const std::string command = g_strchomp(text);
    g_free(text);
    if (command == "click")
        g_dbus_connection_call(bus, latestItem.c_str(), "/StatusNotifierItem", "org.kde.StatusNotifierItem",
                               "Activate", g_variant_new("(ii)", 10, 10), nullptr, G_DBUS_CALL_FLAGS_NONE, -1,
                               nullptr, nullptr, nullptr);
    if (command.starts_with("host ")) {
        hostThere = command == "host 1";
        g_dbus_connection_emit_signal(
            bus, nullptr, watcherPath, watcherName,
            hostThere ? "StatusNotifierHostRegistered" : "StatusNotifierHostUnregistered", nullptr, nullptr);
    }
    return G_SOURCE_CONTINUE;
}

} // namespace

int main() {
    bus = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
    if (!bus)
        return 1;
    static const GDBusInterfaceVTable handlers = {onCall, onGet, nullptr, {}};
    auto* interfaces = g_dbus_node_info_new_for_xml(description, nullptr);
    g_dbus_connection_register_object(bus, watcherPath, interfaces->interfaces[0], &handlers, nullptr,
                                      nullptr, nullptr);
    auto* loop = g_main_loop_new(nullptr, FALSE);
    g_bus_own_name_on_connection(
        bus, watcherName, G_BUS_NAME_OWNER_FLAGS_NONE,
        [](GDBusConnection*, const char*, gpointer) { say("ready"); }, nullptr, nullptr, nullptr);
    g_io_add_watch(g_io_channel_unix_new(0), static_cast<GIOCondition>(G_IO_IN | G_IO_HUP), onCommand, loop);
    g_main_loop_run(loop);
}
