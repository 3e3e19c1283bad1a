#include "platform/appkit/NSStatusBarButton.h"

namespace mirrolet::platform {

void NSStatusBarButton::setImage(std::shared_ptr<NSImage> image) {
    shown = std::move(image);
    if (changed)
        changed();
}

void NSStatusBarButton::setTitle(std::string title) {
    text = std::move(title);
    if (changed)
        changed();
}

} // namespace mirrolet::platform
