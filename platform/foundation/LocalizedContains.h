#pragma once

#include <string>

namespace mirrolet::platform {

/// Returns whether the text (UTF-8) contains the part, ignoring case. Any thread.
[[nodiscard]] bool localizedCaseInsensitiveContains(const std::string& text, const std::string& part);

} // namespace mirrolet::platform
