#include "platform/desktop/x11/capture/X11WindowCapture.h"

#include "platform/desktop/x11/capture/CaptureSource.h"
#include "platform/foundation/Mutex.h"

#include <xcb/damage.h>
#include <xcb/xfixes.h>

#include <iterator>
#include <map>
#include <utility>

namespace mirrolet::platform::desktop::x11 {

/// Holds a CaptureSource for each window that is captured now. This object can outlive the X11WindowCapture,
/// because images that are still held keep it alive.
class X11WindowCapture::Sources : public std::enable_shared_from_this<Sources> {
  public:
    Sources(X11Connection& connection, const RenderFormats& formats)
        : connection(connection), formats(formats) {}

    /// Returns nullptr if the window is not captured.
    std::shared_ptr<CaptureSource> find(xcb_window_t window) {
        const MutexLock lock(sourcesMutex);
        return findLocked(window);
    }

    std::shared_ptr<CaptureSource> findOrAdd(xcb_window_t window) {
        const MutexLock lock(sourcesMutex);
        if (auto found = findLocked(window))
            return found;
        auto added = std::shared_ptr<CaptureSource>(
            new CaptureSource(connection, formats, window),
            [self = shared_from_this(), window](CaptureSource* source) { self->end(window, source); });
        byNumber[window] = added;
        return added;
    }

    std::vector<std::shared_ptr<CaptureSource>> all() {
        const MutexLock lock(sourcesMutex);
        std::vector<std::shared_ptr<CaptureSource>> found;
        for (const auto& [window, source] : byNumber)
            if (auto locked = source.lock())
                found.push_back(std::move(locked));
        return found;
    }

  private:
    std::shared_ptr<CaptureSource> findLocked(xcb_window_t window) const MIRROLET_REQUIRES(sourcesMutex) {
        const auto found = byNumber.find(window);
        return found == byNumber.end() ? nullptr : found->second.lock();
    }

    /// Ends a CaptureSource, on the thread that releases the last image of its window. Locks the mutex,
    /// because this function could otherwise undo the event selection that a new CaptureSource makes on the
    /// same window.
    void end(xcb_window_t window, CaptureSource* source) {
        {
            const MutexLock lock(sourcesMutex);
            const auto entry = byNumber.find(window);
            const bool selectedAnew = entry != byNumber.end() && !entry->second.expired();
            if (!selectedAnew && entry != byNumber.end())
                byNumber.erase(entry);
            source->end(selectedAnew);
        }
        delete source; // NOLINT: this is the deleter of the shared pointer.
        connection.flush();
    }

    X11Connection& connection;
    const RenderFormats formats;
    /// Stays locked while a CaptureSource begins or ends its event selection. Otherwise an old CaptureSource
    /// could end the selection that a new one of the same window has just begun. No thread waits for a reply
    /// while this mutex is locked.
    Mutex sourcesMutex;
    std::map<xcb_window_t, std::weak_ptr<CaptureSource>> byNumber MIRROLET_GUARDED_BY(sourcesMutex);
};

X11WindowCapture::X11WindowCapture(X11Connection& connection)
    : connection(connection), compositingManager(connection), formats(connection),
      sources(std::make_shared<Sources>(connection, formats)) {
    if (!permitted())
        return;
    watchWindows();
    watchCompositingManager();
}

X11WindowCapture::~X11WindowCapture() = default;

template <typename Event, typename Action>
void X11WindowCapture::watch(xcb_window_t Event::*window, Action action) {
    subscriptions.push_back(
        connection.subscribe<Event>([this, window, action](const Event& event, std::uint32_t sequence) {
            const auto source = sources->find(event.*window);
            if (source && source->concerns(sequence))
                action(*source, event, sequence);
        }));
}

void X11WindowCapture::watchWindows() {
    watch(&xcb_damage_notify_event_t::drawable, [](auto& source, const auto& event, std::uint32_t sequence) {
        source.noteDamaged({event.area.x, event.area.y, event.area.width, event.area.height}, sequence);
    });
    watch(&xcb_destroy_notify_event_t::window,
          [](auto& source, const auto&, std::uint32_t) { source.noteGone(); });
    watch(&xcb_map_notify_event_t::window,
          [](auto& source, const auto&, std::uint32_t) { source.noteReplaced(); });
    watch(&xcb_unmap_notify_event_t::window,
          [](auto& source, const auto&, std::uint32_t) { source.noteReplaced(); });
    watch(&xcb_visibility_notify_event_t::window,
          [](auto& source, const auto&, std::uint32_t) { source.noteReplaced(); });
    watch(&xcb_configure_notify_event_t::window, [](auto& source, const auto& event, std::uint32_t) {
        source.noteGeometry({event.width, event.height}, event.border_width);
    });
    watch(&xcb_property_notify_event_t::window,
          [extents = connection.atoms()._GTK_FRAME_EXTENTS](auto& source, const auto& event, std::uint32_t) {
              if (event.atom == extents)
                  source.noteReplaced();
          });
}

void X11WindowCapture::watchCompositingManager() {
    // When a compositing manager starts or stops, all windows get new pixmaps, but the server sends no event
    // for the windows.
    subscriptions.push_back(compositingManager.onChange([this] {
        for (const auto& source : sources->all())
            source->noteReplaced();
    }));
}

bool X11WindowCapture::permitted() const {
    // A server hides some of these extensions from a client that it does not trust.
    const auto& extensions = connection.extensions();
    return extensions.composite && extensions.damage && extensions.xfixes && formats.complete();
}

CaptureResult X11WindowCapture::capture(WindowNumber window) {
    if (!permitted())
        return CaptureFailure::notPermitted;
    if (window == 0 || window == connection.root())
        return CaptureFailure::gone;
    const auto source = sources->findOrAdd(window);
    return source->image();
}

bool X11WindowCapture::isCaptured(WindowNumber window) const {
    const auto source = sources->find(window);
    return source && !source->isGone();
}

} // namespace mirrolet::platform::desktop::x11
