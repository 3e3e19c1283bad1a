#pragma once

#include "platform/desktop/WindowCapture.h"
#include "platform/desktop/x11/capture/WindowContent.h"
#include "platform/desktop/x11/server/RenderFormats.h"
#include "platform/desktop/x11/windows/FrameExtents.h"

#include <xcb/damage.h>
#include <xcb/xcb.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>

namespace mirrolet::platform::desktop::x11 {

/// One window that is being captured: its damage and life watched, its picture read where the window stands
/// while nothing covers it there, else kept by name, and the window redirected. Redirecting makes the server
/// copy all that the window draws. Where a compositing manager has redirected what the window stands in,
/// nothing covers it. Lives as long as one of its images. The note…() members are called for the window's
/// events, by the connection's thread.
class CaptureSource : public std::enable_shared_from_this<CaptureSource> {
  public:
    /// Selects the window's events; does not wait for the server.
    CaptureSource(X11Connection& connection, const RenderFormats& formats, xcb_window_t window);
    /// `selectedAnew`: another source has this window number by now, whose event selection must stay.
    void end(bool selectedAnew);

    /// The window's picture now, or none if the window is gone. Without a change the same object, without a
    /// request.
    std::shared_ptr<const WindowImage> image();

    /// Whether an event with this sequence number is about this window, and not about one that had its number
    /// before.
    [[nodiscard]] bool concerns(std::uint32_t eventSequence) const {
        return isFrom(firstSequence, eventSequence);
    }
    /// In the window, without its border.
    void noteDamaged(PixelRect area, std::uint32_t eventSequence);
    void noteGone() { gone = true; }
    [[nodiscard]] bool isGone() const { return gone; }
    /// The pixmap is another one by now, or is to be cut in another way.
    void noteReplaced() { pending |= replaced; }
    void noteGeometry(PixelSize size, int borderWidth);

  private:
    static bool isFrom(std::uint32_t request, std::uint32_t eventSequence) {
        return static_cast<std::int32_t>(eventSequence - request) >= 0;
    }
    using Clock = std::chrono::steady_clock;
    enum Change : unsigned { damaged = 1, replaced = 2 };

    bool update();
    void watchDamage();
    void collectDamage();
    void followFilm(const PixelRect& box);
    PixelRect takeDamagedBox();
    void lookAgain();
    void hide();
    void unredirect();
    bool isRedirectedByOthers();
    void look(const xcb_get_geometry_reply_t& geometry, xcb_visualid_t visual, const FrameExtents& shadow);
    void showInPlace(xcb_visualid_t visual, PixelSize size, const PixelRect& part);
    void leavePlace(const PixelRect& covered);
    void namePixmap(xcb_visualid_t visual, int borderWidth, const FrameExtents& shadow);
    void showNamed();
    void keepCopy(Clock::time_point now);
    bool drewWhatWasCovered();
    static std::uint64_t packed(PixelSize size, int borderWidth);

    X11Connection& connection;
    const RenderFormats& formats;
    const xcb_window_t window;
    std::uint32_t firstSequence = 0;
    ServerResource<&xcb_damage_destroy> damage;

    std::atomic<unsigned> pending = replaced;
    std::atomic<bool> gone = false;
    std::atomic<std::uint64_t> knownGeometry = 0; ///< As packed(); what the content was named for.

    std::mutex boxLock; ///< Guards the following three only; nothing is locked while it is held.
    std::uint32_t redirectSequence = 0; ///< Of the request that redirected the window last.
    PixelRect damagedBox;
    PixelRect drawnRedirected; ///< What the window drew since it was redirected.

    std::mutex lock; ///< Guards what follows.
    std::shared_ptr<WindowContent> content;
    std::shared_ptr<WindowContent> named; ///< To be shown once the window has drawn what was covered.
    PixelRect awaited;                    ///< What that is, in the window.
    bool redirected = false;
    std::weak_ptr<const WindowImage> lastImage;
    int cutLeft = 0; ///< Left and top of the picture in the window, without border.
    int cutTop = 0;
    bool sawDamage = false;
    int filmTicks = 0; ///< In a row, in each of which most of the window changed.
    int grantedTicks =
        0; ///< To come, for which changes are taken for granted; there is no watch on damage then.
    Clock::time_point settlesAt = Clock::time_point::max();
    Clock::time_point looksAt = Clock::time_point::max();  ///< What covers the window, if it changes.
    Clock::time_point copiesAt = Clock::time_point::min(); ///< What is read in place.
    Clock::time_point awaitsUntil = Clock::time_point::max();
};

} // namespace mirrolet::platform::desktop::x11
