#pragma once

#include <mutex>

namespace mirrolet::platform {

using NSLock = std::mutex;

} // namespace mirrolet::platform
