#include "platform/desktop/x11/capture/CaptureSource.h"

#include "platform/desktop/PixelRects.h"
#include "platform/desktop/x11/capture/UnobscuredGuard.h"
#include "platform/desktop/x11/capture/X11WindowImage.h"
#include "platform/desktop/x11/server/ExpectErrors.h"

#include <xcb/composite.h>

#include <algorithm>
#include <chrono>
#include <optional>
#include <utility>

namespace mirrolet::platform::desktop::x11 {

using Clock = std::chrono::steady_clock;

namespace {

// NameWindowPixmap fails with BadMatch if the window is not viewable or not redirected.
constexpr ErrorSet notNameable = windowGone | ErrorSet{XError::match};

} // namespace

CaptureSource::CaptureSource(X11Connection& connection, const RenderFormats& formats, xcb_window_t window)
    : connection(connection), formats(formats), window(window) {
    auto* xcb = connection.xcb();
    const ExpectErrors gone(connection, windowGoneOrReplaced);
    // A VisibilityNotify event tells that a directly read window becomes obscured. The event also comes when
    // a parent is mapped, which makes the window visible. The event does not tell when a redirected window
    // becomes obscured or unobscured, because the server always counts that window as unobscured.
    const std::uint32_t mask =
        XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_VISIBILITY_CHANGE;
    firstSequence = xcb_change_window_attributes(xcb, window, XCB_CW_EVENT_MASK, &mask).sequence;
    watchDamage();
}

void CaptureSource::end(bool selectedAnew) {
    // The server has removed the event selection, the damage and the redirection together with the window.
    // The source makes no more requests, because the window's number may belong to another window by now.
    if (gone) {
        damage.release();
        return;
    }
    const ExpectErrors died(connection, windowGone);
    const std::uint32_t nothing = XCB_EVENT_MASK_NO_EVENT;
    if (!selectedAnew)
        xcb_change_window_attributes(connection.xcb(), window, XCB_CW_EVENT_MASK, &nothing);
    damage = {};
    if (policy.isRedirected())
        unredirect();
}

void CaptureSource::noteDamaged(const PixelRect& area, std::uint32_t eventSequence) {
    reportedDamage.add(area, eventSequence);
    changes |= CapturePolicy::damaged;
}

void CaptureSource::noteGeometry(PixelSize size, int borderWidth) {
    if (packed(size, borderWidth) != checkedGeometry) // A window that only moved keeps its pixmap.
        noteReplaced();
}

std::uint64_t CaptureSource::packed(PixelSize size, int borderWidth) {
    return static_cast<std::uint64_t>(size.width) << 40 | static_cast<std::uint64_t>(size.height) << 16 |
           static_cast<std::uint64_t>(borderWidth);
}

CaptureResult CaptureSource::image() {
    const MutexLock lock(captureMutex);
    const auto now = Clock::now();
    const auto commands = gone ? CapturePolicy::Commands{} : policy.tick(changes.exchange(0), now);
    const bool changed = !commands.empty();
    // All requests of this tick, and of the viewers that draw its image, share one ExpectErrors object. A
    // tick without changes makes no requests, so it needs no such object.
    std::optional<ExpectErrors> died;
    if (changed) {
        died.emplace(connection, windowAndResourcesGone);
        perform(commands);
        perform(policy.tickEnded(now));
    }
    if (gone)
        return xcb_connection_has_error(connection.xcb()) ? CaptureFailure::serverLost : CaptureFailure::gone;
    if (!content)
        return CaptureFailure::nothingToSee;
    if (auto same = changed ? nullptr : lastImage.lock())
        return same;
    auto image = std::make_shared<const X11WindowImage>(connection, shared_from_this(), content);
    // The viewers of this content hold the content's last image. They draw the change themselves if they can.
    // If all of them have drawn it, the caller gets that last image again.
    auto drawn = content->showToViewers(image) ? lastImage.lock() : nullptr;
    if (drawn && drawn->content() == content)
        return drawn;
    lastImage = image;
    return image;
}

void CaptureSource::perform(const CapturePolicy::Commands& commands) {
    for (const auto command : commands)
        perform(command);
}

void CaptureSource::perform(CaptureCommand command) {
    switch (command) {
    case CaptureCommand::checkWindow:
        return checkWindow();
    case CaptureCommand::checkRedirection:
        return checkRedirection();
    case CaptureCommand::takeDamage:
        return takeDamage();
    case CaptureCommand::applyDamage:
        return content->noteDamage(takenDamage);
    case CaptureCommand::damageAll:
        if (content)
            content->noteDamageEverywhere();
        return;
    case CaptureCommand::watchDamage:
        return watchDamage();
    case CaptureCommand::ignoreDamage:
        damage = {};
        return;
    case CaptureCommand::redirect:
        return redirect();
    case CaptureCommand::unredirect:
        return unredirect();
    case CaptureCommand::readDirectly:
        return readDirectly();
    case CaptureCommand::stopReading:
        return stopReading();
    case CaptureCommand::namePixmap:
        return namePixmap();
    case CaptureCommand::showPixmap:
        content = std::move(waitingContent);
        return;
    case CaptureCommand::copyPixels:
        return content->direct()->updateCopy();
    }
}

void CaptureSource::checkWindow() {
    subtractDamage();
    const auto found = SourceWindow::query(connection, window);
    if (!found) {
        gone = true;
        return;
    }
    if (found->isInputOnly)
        return; // A window that only takes input has no pixels.
    source = *found;
    checkedGeometry = packed(source.size, source.borderWidth);
    if (source.isViewable)
        checkViewable();
    else
        perform(policy.windowHidden());
    const auto visible = source.visiblePart();
    const PixelSize size{visible.width, visible.height};
    if (!content || (!content->stored() && content->size() != size))
        content = std::make_shared<WindowContent>(NothingSeen{size});
}

void CaptureSource::checkViewable() {
    const auto parts = obscuredParts(connection, window, source.visiblePart());
    if (!parts)
        return; // The window is gone, and an event will tell so.
    obscured = parts->ofShape;
    const auto* direct = content ? content->direct() : nullptr;
    const CapturePolicy::Viewability viewability{canEverBeDirect() && isEmpty(parts->ofPicture),
                                                 direct && hasSameGeometry(*direct)};
    perform(policy.windowViewable(viewability, Clock::now()));
}

bool CaptureSource::canEverBeDirect() const {
    return source.depth == connection.screen().root_depth && formats.exact(source.visual) != 0 &&
           std::max(source.size.width, source.size.height) < UnobscuredGuard::reach;
}

bool CaptureSource::hasSameGeometry(const DirectPixels& direct) const {
    return direct.windowSize() == source.size && direct.copy().visible == source.visiblePart();
}

/// Tries to get the window's pixmap with NameWindowPixmap. This succeeds only if another client has
/// redirected the window, because this program has not.
void CaptureSource::checkRedirection() {
    const auto id = xcb_generate_id(connection.xcb());
    const bool byAnotherClient = connection.succeeds(
        xcb_composite_name_window_pixmap_checked(connection.xcb(), window, id), notNameable);
    if (byAnotherClient) {
        xcb_free_pixmap(connection.xcb(), id);
        obscured = {};
    }
    perform(policy.redirectionChecked(byAnotherClient, Clock::now()));
}

/// Starts the damage reports. The server sends the first report immediately, and that report is of the whole
/// window.
void CaptureSource::watchDamage() {
    const ExpectErrors gone(connection, windowGoneOrReplaced);
    damage = {connection, xcb_generate_id(connection.xcb())};
    xcb_damage_create(connection.xcb(), damage.id(), window, XCB_DAMAGE_REPORT_LEVEL_BOUNDING_BOX);
}

void CaptureSource::subtractDamage() {
    if (damage)
        xcb_damage_subtract(connection.xcb(), damage.id(), XCB_NONE, XCB_NONE);
}

/// Takes the damage from the events that have arrived, so that no reply has to be waited for. An event that
/// is still on its way is taken at the next tick. No damage is lost, because subtractDamage() empties the
/// damaged area on the server. The server then sends an event each time that this area grows.
void CaptureSource::takeDamage() {
    subtractDamage();
    takenDamage = reportedDamage.take();
    perform(policy.damageTaken(takenDamage, content->size(), reportedDamage.isRepainted()));
}

/// Subtracts earlier damage first, so that the same parts are reported again when the window repaints them.
void CaptureSource::redirect() {
    subtractDamage();
    reportedDamage.awaitRepaint(obscured, [this] {
        return xcb_composite_redirect_window(connection.xcb(), window, XCB_COMPOSITE_REDIRECT_AUTOMATIC)
            .sequence;
    });
}

void CaptureSource::unredirect() {
    // The server answers BadValue if the number now belongs to a new window, which is not redirected.
    const ExpectErrors gone(connection, windowGone | ErrorSet{XError::value});
    xcb_composite_unredirect_window(connection.xcb(), window, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
}

void CaptureSource::readDirectly() {
    waitingContent.reset();
    content = std::make_shared<WindowContent>(std::make_unique<DirectPixels>(
        connection, window, source.size, formats.exact(source.visual), source.visiblePart()));
}

void CaptureSource::stopReading() {
    waitingContent.reset();
    if (content)
        content->stopReading();
}

void CaptureSource::namePixmap() {
    auto* xcb = connection.xcb();
    const auto id = xcb_generate_id(xcb);
    const auto naming = xcb_composite_name_window_pixmap_checked(xcb, window, id);
    // The geometry of the pixmap is used and not that of the window, because the window may have another size
    // by now.
    const auto geometry = connection.reply<xcb_get_geometry_reply>(xcb_get_geometry(xcb, id), windowGone);
    if (!connection.succeeds(naming, notNameable))
        return; // The window is hidden or gone. The last pixels stay until an event tells so.
    ServerPixmap pixmap(connection, id);
    const auto format = formats.opaque(source.visual);
    const int border = source.borderWidth;
    if (!geometry || format == 0 || geometry->width <= 2 * border || geometry->height <= 2 * border)
        return;
    auto visible = source.shadow.visiblePart({geometry->width - 2 * border, geometry->height - 2 * border});
    visible.x += border;
    visible.y += border;
    waitingContent = std::make_shared<WindowContent>(
        RedirectedPixels{.stored = {std::move(pixmap), format, visible}, .borderWidth = border});
    perform(policy.pixmapNamed(reportedDamage.isRepainted()));
}

} // namespace mirrolet::platform::desktop::x11
