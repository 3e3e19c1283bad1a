#pragma once

#include "settings/MonitoringScope.h"

#include <set>
#include <string>

namespace mirrolet {

/// The settings that the monitor needs, as a copy that can cross threads.
struct MonitoringSettings {
    MonitoringScope scope = MonitoringScope::specificApps;
    std::set<std::string> selectedAppIdentifiers;
    double pollInterval = 2; ///< Seconds.

    friend bool operator==(const MonitoringSettings&, const MonitoringSettings&) = default;
};

} // namespace mirrolet
