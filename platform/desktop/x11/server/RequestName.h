#pragma once

#include "platform/desktop/x11/server/Extensions.h"

#include <cstdint>
#include <string>

namespace mirrolet::platform::desktop::x11 {

/// The protocol's name of a request that this program makes, such as "RENDER CreatePicture". The numbers of
/// any other request.
std::string requestName(const Extensions& extensions, std::uint8_t majorOpcode, std::uint16_t minorOpcode);

} // namespace mirrolet::platform::desktop::x11
