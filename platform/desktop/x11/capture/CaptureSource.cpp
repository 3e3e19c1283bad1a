#include "platform/desktop/x11/capture/CaptureSource.h"

#include "platform/desktop/PixelRects.h"
#include "platform/desktop/x11/capture/UnobscuredGuard.h"
#include "platform/desktop/x11/capture/X11WindowImage.h"
#include "platform/desktop/x11/server/Property.h"

#include <xcb/composite.h>

#include <algorithm>
#include <utility>

namespace mirrolet::platform::desktop::x11 {

namespace {

// Some drivers report a direct-rendered frame before it has landed. So a window that fell silent is read once
// more; a steady refresh would make every still window cost something for it.
constexpr std::chrono::seconds settleTime{1};

// A film changes nearly all of its window between any two ticks. After so many such ticks in a row the next
// ones are taken to be alike without being told, as the telling wakes a thread each time; then the window is
// looked at again for a moment.
constexpr int ticksOfFilm = 15;
constexpr int ticksTakenForGranted = 15;
constexpr int ticksOfAnotherLook =
    3; ///< One for the report that a new watch begins with, two for the window's own.

// A window that is read in place leaves nothing behind when it goes: so there is a copy, at most this old.
constexpr std::chrono::milliseconds copyTime{500};

// What covers a window that changes is asked this often: nothing tells that a redirected one is uncovered, or
// that one is covered that a compositing manager has redirected meanwhile.
constexpr std::chrono::seconds coveredLook{2};

// One that is redirected and does not draw what was covered for so long will not draw it.
constexpr std::chrono::seconds longestWaitForDrawing{2};

constexpr std::uint32_t bytesOfExtents = 16;

} // namespace

CaptureSource::CaptureSource(X11Connection& connection, const RenderFormats& formats, xcb_window_t window)
    : connection(connection), formats(formats), window(window) {
    auto* xcb = connection.xcb();
    // VisibilityNotify because it tells that the window is covered, and comes when a parent is mapped as
    // well. A redirected window counts as uncovered.
    const std::uint32_t mask =
        XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_VISIBILITY_CHANGE;
    firstSequence = xcb_change_window_attributes(xcb, window, XCB_CW_EVENT_MASK, &mask).sequence;
    watchDamage();
}

/// The first report comes at once and is of the whole window.
void CaptureSource::watchDamage() {
    damage = {connection, xcb_generate_id(connection.xcb())};
    xcb_damage_create(connection.xcb(), damage.id(), window, XCB_DAMAGE_REPORT_LEVEL_BOUNDING_BOX);
}

void CaptureSource::end(bool selectedAnew) {
    if (gone) { // All this died with the window, and its number may be another window's by now.
        damage.release();
        return;
    }
    const std::uint32_t nothing = XCB_EVENT_MASK_NO_EVENT;
    if (!selectedAnew)
        xcb_change_window_attributes(connection.xcb(), window, XCB_CW_EVENT_MASK, &nothing);
    damage = {};
    unredirect();
}

void CaptureSource::unredirect() {
    if (std::exchange(redirected, false))
        xcb_composite_unredirect_window(connection.xcb(), window, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
}

void CaptureSource::noteGeometry(PixelSize size, int borderWidth) {
    if (packed(size, borderWidth) != knownGeometry) // A window that is only moved keeps its pixmap.
        noteReplaced();
}

std::uint64_t CaptureSource::packed(PixelSize size, int borderWidth) {
    return static_cast<std::uint64_t>(size.width) << 40 | static_cast<std::uint64_t>(size.height) << 16 |
           static_cast<std::uint64_t>(borderWidth);
}

/// Viewers draw with the lock held: they wait for no reply, and look at the content only.
std::shared_ptr<const WindowImage> CaptureSource::image() {
    const std::lock_guard guard(lock);
    const bool changed = !gone && update();
    if (gone || !content)
        return nullptr;
    if (auto same = changed ? nullptr : lastImage.lock())
        return same;
    const auto image = std::make_shared<const X11WindowImage>(connection, shared_from_this(), content);
    lastImage = image;
    content->tellViewers(image);
    return image;
}

bool CaptureSource::update() {
    const unsigned changes = pending.exchange(0);
    const auto now = Clock::now();
    const bool settles = now >= settlesAt;
    if (changes == 0 && grantedTicks == 0 && !settles && now < awaitsUntil) {
        filmTicks = 0;
        return false;
    }
    settlesAt = changes == 0 && grantedTicks == 0 ? Clock::time_point::max() : now + settleTime;
    if (grantedTicks > 0 && --grantedTicks == 0)
        watchDamage();
    // Some windows get the pixmap that they draw to only with the first drawing after the redirection.
    const bool first = (changes & damaged) != 0 && !sawDamage;
    sawDamage = sawDamage || first;
    const bool waitedLongEnough = now >= awaitsUntil;
    if (waitedLongEnough)
        awaitsUntil = Clock::time_point::max();
    if ((changes & replaced) != 0 || (first && redirected) || now >= looksAt || waitedLongEnough)
        lookAgain();
    else if ((changes & damaged) != 0 && grantedTicks == 0)
        collectDamage();
    else if (content)
        content->noteDamageEverywhere();
    if (content && content->windowInPlace() != 0 && (settles || now >= copiesAt))
        keepCopy(now);
    return true;
}

void CaptureSource::keepCopy(Clock::time_point now) {
    content->copyFromPlace(connection);
    copiesAt = now + copyTime;
}

void CaptureSource::followFilm(const PixelRect& box) {
    const bool most = 4LL * box.width * box.height >= 3LL * content->size().width * content->size().height;
    filmTicks = most ? filmTicks + 1 : 0;
    if (filmTicks < ticksOfFilm)
        return;
    filmTicks = ticksOfFilm - ticksOfAnotherLook;
    grantedTicks = ticksTakenForGranted;
    damage = {};
}

/// The events have told where: the server reports each growth of the damaged box, so what comes in after the
/// box is taken here lies in it or is reported anew. No reply is waited for.
void CaptureSource::collectDamage() {
    xcb_damage_subtract(connection.xcb(), damage.id(), XCB_NONE, XCB_NONE);
    const auto box = takeDamagedBox();
    if (named) {
        if (drewWhatWasCovered())
            showNamed();
        return;
    }
    content->noteDamage({box.x - cutLeft, box.y - cutTop, box.width, box.height});
    followFilm(box);
}

void CaptureSource::noteDamaged(PixelRect area, std::uint32_t eventSequence) {
    {
        const std::lock_guard guard(boxLock);
        damagedBox = united(damagedBox, area);
        if (isFrom(redirectSequence, eventSequence))
            drawnRedirected = united(drawnRedirected, area);
    }
    pending |= damaged;
}

PixelRect CaptureSource::takeDamagedBox() {
    const std::lock_guard guard(boxLock);
    return std::exchange(damagedBox, {});
}

void CaptureSource::lookAgain() {
    auto* xcb = connection.xcb();
    if (grantedTicks == 0)
        xcb_damage_subtract(xcb, damage.id(), XCB_NONE, XCB_NONE);
    const auto attributesCookie = xcb_get_window_attributes(xcb, window);
    const auto geometryCookie = xcb_get_geometry(xcb, window);
    const auto extentsCookie =
        requestProperty(connection, window, connection.atoms()._GTK_FRAME_EXTENTS, bytesOfExtents);
    const auto attributes = connection.reply<xcb_get_window_attributes_reply>(attributesCookie, windowGone);
    const auto geometry = connection.reply<xcb_get_geometry_reply>(geometryCookie, windowGone);
    const auto extents = takeProperty(connection, extentsCookie);
    if (!attributes || !geometry) {
        gone = true;
        return;
    }
    if (attributes->_class == XCB_WINDOW_CLASS_INPUT_ONLY)
        return; // Nothing to see, ever.
    const PixelSize size{geometry->width, geometry->height};
    knownGeometry = packed(size, geometry->border_width);
    const auto shadow = FrameExtents::from(extents);
    const auto visible = shadow.visiblePart(size);
    if (attributes->map_state == XCB_MAP_STATE_VIEWABLE)
        look(*geometry, attributes->visual, shadow);
    else
        hide();
    if (!content || (content->pixmapId() == 0 && content->size() != PixelSize{visible.width, visible.height}))
        content = std::make_shared<WindowContent>(PixelSize{visible.width, visible.height});
}

/// A frame that is unmapped around its window tells the window nothing: so it may be found out at any look.
/// What was not drawn by now never will be. Mapped again, the window is a new case.
void CaptureSource::hide() {
    unredirect();
    named.reset();
    looksAt = awaitsUntil = Clock::time_point::max();
    if (content)
        content->leavePlace();
}

void CaptureSource::look(const xcb_get_geometry_reply_t& geometry, xcb_visualid_t visual,
                         const FrameExtents& shadow) {
    const PixelSize size{geometry.width, geometry.height};
    const auto part = shadow.visiblePart(size);
    const auto covered = coveredParts(connection, window, part);
    if (!covered)
        return; // Gone: an event says so.
    const bool fits = geometry.depth == connection.screen().root_depth && formats.exact(visual) != 0 &&
                      std::max(size.width, size.height) < UnobscuredGuard::reach;
    const bool uncovered = fits && isEmpty(covered->ofPicture);
    if (uncovered && Clock::now() >= looksAt)
        unredirect();
    // What a compositing manager has redirected is whole already, and nothing would tell that it is covered.
    const bool hasPixmap = !redirected && isRedirectedByOthers();
    if (uncovered && !redirected && !hasPixmap) {
        showInPlace(visual, size, part);
        return;
    }
    if (!redirected)
        leavePlace(hasPixmap ? PixelRect{} : covered->ofShape);
    looksAt = Clock::now() + coveredLook;
    namePixmap(visual, geometry.border_width, shadow);
}

/// Asked while it is not redirected from here: only redirected windows have a pixmap that can be named.
bool CaptureSource::isRedirectedByOthers() {
    const auto id = xcb_generate_id(connection.xcb());
    if (!connection.succeeds(xcb_composite_name_window_pixmap_checked(connection.xcb(), window, id)))
        return false;
    xcb_free_pixmap(connection.xcb(), id);
    return true;
}

void CaptureSource::showInPlace(xcb_visualid_t visual, PixelSize size, const PixelRect& part) {
    looksAt = Clock::now() + coveredLook;
    awaitsUntil = Clock::time_point::max();
    named.reset();
    cutLeft = part.x;
    cutTop = part.y;
    if (content && content->windowInPlace() != 0 && content->pictureRect() == part &&
        content->windowSize() == size) {
        content->noteDamageEverywhere();
        return;
    }
    content = WindowContent::inPlace(connection, window, size, formats.exact(visual), part);
    copiesAt = Clock::time_point::min();
}

/// The window is redirected, which gives it a pixmap of its own. What was covered holds the pixels of what
/// covers it in there, until the window has drawn it.
void CaptureSource::leavePlace(const PixelRect& covered) {
    if (content)
        content->leavePlace();
    // A new watch reports the whole window at once: that is to come before the redirection. And what was
    // drawn up to now must not keep what is drawn afterwards from being reported.
    if (std::exchange(grantedTicks, 0) > 0)
        watchDamage();
    xcb_damage_subtract(connection.xcb(), damage.id(), XCB_NONE, XCB_NONE);
    {
        const std::lock_guard guard(boxLock);
        redirectSequence =
            xcb_composite_redirect_window(connection.xcb(), window, XCB_COMPOSITE_REDIRECT_AUTOMATIC)
                .sequence;
        drawnRedirected = {};
    }
    redirected = true;
    sawDamage = false;
    awaited = covered;
    awaitsUntil = Clock::now() + longestWaitForDrawing;
}

bool CaptureSource::drewWhatWasCovered() {
    const std::lock_guard guard(boxLock);
    return contains(drawnRedirected, awaited);
}

void CaptureSource::namePixmap(xcb_visualid_t visual, int borderWidth, const FrameExtents& shadow) {
    auto* xcb = connection.xcb();
    const auto id = xcb_generate_id(xcb);
    const auto naming = xcb_composite_name_window_pixmap_checked(xcb, window, id);
    // The window may have another size again: what counts is the pixmap's.
    const auto geometry = connection.reply<xcb_get_geometry_reply>(xcb_get_geometry(xcb, id), windowGone);
    if (!connection.succeeds(naming))
        return; // Not viewable any more, or gone: an event says so. The last picture stays until then.
    ServerPixmap pixmap(connection, id);
    const auto format = formats.opaque(visual);
    if (!geometry || format == 0 || geometry->width <= 2 * borderWidth || geometry->height <= 2 * borderWidth)
        return;
    auto part = shadow.visiblePart({geometry->width - 2 * borderWidth, geometry->height - 2 * borderWidth});
    cutLeft = part.x;
    cutTop = part.y;
    part.x += borderWidth;
    part.y += borderWidth;
    named = std::make_shared<WindowContent>(std::move(pixmap), format, part);
    if (drewWhatWasCovered() || awaitsUntil == Clock::time_point::max())
        showNamed();
}

void CaptureSource::showNamed() {
    content = std::move(named);
    awaitsUntil = Clock::time_point::max();
}

} // namespace mirrolet::platform::desktop::x11
