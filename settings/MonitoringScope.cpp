#include "settings/MonitoringScope.h"

namespace mirrolet {

std::string rawValue(MonitoringScope scope) {
    return scope == MonitoringScope::allWindows ? "allWindows" : "specificApps";
}

std::optional<MonitoringScope> monitoringScopeFromRawValue(std::string_view raw) {
    for (const auto scope : {MonitoringScope::allWindows, MonitoringScope::specificApps}) {
        if (rawValue(scope) == raw)
            return scope;
    }
    return std::nullopt;
}

} // namespace mirrolet
