// Nearly every input of a fuzzer is worth a line: the system log would be full of them.

#include "platform/foundation/NSLog.h"

namespace mirrolet::platform {

void NSLog(std::string_view /*message*/) {}

} // namespace mirrolet::platform
