// Replaces NSLog() by a function that does nothing. Otherwise nearly every input of a fuzzer would write a
// line to the system log.

#include "platform/foundation/NSLog.h"

namespace mirrolet::platform {

void NSLog(std::string_view /*message*/) {}

} // namespace mirrolet::platform
