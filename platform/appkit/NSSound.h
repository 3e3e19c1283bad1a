#pragma once

namespace mirrolet::platform {

struct NSSound {
    /// The desktop's alert sound. Main thread.
    static void beep();
};

} // namespace mirrolet::platform
