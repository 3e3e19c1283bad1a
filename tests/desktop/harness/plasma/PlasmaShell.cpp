#include "tests/desktop/harness/plasma/PlasmaShell.h"

#include "tests/desktop/harness/HarnessError.h"
#include "tests/desktop/harness/plasma/PlasmaSession.h"

#include <gio/gio.h>

namespace mirrolet::harness {

PlasmaShell::PlasmaShell(const PlasmaSession& session) : bus(session.bus()) {}

void PlasmaShell::switchToDesktop(int index) const {
    const auto done = bus.call({"org.kde.KWin", "/KWin", "org.kde.KWin", "setCurrentDesktop"},
                               g_variant_new("(i)", index + 1));
    gboolean switched = FALSE;
    g_variant_get(done.get(), "(b)", &switched);
    if (switched == FALSE)
        throw HarnessError("KWin did not switch to desktop " + std::to_string(index));
}

bool PlasmaShell::hasShortcuts(const std::string& component) const {
    try {
        const auto path =
            bus.call({"org.kde.kglobalaccel", "/kglobalaccel", "org.kde.KGlobalAccel", "getComponent"},
                     g_variant_new("(s)", component.c_str()));
        const char* object = nullptr;
        g_variant_get(path.get(), "(&o)", &object);
        const auto answer =
            bus.call({"org.kde.kglobalaccel", object, "org.kde.kglobalaccel.Component", "isActive"}, nullptr);
        gboolean active = FALSE;
        g_variant_get(answer.get(), "(b)", &active);
        return active != FALSE;
    } catch (const HarnessError&) { // There is no such component.
        return false;
    }
}

} // namespace mirrolet::harness
