#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace mirrolet {

/// The windows that the monitor looks at. The settings file contains the raw value.
enum class MonitoringScope {
    allWindows,
    specificApps, ///< Only the windows of the selected applications.
};

[[nodiscard]] std::string rawValue(MonitoringScope scope);
[[nodiscard]] std::optional<MonitoringScope> monitoringScopeFromRawValue(std::string_view raw);

} // namespace mirrolet
