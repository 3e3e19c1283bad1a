#include "platform/appkit/ApplicationService.h"

#include "platform/dispatch/DispatchQueue.h"
#include "platform/foundation/GLibPointer.h"
#include "platform/foundation/SessionBus.h"

#include <string_view>
#include <utility>

namespace mirrolet::platform {

namespace {

constexpr auto name = "app.mirrolet.Mirrolet";
constexpr auto path = "/app/mirrolet/Mirrolet";
constexpr auto description = R"(<node><interface name="org.freedesktop.Application">
  <method name="Activate"><arg type="a{sv}" name="platform_data" direction="in"/></method>
  <method name="Open"><arg type="as" name="uris" direction="in"/>
    <arg type="a{sv}" name="platform_data" direction="in"/></method>
  <method name="ActivateAction"><arg type="s" name="action_name" direction="in"/>
    <arg type="av" name="parameter" direction="in"/><arg type="a{sv}" name="platform_data" direction="in"/></method>
</interface></node>)";

} // namespace

// Only the thread of the session bus uses the members, except `activate`, which only the main thread uses.
struct ApplicationService::Service : std::enable_shared_from_this<Service> {
    std::function<void()> activate; ///< Empty once the ApplicationService is destroyed.
    GDBusConnection* connection = nullptr;
    guint object = 0;
    guint ownedName = 0;

    void begin(GDBusConnection* bus);
    void end();
    static void onCall(GDBusConnection*, const char*, const char*, const char*, const char* method, GVariant*,
                       GDBusMethodInvocation* call, gpointer data);
};

void ApplicationService::Service::onCall(GDBusConnection*, const char*, const char*, const char*,
                                         const char* method, GVariant*, GDBusMethodInvocation* call,
                                         gpointer data) {
    g_dbus_method_invocation_return_value(call, nullptr);
    // ActivateAction is ignored, because the program offers no actions. The other methods show the program.
    if (std::string_view(method) == "ActivateAction")
        return;
    DispatchQueue::main().async([weak = *static_cast<std::weak_ptr<Service>*>(data)] {
        if (const auto self = weak.lock(); self && self->activate)
            self->activate();
    });
}

void ApplicationService::Service::begin(GDBusConnection* bus) {
    end();
    if (!bus)
        return;
    connection = bus;
    static const GDBusInterfaceVTable handlers = {onCall, nullptr, nullptr, {}};
    const GLibPointer<GDBusNodeInfo> node(g_dbus_node_info_new_for_xml(description, nullptr));
    // The object is registered before the name, because another process may call the object as soon as the
    // name exists.
    object = g_dbus_connection_register_object(
        bus, path, node->interfaces[0], &handlers, new std::weak_ptr<Service>(weak_from_this()),
        [](gpointer data) { delete static_cast<std::weak_ptr<Service>*>(data); }, nullptr);
    ownedName = g_bus_own_name_on_connection(bus, name, G_BUS_NAME_OWNER_FLAGS_NONE, nullptr, nullptr,
                                             nullptr, nullptr);
}

void ApplicationService::Service::end() {
    if (const auto owned = std::exchange(ownedName, 0))
        g_bus_unown_name(owned);
    if (const auto registered = std::exchange(object, 0))
        g_dbus_connection_unregister_object(connection, registered);
}

ApplicationService::ApplicationService(std::function<void()> activate)
    : service(std::make_shared<Service>()) {
    service->activate = std::move(activate);
    SessionBus::shared().follow([weak = std::weak_ptr(service)](GDBusConnection* connection) {
        if (const auto self = weak.lock())
            self->begin(connection);
    });
}

ApplicationService::~ApplicationService() {
    service->activate = nullptr;
    SessionBus::shared().run([ended = std::move(service)] { ended->end(); });
}

} // namespace mirrolet::platform
