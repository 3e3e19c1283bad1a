#pragma once

#include <cstdint>
#include <unistd.h>

namespace mirrolet::platform {

/// Describes this process. Any thread.
class NSProcessInfo {
  public:
    static NSProcessInfo processInfo() { return {}; }
    [[nodiscard]] std::int32_t processIdentifier() const { return getpid(); }
};

} // namespace mirrolet::platform
