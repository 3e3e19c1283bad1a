#pragma once

#include "platform/desktop/WindowCapture.h"
#include "platform/desktop/x11/capture/CapturePolicy.h"
#include "platform/desktop/x11/capture/ReportedDamage.h"
#include "platform/desktop/x11/capture/SourceWindow.h"
#include "platform/desktop/x11/capture/WindowContent.h"
#include "platform/desktop/x11/server/RenderFormats.h"
#include "platform/foundation/Mutex.h"

#include <xcb/damage.h>
#include <xcb/xcb.h>

#include <atomic>
#include <cstdint>
#include <memory>

namespace mirrolet::platform::desktop::x11 {

/// Captures one window. While the window is unobscured its pixels are read directly. Once the window is
/// obscured it is redirected, which means that it draws to a pixmap of its own, and that pixmap is read.
/// CapturePolicy decides which way is used, and this class makes the requests. A CaptureSource lives as long
/// as one of its images. The connection's thread calls the note…() members when the window's events arrive.
class CaptureSource : public std::enable_shared_from_this<CaptureSource> {
  public:
    /// Selects the window's events. Does not wait for the server.
    CaptureSource(X11Connection& connection, const RenderFormats& formats, xcb_window_t window);
    /// Ends the capture on the server. `selectedAnew` tells that a newer CaptureSource captures the same
    /// window number. The event selection on the window then stays, because the newer object needs it. Must
    /// be called only when nothing else uses this object any more.
    void end(bool selectedAnew) MIRROLET_UNCHECKED;

    /// Returns the window's current image. If nothing changed, returns the same object as before and makes no
    /// request. Also returns the same object if the viewers of the image have drawn the change.
    CaptureResult image();

    /// Returns whether an event with this sequence number is about this window. An event from before this
    /// object was made can be about an older window that had the same number.
    [[nodiscard]] bool concerns(std::uint32_t eventSequence) const {
        return isAfter(firstSequence, eventSequence);
    }
    /// Notes that the window has drawn in `area`, which is relative to the window without its border.
    void noteDamaged(const PixelRect& area, std::uint32_t eventSequence);
    void noteGone() { gone = true; }
    [[nodiscard]] bool isGone() const { return gone; }
    /// Notes that the window's pixmap, visible part or visibility has changed.
    void noteReplaced() { changes |= CapturePolicy::replaced; }
    void noteGeometry(PixelSize size, int borderWidth);

  private:
    static std::uint64_t packed(PixelSize size, int borderWidth);

    void perform(const CapturePolicy::Commands& commands) MIRROLET_REQUIRES(captureMutex);
    void perform(CaptureCommand command) MIRROLET_REQUIRES(captureMutex);
    void checkWindow() MIRROLET_REQUIRES(captureMutex);
    void checkViewable() MIRROLET_REQUIRES(captureMutex);
    void checkRedirection() MIRROLET_REQUIRES(captureMutex);
    void watchDamage() MIRROLET_REQUIRES(captureMutex);
    void subtractDamage() MIRROLET_REQUIRES(captureMutex);
    void takeDamage() MIRROLET_REQUIRES(captureMutex);
    void redirect() MIRROLET_REQUIRES(captureMutex);
    void unredirect();
    void readDirectly() MIRROLET_REQUIRES(captureMutex);
    void stopReading() MIRROLET_REQUIRES(captureMutex);
    void namePixmap() MIRROLET_REQUIRES(captureMutex);
    [[nodiscard]] bool canEverBeDirect() const MIRROLET_REQUIRES(captureMutex);
    [[nodiscard]] bool hasSameGeometry(const DirectPixels& direct) const MIRROLET_REQUIRES(captureMutex);

    X11Connection& connection;
    const RenderFormats& formats;
    const xcb_window_t window;
    std::uint32_t firstSequence = 0;

    std::atomic<unsigned> changes = CapturePolicy::replaced; ///< Change flags since the last tick.
    std::atomic<bool> gone = false;
    std::atomic<std::uint64_t> checkedGeometry = 0; ///< The packed() geometry at the last check.
    ReportedDamage reportedDamage;

    /// This mutex must be locked before those of the viewer list, the presenter and the content, in this
    /// order. Viewers are called while this mutex is locked.
    Mutex captureMutex;
    CapturePolicy policy MIRROLET_GUARDED_BY(captureMutex);
    SourceWindow source MIRROLET_GUARDED_BY(captureMutex); ///< The window's properties at the last check.
    /// The bounding box of the parts that were obscured at the last check, in window coordinates. The
    /// redirected window's pixmap lacks these parts at first.
    PixelRect obscured MIRROLET_GUARDED_BY(captureMutex);
    ServerResource<&xcb_damage_destroy, XError::damage> damage MIRROLET_GUARDED_BY(captureMutex);
    PixelRect takenDamage MIRROLET_GUARDED_BY(captureMutex);
    std::shared_ptr<WindowContent> content MIRROLET_GUARDED_BY(captureMutex);
    /// Holds the redirected window's pixmap until the pixmap is shown.
    std::shared_ptr<WindowContent> waitingContent MIRROLET_GUARDED_BY(captureMutex);
    std::weak_ptr<const X11WindowImage> lastImage MIRROLET_GUARDED_BY(captureMutex);
};

} // namespace mirrolet::platform::desktop::x11
