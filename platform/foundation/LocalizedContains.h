#pragma once

#include <string>

namespace mirrolet::platform {

/// Whether the text (UTF-8) contains the part, whatever the case of either. Any thread.
[[nodiscard]] bool localizedCaseInsensitiveContains(const std::string& text, const std::string& part);

} // namespace mirrolet::platform
