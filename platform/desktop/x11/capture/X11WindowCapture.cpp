#include "platform/desktop/x11/capture/X11WindowCapture.h"

#include "platform/desktop/x11/capture/CaptureSource.h"

#include <xcb/damage.h>
#include <xcb/xfixes.h>

#include <iterator>
#include <map>
#include <mutex>
#include <utility>

namespace mirrolet::platform::desktop::x11 {

/// The windows being captured. Outlives the capture while images are held.
class X11WindowCapture::Sources : public std::enable_shared_from_this<Sources> {
  public:
    Sources(X11Connection& connection, const RenderFormats& formats)
        : connection(connection), formats(formats) {}

    /// None if nobody captures the window.
    std::shared_ptr<CaptureSource> find(xcb_window_t window) {
        const std::lock_guard guard(lock);
        return findLocked(window);
    }

    std::shared_ptr<CaptureSource> findOrAdd(xcb_window_t window) {
        const std::lock_guard guard(lock);
        if (auto found = findLocked(window))
            return found;
        auto added = std::shared_ptr<CaptureSource>(
            new CaptureSource(connection, formats, window),
            [self = shared_from_this(), window](CaptureSource* source) { self->end(window, source); });
        byNumber[window] = added;
        return added;
    }

    std::vector<std::shared_ptr<CaptureSource>> all() {
        const std::lock_guard guard(lock);
        std::vector<std::shared_ptr<CaptureSource>> found;
        for (const auto& [window, source] : byNumber)
            if (auto locked = source.lock())
                found.push_back(std::move(locked));
        return found;
    }

  private:
    std::shared_ptr<CaptureSource> findLocked(xcb_window_t window) const {
        const auto found = byNumber.find(window);
        return found == byNumber.end() ? nullptr : found->second.lock();
    }

    /// Called on whatever thread lets the last image go. The lock keeps it apart from the making of a new
    /// source for the same window, whose event selection it would undo.
    void end(xcb_window_t window, CaptureSource* source) {
        {
            const std::lock_guard guard(lock);
            const auto entry = byNumber.find(window);
            const bool selectedAnew = entry != byNumber.end() && !entry->second.expired();
            if (!selectedAnew && entry != byNumber.end())
                byNumber.erase(entry);
            source->end(selectedAnew);
        }
        delete source; // NOLINT: this is the deleter of its shared owner.
        connection.flush();
    }

    X11Connection& connection;
    const RenderFormats formats;
    std::mutex
        lock; ///< Guards byNumber, and the order of selections of one window. No reply is waited for in it.
    std::map<xcb_window_t, std::weak_ptr<CaptureSource>> byNumber;
};

X11WindowCapture::X11WindowCapture(X11Connection& connection)
    : connection(connection), formats(connection), sources(std::make_shared<Sources>(connection, formats)) {
    if (!permitted())
        return;
    watchWindows();
    watchCompositingManager();
}

X11WindowCapture::~X11WindowCapture() = default;

template <typename Event, typename Action>
void X11WindowCapture::watch(std::uint8_t type, xcb_window_t Event::*window, Action action) {
    subscriptions.push_back(
        connection.subscribe(type, [this, window, action](const xcb_generic_event_t& event) {
            const auto& typed = reinterpret_cast<const Event&>(event);
            const auto source = sources->find(typed.*window);
            if (source && source->concerns(event.full_sequence))
                action(*source, typed);
        }));
}

void X11WindowCapture::watchWindows() {
    watch(static_cast<std::uint8_t>(connection.extensions().damageFirstEvent + XCB_DAMAGE_NOTIFY),
          &xcb_damage_notify_event_t::drawable, [](auto& source, const auto& event) {
              source.noteDamaged({event.area.x, event.area.y, event.area.width, event.area.height},
                                 reinterpret_cast<const xcb_generic_event_t&>(event).full_sequence);
          });
    watch(XCB_DESTROY_NOTIFY, &xcb_destroy_notify_event_t::window,
          [](auto& source, const auto&) { source.noteGone(); });
    watch(XCB_MAP_NOTIFY, &xcb_map_notify_event_t::window,
          [](auto& source, const auto&) { source.noteReplaced(); });
    watch(XCB_UNMAP_NOTIFY, &xcb_unmap_notify_event_t::window,
          [](auto& source, const auto&) { source.noteReplaced(); });
    watch(XCB_VISIBILITY_NOTIFY, &xcb_visibility_notify_event_t::window,
          [](auto& source, const auto&) { source.noteReplaced(); });
    watch(XCB_CONFIGURE_NOTIFY, &xcb_configure_notify_event_t::window, [](auto& source, const auto& event) {
        source.noteGeometry({event.width, event.height}, event.border_width);
    });
    watch(XCB_PROPERTY_NOTIFY, &xcb_property_notify_event_t::window,
          [extents = connection.atoms()._GTK_FRAME_EXTENTS](auto& source, const auto& event) {
              if (event.atom == extents)
                  source.noteReplaced();
          });
}

void X11WindowCapture::watchCompositingManager() {
    // When one starts or stops, the windows' pixmaps are made anew, and nothing tells the windows.
    const auto selection = connection.atoms().compositingManager;
    subscriptions.push_back(connection.subscribe(
        static_cast<std::uint8_t>(connection.extensions().xfixesFirstEvent + XCB_XFIXES_SELECTION_NOTIFY),
        [this, selection](const xcb_generic_event_t& event) {
            if (reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event).selection != selection)
                return;
            for (const auto& source : sources->all())
                source->noteReplaced();
        }));
    xcb_xfixes_select_selection_input(connection.xcb(), connection.ownWindow(), selection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
}

bool X11WindowCapture::permitted() const {
    // A server that does not trust a client hides these extensions from it.
    const auto& extensions = connection.extensions();
    return extensions.composite && extensions.damageFirstEvent != 0 && extensions.xfixesFirstEvent != 0 &&
           formats.complete();
}

std::shared_ptr<const WindowImage> X11WindowCapture::image(WindowNumber window) {
    if (window == 0 || window == connection.root() || !permitted())
        return nullptr;
    const auto source = sources->findOrAdd(window);
    return source->image();
}

bool X11WindowCapture::isCaptured(WindowNumber window) const {
    const auto source = sources->find(window);
    return source && !source->isGone();
}

} // namespace mirrolet::platform::desktop::x11
