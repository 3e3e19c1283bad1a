// Replaces the log, because nearly every input of a fuzzer would write a line to the system log.

#include "platform/foundation/NSLog.h"

namespace mirrolet::platform {

void NSLog(std::string_view /*message*/) {}

} // namespace mirrolet::platform
