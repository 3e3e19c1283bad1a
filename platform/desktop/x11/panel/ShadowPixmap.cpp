#include "platform/desktop/x11/panel/ShadowPixmap.h"

#include "platform/desktop/x11/panel/SoftShadow.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace mirrolet::platform::desktop::x11 {

namespace {

ServerPixmap makePixmap(X11Connection& connection, PixelSize size) {
    const auto id = xcb_generate_id(connection.xcb());
    xcb_create_pixmap(connection.xcb(), argbDepth, id, connection.root(),
                      static_cast<std::uint16_t>(size.width), static_cast<std::uint16_t>(size.height));
    return {connection, id};
}

/// Copies a pixmap into a longer one on the server. Fills the longer one by repeating the line in the middle.
class Lengthening {
  public:
    enum class Direction { horizontal, vertical };

    /// `breadth` is the side that has the same length in both pixmaps.
    Lengthening(xcb_connection_t* xcb, xcb_gcontext_t context, Direction direction, int breadth)
        : xcb(xcb), context(context), direction(direction), breadth(breadth) {}

    void run(xcb_pixmap_t from, int fromLength, xcb_pixmap_t to, int toLength) const {
        const int middle = fromLength / 2;
        const int rest = fromLength - middle - 1;
        copy(from, to, 0, 0, middle + 1);
        copy(from, to, middle + 1, toLength - rest, rest);
        const int wanted = toLength - rest - middle;
        for (int done = 1; done < wanted; done *= 2) // Each copy doubles the repeated part.
            copy(to, to, middle, middle + done, std::min(done, wanted - done));
    }

  private:
    void copy(xcb_pixmap_t from, xcb_pixmap_t to, int source, int target, int length) const {
        const auto at = static_cast<std::int16_t>(source);
        const auto there = static_cast<std::int16_t>(target);
        const auto along = static_cast<std::uint16_t>(length);
        const auto across = static_cast<std::uint16_t>(breadth);
        if (direction == Direction::horizontal)
            xcb_copy_area(xcb, from, to, context, at, 0, there, 0, along, across);
        else
            xcb_copy_area(xcb, from, to, context, 0, at, 0, there, across, along);
    }

    xcb_connection_t* xcb;
    xcb_gcontext_t context;
    Direction direction;
    int breadth;
};

} // namespace

ServerPixmap ShadowPixmap::make(PixelSize panel, double cornerRadius, const PanelShadow& shadow) {
    const double radius = std::min(cornerRadius, std::min(panel.width, panel.height) / 2.0);
    const int corners = 2 * (reachOf(shadow) + static_cast<int>(std::ceil(radius))) + 1;
    const PixelSize smallest{std::min(panel.width, corners), std::min(panel.height, corners)};
    computeCore({smallest, radius, shadow});

    const int margins = 2 * reachOf(shadow);
    const PixelSize from{smallest.width + margins, smallest.height + margins};
    const PixelSize to{panel.width + margins, panel.height + margins};
    const auto wide = makePixmap(connection, {to.width, from.height});
    auto full = makePixmap(connection, to);
    using Direction = Lengthening::Direction;
    Lengthening(connection.xcb(), context.id(), Direction::horizontal, from.height)
        .run(core.id(), from.width, wide.id(), to.width);
    Lengthening(connection.xcb(), context.id(), Direction::vertical, to.width)
        .run(wide.id(), from.height, full.id(), to.height);
    return full;
}

void ShadowPixmap::computeCore(const Key& key) {
    if (core && key == coreKey)
        return;
    const auto bitmap = softShadow(key.panel, key.cornerRadius, key.shadow);
    Surface surface{makePixmap(connection, bitmap.size), {}, bitmap.size};
    upload(connection, surface, bitmap);
    if (!context) {
        const std::uint32_t noExposures = 0;
        context = {connection, xcb_generate_id(connection.xcb())};
        xcb_create_gc(connection.xcb(), context.id(), surface.pixmap.id(), XCB_GC_GRAPHICS_EXPOSURES,
                      &noExposures);
    }
    core = std::move(surface.pixmap);
    coreKey = key;
}

} // namespace mirrolet::platform::desktop::x11
