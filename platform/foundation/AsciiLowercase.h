#pragma once

#include <string>
#include <string_view>

namespace mirrolet::platform {

/// The text with A to Z made lower case; every other byte as it is. For identifiers, which no locale may
/// change.
std::string asciiLowercase(std::string_view text);

} // namespace mirrolet::platform
