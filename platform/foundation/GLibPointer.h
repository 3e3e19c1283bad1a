#pragma once

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

#include <memory>

namespace mirrolet::platform {

/// Frees an object of GLib with the function that GLib provides for the object's type. A new type needs a new
/// overload here; without one the code does not compile.
struct GLibRelease {
    void operator()(char* text) const { g_free(text); }
    void operator()(char** list) const { g_strfreev(list); }
    void operator()(GError* error) const { g_error_free(error); }
    void operator()(GKeyFile* file) const { g_key_file_unref(file); }
    void operator()(GSource* source) const { g_source_unref(source); }
    void operator()(GVariant* value) const { g_variant_unref(value); }
    void operator()(GDBusNodeInfo* node) const { g_dbus_node_info_unref(node); }
    void operator()(GAppInfo* application) const { g_object_unref(application); }
    void operator()(GDBusConnection* connection) const { g_object_unref(connection); }
    void operator()(GDesktopAppInfo* application) const { g_object_unref(application); }
};

/// Owns an object that GLib has allocated.
template <typename T> using GLibPointer = std::unique_ptr<T, GLibRelease>;

} // namespace mirrolet::platform
