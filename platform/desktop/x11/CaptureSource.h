#pragma once

#include "platform/desktop/WindowCapture.h"
#include "platform/desktop/x11/FrameExtents.h"
#include "platform/desktop/x11/RenderFormats.h"
#include "platform/desktop/x11/WindowContent.h"

#include <xcb/damage.h>
#include <xcb/xcb.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>

namespace mirrolet::platform::desktop::x11 {

/// One window that is being captured: redirected, its damage and life watched, its picture kept by name.
/// Lives as long as one of its images. The note…() members are called for the window's events, by the
/// connection's thread.
class CaptureSource : public std::enable_shared_from_this<CaptureSource> {
  public:
    /// Redirects the window and selects its events; does not wait for the server.
    CaptureSource(X11Connection& connection, const RenderFormats& formats, xcb_window_t window);
    /// `selectedAnew`: another source has this window number by now, whose event selection must stay.
    void end(bool selectedAnew);

    /// The window's picture now, or none if the window is gone. Without a change the same object, without a
    /// request.
    std::shared_ptr<const WindowImage> image();

    [[nodiscard]] bool isGone() const { return gone; }
    /// Whether an event with this sequence number is about this window, and not about one that had its number
    /// before.
    [[nodiscard]] bool concerns(std::uint32_t eventSequence) const {
        return static_cast<std::int32_t>(eventSequence - firstSequence) >= 0;
    }
    /// In the window, without its border.
    void noteDamaged(PixelRect area);
    void noteGone() { gone = true; }
    /// The pixmap is another one by now, or is to be cut in another way.
    void noteReplaced() { pending |= replaced; }
    void noteGeometry(PixelSize size, int borderWidth);

  private:
    using Clock = std::chrono::steady_clock;
    enum Change : unsigned { damaged = 1, replaced = 2 };

    bool update();
    void watchDamage();
    void collectDamage();
    void followFilm(const PixelRect& box);
    PixelRect takeDamagedBox();
    void nameAgain();
    void namePixmap(xcb_visualid_t visual, int borderWidth, const FrameExtents& shadow);
    static std::uint64_t packed(PixelSize size, int borderWidth);

    X11Connection& connection;
    const RenderFormats& formats;
    const xcb_window_t window;
    std::uint32_t firstSequence = 0;
    ServerResource<&xcb_damage_destroy> damage;

    std::atomic<unsigned> pending = replaced;
    std::atomic<bool> gone = false;
    std::atomic<std::uint64_t> knownGeometry = 0; ///< As packed(); what the content was named for.

    std::mutex boxLock; ///< Guards the box only; nothing is locked while it is held.
    PixelRect damagedBox;

    std::mutex lock; ///< Guards what follows.
    std::shared_ptr<WindowContent> content;
    std::weak_ptr<const WindowImage> lastImage;
    int cutLeft = 0; ///< Left and top of the picture in the window, without border.
    int cutTop = 0;
    bool sawDamage = false;
    int filmTicks = 0; ///< In a row, in each of which most of the window changed.
    int grantedTicks =
        0; ///< To come, for which changes are taken for granted; there is no watch on damage then.
    Clock::time_point settlesAt = Clock::time_point::max();
};

} // namespace mirrolet::platform::desktop::x11
