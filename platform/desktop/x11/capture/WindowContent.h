#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/x11/capture/ImageViewer.h"
#include "platform/desktop/x11/server/RenderResources.h"

#include <xcb/render.h>

#include <atomic>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <vector>

namespace mirrolet::platform::desktop::x11 {

/// What a window showed between two resizes or maps. Either its named pixmap, which stays on the server as
/// long as this does and is drawn to by the window as long as it keeps its size and stays mapped. Or the
/// window itself, read where it stands as long as nothing covers it, and a copy of it for afterwards. Any
/// thread.
class WindowContent {
  public:
    /// Content that was never seen: black.
    explicit WindowContent(PixelSize size) : picture{0, 0, size.width, size.height} {}
    /// `picture` is the part of the pixmap that is the window's own picture (without border and shadow), not
    /// empty.
    WindowContent(ServerPixmap pixmap, xcb_render_pictformat_t opaqueFormat, PixelRect picture)
        : pixmap(std::move(pixmap)), format(opaqueFormat), picture(picture) {}
    /// Read in place, from a window of this size, the screen's depth and this format.
    static std::shared_ptr<WindowContent> inPlace(X11Connection& connection, xcb_window_t window,
                                                  PixelSize size, xcb_render_pictformat_t format,
                                                  PixelRect picture);

    /// The window to be read in place, or 0.
    [[nodiscard]] xcb_window_t windowInPlace() const { return window; }
    /// The window is not to be read in place any more: the copy holds what it showed last.
    void leavePlace() { window = XCB_NONE; }
    [[nodiscard]] PixelSize windowSize() const { return copySize; }
    /// Brings the copy up to date. What is covered keeps what it had: the protocol copies visible pixels
    /// only.
    void copyFromPlace(X11Connection& connection) const;
    /// 0 for content that was never seen. Of a window that is read in place: the copy.
    [[nodiscard]] xcb_pixmap_t pixmapId() const { return pixmap.id(); }
    /// The pixmap's format, alpha left out.
    [[nodiscard]] xcb_render_pictformat_t opaqueFormat() const { return format; }
    /// In the pixmap.
    [[nodiscard]] PixelRect pictureRect() const { return picture; }
    [[nodiscard]] PixelSize size() const { return {picture.width, picture.height}; }

    /// Notes that the window drew into `area` of the picture.
    void noteDamage(PixelRect area);
    void noteDamageEverywhere() { noteDamage({0, 0, picture.width, picture.height}); }
    /// How many damages were noted up to now: the age of an image.
    [[nodiscard]] std::uint64_t age() const;
    /// What changed between two ages, as one rectangle in the picture; all of it if that is too long ago.
    [[nodiscard]] PixelRect changedBetween(std::uint64_t older, std::uint64_t newer) const;

    /// From now on the viewer gets each new image of this content. Not to be called while it shows one, nor
    /// while holding what it locks then.
    void watch(ImageViewer& viewer) const;
    /// Not to be called so either: waits until the viewer has shown what it is showing.
    void unwatch(ImageViewer& viewer) const;
    void tellViewers(const std::shared_ptr<const X11WindowImage>& image) const;

  private:
    const ServerPixmap pixmap;
    const xcb_render_pictformat_t format = 0;
    const PixelRect picture;
    PixelSize copySize;
    std::atomic<xcb_window_t> window = XCB_NONE;

    mutable std::mutex lock;      ///< Guards the next two.
    std::deque<PixelRect> recent; ///< The last damages; the newest one's number is `noted`.
    std::uint64_t noted = 0;

    mutable std::mutex viewersLock; ///< Guards the viewers, and is held while they show an image.
    mutable std::vector<ImageViewer*> viewers;
};

} // namespace mirrolet::platform::desktop::x11
