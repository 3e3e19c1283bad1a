#pragma once

namespace mirrolet::platform {

struct NSSound {
    /// Plays the desktop's alert sound. Main thread.
    static void beep();
};

} // namespace mirrolet::platform
