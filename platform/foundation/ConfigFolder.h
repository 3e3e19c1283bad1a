#pragma once

#include <string>

namespace mirrolet::platform {

/// Returns the folder for the user's configuration: `XDG_CONFIG_HOME`, or `.config` in the home folder if the
/// variable is unset, empty or a relative path.
std::string userConfigFolder();

} // namespace mirrolet::platform
