#include "platform/foundation/NSLog.h"

#include <gtest/gtest.h>

#include <iostream>
#include <string>

namespace mirrolet::platform {

/// Replaces the platform layer's log. An error of the X server that no request has announced fails the test.
void NSLog(std::string_view message) {
    std::cerr << std::string(message) + '\n';
    if (message.starts_with("X11: unexpected"))
        ADD_FAILURE() << message;
}

} // namespace mirrolet::platform
