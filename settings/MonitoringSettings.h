#pragma once

#include "settings/MonitoringScope.h"

#include <set>
#include <string>

namespace mirrolet {

/// A copy of the settings that the monitor needs. The monitor reads the copy on its own thread.
struct MonitoringSettings {
    MonitoringScope scope = MonitoringScope::specificApps;
    std::set<std::string> selectedAppIdentifiers;
    double pollInterval = 2; ///< In seconds.

    friend bool operator==(const MonitoringSettings&, const MonitoringSettings&) = default;
};

} // namespace mirrolet
