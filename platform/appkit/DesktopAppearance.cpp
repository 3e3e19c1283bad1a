#include "platform/appkit/DesktopAppearance.h"

#include "platform/dispatch/DispatchQueue.h"
#include "platform/foundation/GLibPointer.h"
#include "platform/foundation/SessionBus.h"

#include <QApplication>
#include <QPalette>

#include <cstring>

namespace mirrolet::platform {

namespace {

constexpr const char* portal = "org.freedesktop.portal.Desktop";
constexpr const char* portalPath = "/org/freedesktop/portal/desktop";
constexpr const char* portalSettings = "org.freedesktop.portal.Settings";
constexpr const char* appearance = "org.freedesktop.appearance";
constexpr const char* colorScheme = "color-scheme";
constexpr guint32 prefersDark = 1;

/// Reads the user's choice from a value of the desktop portal and applies it on the main thread. The value is
/// wrapped in one or two variants, depending on the portal's version. A value that is not a number is
/// ignored.
void take(GVariant* value) {
    GLibPointer<GVariant> inner(g_variant_ref(value));
    while (g_variant_is_of_type(inner.get(), G_VARIANT_TYPE_VARIANT))
        inner.reset(g_variant_get_variant(inner.get()));
    if (!g_variant_is_of_type(inner.get(), G_VARIANT_TYPE_UINT32))
        return;
    const bool dark = g_variant_get_uint32(inner.get()) == prefersDark;
    DispatchQueue::main().async([dark] { DesktopAppearance::setDark(dark); });
}

void answered(GObject* connection, GAsyncResult* result, gpointer /*data*/) {
    const GLibPointer<GVariant> reply(
        g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, nullptr));
    // A failed call means that this desktop has no portal, so Qt's palette stays as it is.
    if (!reply)
        return;
    const GLibPointer<GVariant> value(g_variant_get_child_value(reply.get(), 0));
    take(value.get());
}

void changed(GDBusConnection* /*connection*/, const gchar* /*sender*/, const gchar* /*path*/,
             const gchar* /*interface*/, const gchar* /*signal*/, GVariant* parameters, gpointer /*data*/) {
    if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ssv)")))
        return;
    const gchar* group = nullptr;
    const gchar* key = nullptr;
    GVariant* setting = nullptr;
    g_variant_get(parameters, "(&s&s@v)", &group, &key, &setting);
    const GLibPointer<GVariant> value(setting);
    if (std::strcmp(key, colorScheme) == 0)
        take(value.get());
}

void followScheme(GDBusConnection* connection) {
    if (!connection)
        return;
    g_dbus_connection_signal_subscribe(connection, portal, portalSettings, "SettingChanged", portalPath,
                                       appearance, G_DBUS_SIGNAL_FLAGS_NONE, changed, nullptr, nullptr);
    g_dbus_connection_call(connection, portal, portalPath, portalSettings, "Read",
                           g_variant_new("(ss)", appearance, colorScheme), G_VARIANT_TYPE("(v)"),
                           G_DBUS_CALL_FLAGS_NONE, -1, nullptr, answered, nullptr);
}

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

QPalette darkened(QPalette palette) {
    palette.setColor(QPalette::Window, QColor(45, 45, 48));
    palette.setColor(QPalette::Base, QColor(30, 30, 32));
    palette.setColor(QPalette::AlternateBase, QColor(38, 38, 41));
    palette.setColor(QPalette::Button, QColor(55, 55, 58));
    palette.setColor(QPalette::ToolTipBase, QColor(55, 55, 58));
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(role, QColor(245, 245, 247));
    palette.setColor(QPalette::PlaceholderText, QColor(245, 245, 247, 128));
    return palette;
}

bool darkenedHere = false;

} // namespace

void DesktopAppearance::follow() {
    SessionBus::shared().follow(followScheme);
}

void DesktopAppearance::setDark(bool dark) {
    if (!qApp || dark == darkenedHere)
        return;
    if (dark && isDark(QApplication::palette()))
        return;
    darkenedHere = dark;
    QApplication::setPalette(dark ? darkened(QApplication::palette()) : QPalette());
}

} // namespace mirrolet::platform
