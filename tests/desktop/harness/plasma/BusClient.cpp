#include "tests/desktop/harness/plasma/BusClient.h"

#include "tests/desktop/harness/HarnessError.h"
#include "tests/desktop/harness/SessionBus.h"
#include "tests/desktop/harness/Wait.h"

#include <gio/gio.h>
#include <gio/gunixfdlist.h>

namespace mirrolet::harness {

namespace {

[[noreturn]] void fail(const std::string& what, GError* error) {
    const std::string reason = error == nullptr ? "" : error->message;
    g_clear_error(&error);
    throw HarnessError(what + ": " + reason);
}

struct UnrefList {
    void operator()(GUnixFDList* list) const { g_object_unref(list); }
};

} // namespace

void UnrefValue::operator()(GVariant* value) const {
    g_variant_unref(value);
}

void BusClient::Close::operator()(GDBusConnection* connection) const {
    g_object_unref(connection);
}

BusClient::BusClient(const SessionBus& bus) {
    const auto address = bus.with({}).at("DBUS_SESSION_BUS_ADDRESS");
    constexpr auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                             G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    GError* error = nullptr;
    connection.reset(
        g_dbus_connection_new_for_address_sync(address.c_str(), flags, nullptr, nullptr, &error));
    if (!connection)
        fail("no session bus", error);
}

BusValue BusClient::call(const Method& method, GVariant* arguments, int descriptor) const {
    const std::unique_ptr<GUnixFDList, UnrefList> descriptors(g_unix_fd_list_new());
    if (descriptor >= 0)
        g_unix_fd_list_append(descriptors.get(), descriptor, nullptr);
    GError* error = nullptr;
    BusValue results(g_dbus_connection_call_with_unix_fd_list_sync(
        connection.get(), method.service.c_str(), method.object.c_str(), method.interface.c_str(),
        method.name.c_str(), arguments, nullptr, G_DBUS_CALL_FLAGS_NONE, static_cast<int>(patience.count()),
        descriptors.get(), nullptr, nullptr, &error));
    if (!results)
        fail(method.interface + "." + method.name, error);
    return results;
}

} // namespace mirrolet::harness
