#pragma once

#include <string>

namespace mirrolet::platform {

/// UTF-8 text in lower case, by Unicode's rules and no language's. Broken bytes become U+FFFD. Any thread.
[[nodiscard]] std::string lowercased(const std::string& text);

} // namespace mirrolet::platform
