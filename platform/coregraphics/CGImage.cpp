#include "platform/coregraphics/CGImage.h"

#include "platform/desktop/Desktop.h"
#include "platform/desktop/WindowCapture.h"
#include "platform/foundation/NSLog.h"

#include <string>
#include <variant>

namespace mirrolet::platform {

namespace {

/// Logs why a capture failed. A window that is gone is the usual end of a mirror, so it is not logged. The
/// backend itself logs the other failures that are missing here.
void logUnexpected(desktop::CaptureFailure failure, CGWindowID window) {
    const auto log = [window](const char* reason) {
        NSLog("Window " + std::to_string(window) + " cannot be mirrored: " + reason);
    };
    if (failure == desktop::CaptureFailure::notPermitted)
        log("this desktop does not permit it.");
    if (failure == desktop::CaptureFailure::nothingToSee)
        log("it never shows anything.");
}

} // namespace

int CGImageGetWidth(const CGImage& image) {
    return image.size().width;
}

int CGImageGetHeight(const CGImage& image) {
    return image.size().height;
}

CGImageRef CGWindowListCreateImage(CGRect screenBounds, std::uint32_t listOption, CGWindowID window,
                                   std::uint32_t imageOption) {
    constexpr auto ownPicture = kCGWindowImageBoundsIgnoreFraming | kCGWindowImageBestResolution;
    if (screenBounds != CGRectNull || listOption != kCGWindowListOptionIncludingWindow ||
        imageOption != ownPicture)
        return nullptr;
    const auto result = desktop::Desktop::current().capture().capture(window);
    if (const auto* failure = std::get_if<desktop::CaptureFailure>(&result)) {
        logUnexpected(*failure, window);
        return nullptr;
    }
    return std::get<CGImageRef>(result);
}

} // namespace mirrolet::platform
