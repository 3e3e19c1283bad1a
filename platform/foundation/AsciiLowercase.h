#pragma once

#include <string>
#include <string_view>

namespace mirrolet::platform {

/// Returns the text with A to Z in lower case and every other byte unchanged. Meant for identifiers, which
/// must not depend on the locale.
std::string asciiLowercase(std::string_view text);

} // namespace mirrolet::platform
