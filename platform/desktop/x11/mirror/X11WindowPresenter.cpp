#include "platform/desktop/x11/mirror/X11WindowPresenter.h"

#include "platform/desktop/PixelRects.h"
#include "platform/desktop/x11/server/ExpectErrors.h"
#include "platform/desktop/x11/server/XcbRectangle.h"

#include <utility>

namespace mirrolet::platform::desktop::x11 {

namespace {

constexpr int largestPanelSide = 32767;

xcb_render_color_t toColour(std::uint32_t argb) {
    const auto channel = [argb](int shift) {
        return static_cast<std::uint16_t>((argb >> shift & 0xff) * 0x101);
    };
    return {channel(16), channel(8), channel(0), 0xffff};
}

} // namespace

std::unique_ptr<WindowPresenter> X11WindowPresenter::make(X11Connection& connection, WindowNumber window) {
    RenderFormats formats(connection);
    if (!formats.complete())
        return nullptr;
    const auto attributesCookie = xcb_get_window_attributes(connection.xcb(), window);
    const auto geometryCookie = xcb_get_geometry(connection.xcb(), window);
    const auto attributes = connection.reply<xcb_get_window_attributes_reply>(attributesCookie, windowGone);
    const auto geometry = connection.reply<xcb_get_geometry_reply>(geometryCookie, windowGone);
    if (!attributes || !geometry || formats.exact(attributes->visual) == 0)
        return nullptr;
    const Target target{window, geometry->depth, formats.exact(attributes->visual),
                        formats.hasAlpha(attributes->visual)};
    return std::unique_ptr<WindowPresenter>(new X11WindowPresenter(connection, std::move(formats), target));
}

X11WindowPresenter::X11WindowPresenter(X11Connection& connection, RenderFormats renderFormats, Target target)
    : connection(connection), formats(std::move(renderFormats)), target(target), scaler(connection, formats) {
}

X11WindowPresenter::~X11WindowPresenter() {
    watch(nullptr);
}

void X11WindowPresenter::resize(PixelSize size, double cornerRadius) {
    const MutexLock lock(presenterMutex);
    canvas = {};
    overlay = {};
    corners.reset();
    pictureRect = {};
    stale = {};
    if (size.width <= 0 || size.height <= 0 || size.width > largestPanelSide ||
        size.height > largestPanelSide)
        return;
    canvas = makeSurface(connection, size, target.depth, target.format);
    if (target.translucent)
        corners.emplace(connection, formats, size, cornerRadius);
    // The graphics context is made for the canvas and not for the window, because the window may be destroyed
    // at any time.
    const std::uint32_t noExposures = 0;
    context = {connection, xcb_generate_id(connection.xcb())};
    xcb_create_gc(connection.xcb(), context.id(), canvas.pixmap.id(), XCB_GC_GRAPHICS_EXPOSURES,
                  &noExposures);
    stale = whole();
}

void X11WindowPresenter::setBackground(std::uint32_t colour) {
    const MutexLock lock(presenterMutex);
    if (std::exchange(background, colour) != colour)
        stale = whole();
}

void X11WindowPresenter::setPicture(std::shared_ptr<const WindowImage> image, PixelRect rect) {
    const auto onServer = std::dynamic_pointer_cast<const X11WindowImage>(image);
    {
        const MutexLock lock(presenterMutex);
        take(onServer, rect);
    }
    watch(onServer ? onServer->content() : nullptr);
}

void X11WindowPresenter::watch(std::shared_ptr<const WindowContent> content) {
    if (content == watched)
        return;
    if (watched)
        watched->unwatch(*this);
    watched = std::move(content);
    if (watched)
        watched->watch(*this);
}

bool X11WindowPresenter::show(const std::shared_ptr<const X11WindowImage>& image) {
    // A capture never waits for the main thread, so the mutex is only tried. If the main thread is drawing or
    // has something to draw, the main thread draws this image as well.
    if (!presenterMutex.try_lock())
        return false;
    const MutexLock lock(presenterMutex, std::adopt_lock);
    if (!isEmpty(stale) || isEmpty(pictureRect))
        return false;
    take(image, pictureRect);
    draw();
    return true;
}

void X11WindowPresenter::take(std::shared_ptr<const X11WindowImage> image, PixelRect rect) {
    const bool moved = std::exchange(pictureRect, rect) != rect;
    // A capture may already have shown a newer image of the same content.
    const bool isKnown = image == picture || (image && picture && image->precedes(*picture));
    if (isKnown && !moved)
        return;
    const bool cameOrWent = !image != !picture;
    picture = std::move(image);
    const auto changed = scaler.setImage(isEmpty(rect) ? nullptr : picture, {rect.width, rect.height});
    if (moved || cameOrWent)
        stale = whole();
    else
        stale = united(
            stale,
            intersection({rect.x + changed.x, rect.y + changed.y, changed.width, changed.height}, whole()));
}

void X11WindowPresenter::setOverlay(const Bitmap& bitmap) {
    const MutexLock lock(presenterMutex);
    if (!canvas.pixmap || bitmap.size != canvas.size)
        return;
    if (!overlay.pixmap)
        overlay = makeSurface(connection, canvas.size, 32, formats.argb32);
    upload(connection, overlay, bitmap);
    stale = whole();
}

void X11WindowPresenter::present() {
    const MutexLock lock(presenterMutex);
    draw();
}

void X11WindowPresenter::draw() {
    const auto part = std::exchange(stale, {});
    if (isEmpty(part))
        return;
    const ExpectErrors gone(connection, windowAndResourcesGone); // The source window or mirror may be gone.
    drawCanvas(part);
    if (corners)
        corners->cut(canvas.picture.id(), part);
    copyToWindow(part);
}

/// Draws every pixel of the part again, opaque. The corners that lie in the part are square afterwards.
void X11WindowPresenter::drawCanvas(const PixelRect& part) {
    if (!picture || !contains(pictureRect, part)) {
        const auto area = toRectangle(part);
        xcb_render_fill_rectangles(connection.xcb(), XCB_RENDER_PICT_OP_SRC, canvas.picture.id(),
                                   toColour(background), 1, &area);
    }
    if (picture) {
        auto shown = intersection(part, pictureRect);
        shown.x -= pictureRect.x;
        shown.y -= pictureRect.y;
        scaler.draw(canvas.picture.id(), pictureRect.x, pictureRect.y, shown);
    }
    if (overlay.pixmap)
        layOver(part);
}

void X11WindowPresenter::layOver(const PixelRect& part) {
    const auto area = toRectangle(part);
    xcb_render_composite(connection.xcb(), XCB_RENDER_PICT_OP_OVER, overlay.picture.id(),
                         XCB_RENDER_PICTURE_NONE, canvas.picture.id(), area.x, area.y, 0, 0, area.x, area.y,
                         area.width, area.height);
}

void X11WindowPresenter::copyToWindow(const PixelRect& part) {
    const auto area = toRectangle(part);
    xcb_copy_area(connection.xcb(), canvas.pixmap.id(), target.window, context.id(), area.x, area.y, area.x,
                  area.y, area.width, area.height);
    connection.flush();
}

void X11WindowPresenter::repair(PixelRect area) {
    const MutexLock lock(presenterMutex);
    // The canvas is not copied before it was drawn, nor while all of it is stale. The next present() then
    // draws the canvas and copies all of it.
    const auto part = intersection(area, whole());
    if (!canvas.pixmap || isEmpty(part) || stale == whole())
        return;
    const ExpectErrors gone(connection, windowGone);
    copyToWindow(part);
}

} // namespace mirrolet::platform::desktop::x11
