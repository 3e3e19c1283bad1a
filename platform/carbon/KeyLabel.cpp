#include "platform/carbon/KeyLabel.h"

#include "platform/carbon/KeyCodes.h"
#include "platform/desktop/Desktop.h"

namespace mirrolet::platform {

std::string keyLabel(std::uint32_t virtualCode) {
    const auto evdevCode = evdevFromVirtual(virtualCode);
    return evdevCode ? desktop::Desktop::current().hotKeys().keyLabel(*evdevCode) : std::string();
}

} // namespace mirrolet::platform
