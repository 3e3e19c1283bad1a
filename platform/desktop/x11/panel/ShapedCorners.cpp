#include "platform/desktop/x11/panel/ShapedCorners.h"

#include "platform/desktop/PixelRects.h"
#include "platform/desktop/x11/mirror/RoundedRegion.h"
#include "platform/desktop/x11/server/CompositingManager.h"
#include "platform/desktop/x11/server/ExpectErrors.h"
#include "platform/desktop/x11/server/XcbRectangle.h"

#include <xcb/shape.h>

#include <vector>

namespace mirrolet::platform::desktop::x11 {

ShapedCorners::ShapedCorners(X11Connection& connection, CompositingManager& compositingManager,
                             xcb_window_t window)
    : connection(connection), compositingManager(compositingManager), window(window) {
    subscription = compositingManager.onChange([this] {
        const MutexLock lock(cornersMutex);
        apply();
    });
}

void ShapedCorners::set(PixelSize newSize, double newRadius) {
    const MutexLock lock(cornersMutex);
    size = newSize;
    radius = newRadius;
    apply();
}

void ShapedCorners::apply() {
    if (!connection.extensions().shape || size == PixelSize{})
        return;
    const ExpectErrors gone(connection, windowGone); // Qt may have destroyed its window.
    if (compositingManager.running() || radius <= 0) {
        xcb_shape_mask(connection.xcb(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, window, 0, 0,
                       XCB_PIXMAP_NONE);
    } else {
        std::vector<xcb_rectangle_t> rectangles;
        for (const auto& band : roundedRegion(size, radius))
            rectangles.push_back(toRectangle(band));
        xcb_shape_rectangles(connection.xcb(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING,
                             XCB_CLIP_ORDERING_YX_BANDED, window, 0, 0,
                             static_cast<std::uint32_t>(rectangles.size()), rectangles.data());
    }
    connection.flush();
}

} // namespace mirrolet::platform::desktop::x11
