#pragma once

#include <string_view>

namespace mirrolet::platform {

/// Writes one line to the system log and to standard error. Any thread.
void NSLog(std::string_view message);

} // namespace mirrolet::platform
