#pragma once

#include "platform/foundation/Mutex.h"

namespace mirrolet::platform {

using NSLock = Mutex;

} // namespace mirrolet::platform
