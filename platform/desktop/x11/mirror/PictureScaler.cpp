#include "platform/desktop/x11/mirror/PictureScaler.h"

#include "platform/desktop/PixelRects.h"
#include "platform/desktop/x11/server/ExpectErrors.h"
#include "platform/desktop/x11/server/XcbRectangle.h"

#include <cmath>
#include <cstddef>
#include <utility>

namespace mirrolet::platform::desktop::x11 {

namespace {

constexpr std::size_t guardedSteps = 2; ///< How many of the first steps use the UnobscuredGuard.

/// Returns the range of a step's result that depends on the pixels `from` to `to` of the previous step. The
/// range is one pixel wider on each side than the filter reaches, because the server rounds.
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

/// Scales one part of a picture. The part gets the same pixels as if the whole picture was scaled, because
/// `from` is read at the same coordinates.
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
        return markStale(image->content()->changedBetween(before->serial(), image->serial()));
    rebuild();
    return {0, 0, size.width, size.height};
}

void PictureScaler::rebuild() {
    source = {};
    guard.reset();
    nextSource = nullptr;
    steps.clear();
    const auto* stored = image ? image->content()->stored() : nullptr;
    if (!stored) {
        levels.clear();
        return;
    }
    steps = planScaling(image->size(), size);
    nextSource = image->content()->direct();
    // While a directly read window is obscured, the two guarded steps draw nothing, so their stored results
    // keep the last good pixels. The last step still has to draw, for example because the overlay has
    // changed. The last step must not be guarded, so there must be at least three steps.
    while (nextSource && steps.size() < guardedSteps + 1)
        steps.push_back({{size.width, 1}, {size.height, 1}});
    levels.resize(steps.size() - 1);
    for (std::size_t i = 0; i < levels.size(); ++i) {
        const PixelSize levelSize{steps[i].x.pixels, steps[i].y.pixels};
        if (levels[i].surface.size != levelSize) {
            levels[i].surface = makeSurface(connection, levelSize, 24, formats.opaque24);
            fillBlack(levels[i].surface.picture.id(), {0, 0, levelSize.width, levelSize.height});
        }
        setTransform(levels[i].surface.picture.id(), steps[i + 1], 0, 0);
    }
    readFrom(stored->pixmap.id(), *stored);
}

void PictureScaler::readFrom(xcb_drawable_t drawable, const StoredPixels& stored) {
    source = makePicture(connection, drawable, stored.opaqueFormat);
    setTransform(source.id(), steps.front(), stored.visible.x, stored.visible.y);
    for (auto& level : levels)
        level.stale = {0, 0, level.surface.size.width, level.surface.size.height};
}

/// Makes the first step read the window itself. Until now the first step has read the copy of the window's
/// pixels. If the window is obscured now, the stored results of the steps still show that copy. The format
/// and the geometry are taken from the copy, because the window has the same ones.
void PictureScaler::readDirectly(const DirectPixels& direct) {
    const ExpectErrors gone(connection, windowAndResourcesGone | windowGoneOrReplaced);
    readFrom(direct.window(), direct.copy());
    const std::uint32_t inferiors = XCB_SUBWINDOW_MODE_INCLUDE_INFERIORS;
    xcb_render_change_picture(connection.xcb(), source.id(), XCB_RENDER_CP_SUBWINDOW_MODE, &inferiors);
    guard.emplace(connection, direct.window(), direct.copy().visible);
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
    for (std::size_t i = 0; i < levels.size(); ++i) {
        const auto stale = std::exchange(levels[i].stale, {});
        if (!isEmpty(stale))
            drawStep(i, levels[i].surface.picture.id(), 0, 0, stale);
    }
}

/// Draws one step. A directly read window is checked before the first step, which reads the window, and again
/// before the second. The second check is needed because another window may have obscured this one between
/// the first check and the reading.
void PictureScaler::drawStep(std::size_t step, xcb_render_picture_t to, int left, int top,
                             const PixelRect& part) {
    const bool isGuarded = guard && step < guardedSteps;
    if (isGuarded)
        guard->close(to);
    scale(connection, step == 0 ? source.id() : levels[step - 1].surface.picture.id(), to, left, top, part);
    if (isGuarded)
        guard->open(to);
}

void PictureScaler::fillBlack(xcb_render_picture_t to, const PixelRect& part) {
    const auto area = toRectangle(part);
    const xcb_render_color_t black{0, 0, 0, 0xffff};
    xcb_render_fill_rectangles(connection.xcb(), XCB_RENDER_PICT_OP_SRC, to, black, 1, &area);
}

void PictureScaler::draw(xcb_render_picture_t destination, int left, int top, PixelRect part) {
    if (isEmpty(part))
        return;
    if (!source) {
        fillBlack(destination, {left + part.x, top + part.y, part.width, part.height});
        return;
    }
    refreshLevels();
    drawStep(levels.size(), destination, left, top, part);
    if (const auto* direct = std::exchange(nextSource, nullptr)) {
        readDirectly(*direct);
        draw(destination, left, top, part);
    }
}

} // namespace mirrolet::platform::desktop::x11
