#include "platform/desktop/WindowCapture.h"

namespace mirrolet::platform::desktop {

std::shared_ptr<const WindowImage> WindowCapture::image(WindowNumber window) {
    const auto result = capture(window);
    const auto* image = std::get_if<std::shared_ptr<const WindowImage>>(&result);
    return image ? *image : nullptr;
}

} // namespace mirrolet::platform::desktop
