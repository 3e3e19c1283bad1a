#include "platform/appkit/NSStatusBar.h"

namespace mirrolet::platform {

NSStatusBar& NSStatusBar::system() {
    static NSStatusBar bar;
    return bar;
}

std::shared_ptr<NSStatusItem> NSStatusBar::statusItem(double) {
    return std::make_shared<NSStatusItem>();
}

} // namespace mirrolet::platform
