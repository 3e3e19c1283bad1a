#pragma once

#include "platform/desktop/WindowCapture.h"
#include "platform/desktop/x11/capture/CapturePolicy.h"
#include "platform/desktop/x11/capture/ReportedDamage.h"
#include "platform/desktop/x11/capture/SourceWindow.h"
#include "platform/desktop/x11/capture/WindowContent.h"
#include "platform/desktop/x11/server/RenderFormats.h"

#include <xcb/damage.h>
#include <xcb/xcb.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>

namespace mirrolet::platform::desktop::x11 {

/// Captures one window. While the window is unobscured its pixels are read directly. Once it is obscured it
/// is redirected and its pixmap is read. CapturePolicy decides which, and this class does it on the server. A
/// source lives as long as one of its images. The note…() members are called for the window's events, by the
/// connection's thread.
class CaptureSource : public std::enable_shared_from_this<CaptureSource> {
  public:
    /// Selects the window's events; does not wait for the server.
    CaptureSource(X11Connection& connection, const RenderFormats& formats, xcb_window_t window);
    /// `selectedAnew`: another source has this window number by now, and its event selection must stay.
    void end(bool selectedAnew);

    /// The window's image now. The same object, without a request to the server, if nothing changed. The same
    /// object too if the viewers of the image have drawn the change.
    CaptureResult image();

    /// Whether an event with this sequence number is about this window. An earlier one is about a window that
    /// had the same number before.
    [[nodiscard]] bool concerns(std::uint32_t eventSequence) const {
        return isAfter(firstSequence, eventSequence);
    }
    /// `area` is in the window, without its border.
    void noteDamaged(const PixelRect& area, std::uint32_t eventSequence);
    void noteGone() { gone = true; }
    [[nodiscard]] bool isGone() const { return gone; }
    /// The window has another pixmap, visible part or visibility.
    void noteReplaced() { changes |= CapturePolicy::replaced; }
    void noteGeometry(PixelSize size, int borderWidth);

  private:
    static std::uint64_t packed(PixelSize size, int borderWidth);

    bool update();
    void perform(const CapturePolicy::Commands& commands);
    void perform(CaptureCommand command);
    void checkWindow();
    void checkViewable();
    void checkRedirection();
    void watchDamage();
    void subtractDamage();
    void takeDamage();
    void redirect();
    void unredirect();
    void readDirectly();
    void stopReading();
    void namePixmap();
    [[nodiscard]] bool canEverBeDirect() const;
    [[nodiscard]] bool hasSameGeometry(const DirectPixels& direct) const;

    X11Connection& connection;
    const RenderFormats& formats;
    const xcb_window_t window;
    std::uint32_t firstSequence = 0;

    std::atomic<unsigned> changes = CapturePolicy::replaced; ///< Since the last tick.
    std::atomic<bool> gone = false;
    std::atomic<std::uint64_t> checkedGeometry = 0; ///< As packed(), when the window was checked last.
    ReportedDamage reportedDamage;

    std::mutex captureMutex; ///< Guards all that follows. Viewers are called with it locked.
    CapturePolicy policy;
    SourceWindow source; ///< As it was checked last.
    PixelRect obscured;  ///< The parts that the pixmap lacks when the window is redirected, in the window.
    ServerResource<&xcb_damage_destroy, XError::damage> damage;
    PixelRect takenDamage;
    std::shared_ptr<WindowContent> content;
    std::shared_ptr<WindowContent> waitingContent; ///< The named pixmap until it is shown.
    std::weak_ptr<const X11WindowImage> lastImage;
};

} // namespace mirrolet::platform::desktop::x11
