#pragma once

#include "platform/desktop/x11/server/Extensions.h"

#include <cstdint>
#include <string>

namespace mirrolet::platform::desktop::x11 {

/// Returns the protocol's name of a request that this program makes, such as "RENDER CreatePicture". Returns
/// a text with the request's numbers for any other request.
std::string requestName(const Extensions& extensions, std::uint8_t majorOpcode, std::uint16_t minorOpcode);

} // namespace mirrolet::platform::desktop::x11
