#include "platform/foundation/NSLog.h"

#include <gtest/gtest.h>

#include <iostream>
#include <string>

namespace mirrolet::platform {

/// Replaces NSLog(). A log line about an X error that the X11 backend did not expect fails the test.
void NSLog(std::string_view message) {
    std::cerr << std::string(message) + '\n';
    if (message.starts_with("X11: unexpected"))
        ADD_FAILURE() << message;
}

} // namespace mirrolet::platform
