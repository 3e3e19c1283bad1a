#pragma once

#include <string>

namespace mirrolet::platform {

/// Returns UTF-8 text in lower case, by Unicode's rules, which do not depend on the user's language. Invalid
/// bytes become U+FFFD. Any thread.
[[nodiscard]] std::string lowercased(const std::string& text);

} // namespace mirrolet::platform
