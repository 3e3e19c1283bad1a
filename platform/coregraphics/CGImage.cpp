#include "platform/coregraphics/CGImage.h"

#include "platform/desktop/Desktop.h"

namespace mirrolet::platform {

CGImageRef CGWindowListCreateImage(CGRect screenBounds, std::uint32_t listOption,
                                   desktop::WindowNumber window, std::uint32_t imageOption) {
    constexpr auto ownPicture = kCGWindowImageBoundsIgnoreFraming | kCGWindowImageBestResolution;
    if (screenBounds != CGRectNull || listOption != kCGWindowListOptionIncludingWindow ||
        imageOption != ownPicture)
        return nullptr;
    return desktop::Desktop::current().capture().image(window);
}

} // namespace mirrolet::platform
