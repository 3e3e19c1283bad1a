#pragma once

#include <string>

namespace mirrolet::platform {

/// Returns true if the text contains the part, ignoring case. Both are UTF-8. Any thread.
[[nodiscard]] bool localizedCaseInsensitiveContains(const std::string& text, const std::string& part);

} // namespace mirrolet::platform
