#pragma once

#include <string>

namespace mirrolet::platform {

/// Returns UTF-8 text in lower case, by the rules of Unicode rather than of a language. Broken bytes become
/// U+FFFD. Any thread.
[[nodiscard]] std::string lowercased(const std::string& text);

} // namespace mirrolet::platform
