#include "platform/desktop/x11/PictureScaler.h"

#include "platform/desktop/x11/PixelBox.h"

#include <cmath>
#include <cstddef>
#include <utility>

namespace mirrolet::platform::desktop::x11 {

namespace {

/// The pixels of a step's result that read any of pixels `from` to `to` of the step before. One more on each
/// side than the filter reaches, for the server's rounding.
std::pair<int, int> reached(int from, int to, double scale) {
    return {static_cast<int>(std::floor((from - 1) / scale)) - 1,
            static_cast<int>(std::ceil((to + 1) / scale)) + 1};
}

PixelRect reached(const PixelRect& changed, const ScaleStep& step) {
    if (isEmpty(changed))
        return {};
    const auto [left, right] = reached(changed.x, changed.x + changed.width, step.x.scale);
    const auto [top, bottom] = reached(changed.y, changed.y + changed.height, step.y.scale);
    return intersection({left, top, right - left, bottom - top}, {0, 0, step.x.pixels, step.y.pixels});
}

xcb_render_fixed_t fixed(double value) {
    return static_cast<xcb_render_fixed_t>(std::lround(value * 65536));
}

/// The destination's place is also the place in the source's scaled coordinates, so that a part comes out
/// just as it does in the whole.
void scale(X11Connection& connection, xcb_render_picture_t from, xcb_render_picture_t to, int left, int top,
           const PixelRect& part) {
    xcb_render_composite(connection.xcb(), XCB_RENDER_PICT_OP_SRC, from, XCB_RENDER_PICTURE_NONE, to,
                         static_cast<std::int16_t>(part.x), static_cast<std::int16_t>(part.y), 0, 0,
                         static_cast<std::int16_t>(left + part.x), static_cast<std::int16_t>(top + part.y),
                         static_cast<std::uint16_t>(part.width), static_cast<std::uint16_t>(part.height));
}

} // namespace

PixelRect PictureScaler::setImage(std::shared_ptr<const X11WindowImage> newImage, PixelSize newSize) {
    const auto before = std::exchange(image, std::move(newImage));
    const bool sizeChanged = std::exchange(size, newSize) != newSize;
    if (before == image && !sizeChanged)
        return {};
    const bool sameContent = before && image && before->content() == image->content();
    if (sameContent && !sizeChanged)
        return markStale(image->content()->changedBetween(before->age(), image->age()));
    rebuild();
    return {0, 0, size.width, size.height};
}

void PictureScaler::rebuild() {
    source = {};
    steps.clear();
    if (!image || image->content()->pixmapId() == 0) {
        levels.clear();
        return;
    }
    const auto& content = *image->content();
    const auto picture = content.pictureRect();
    steps = planScaling(content.size(), size);
    source = makePicture(connection, content.pixmapId(), content.opaqueFormat());
    setTransform(source.id(), steps.front(), picture.x, picture.y);
    levels.resize(steps.size() - 1);
    for (std::size_t i = 0; i < levels.size(); ++i) {
        const PixelSize levelSize{steps[i].x.pixels, steps[i].y.pixels};
        if (levels[i].surface.size != levelSize)
            levels[i].surface = makeSurface(connection, levelSize, 24, formats.opaque24);
        levels[i].stale = {0, 0, levelSize.width, levelSize.height};
        setTransform(levels[i].surface.picture.id(), steps[i + 1], 0, 0);
    }
}

void PictureScaler::setTransform(xcb_render_picture_t picture, const ScaleStep& step, int left, int top) {
    const xcb_render_transform_t transform = {
        fixed(step.x.scale), 0, fixed(left), 0, fixed(step.y.scale), fixed(top), 0, 0, fixed(1)};
    xcb_render_set_picture_transform(connection.xcb(), picture, transform);
}

PixelRect PictureScaler::markStale(PixelRect changed) {
    for (std::size_t i = 0; i < steps.size(); ++i) {
        changed = reached(changed, steps[i]);
        if (i < levels.size())
            levels[i].stale = united(levels[i].stale, changed);
    }
    return changed;
}

void PictureScaler::refreshLevels() {
    auto from = source.id();
    for (auto& level : levels) {
        const auto stale = std::exchange(level.stale, {});
        if (!isEmpty(stale))
            scale(connection, from, level.surface.picture.id(), 0, 0, stale);
        from = level.surface.picture.id();
    }
}

void PictureScaler::draw(xcb_render_picture_t destination, int left, int top, PixelRect part) {
    if (isEmpty(part))
        return;
    if (!source) {
        const xcb_rectangle_t area{
            static_cast<std::int16_t>(left + part.x), static_cast<std::int16_t>(top + part.y),
            static_cast<std::uint16_t>(part.width), static_cast<std::uint16_t>(part.height)};
        const xcb_render_color_t black{0, 0, 0, 0xffff};
        xcb_render_fill_rectangles(connection.xcb(), XCB_RENDER_PICT_OP_SRC, destination, black, 1, &area);
        return;
    }
    refreshLevels();
    scale(connection, levels.empty() ? source.id() : levels.back().surface.picture.id(), destination, left,
          top, part);
}

} // namespace mirrolet::platform::desktop::x11
