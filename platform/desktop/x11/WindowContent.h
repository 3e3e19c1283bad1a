#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/x11/RenderResources.h"

#include <xcb/render.h>

#include <cstdint>
#include <deque>
#include <mutex>

namespace mirrolet::platform::desktop::x11 {

/// What a window showed between two resizes or maps: its named pixmap, which stays on the server as long as
/// this does and is drawn to by the window as long as it keeps its size and stays mapped. Any thread.
class WindowContent {
  public:
    /// Content that was never seen: black.
    explicit WindowContent(PixelSize size) : picture{0, 0, size.width, size.height} {}
    /// `picture` is the part of the pixmap that is the window's own picture (without border and shadow), not
    /// empty.
    WindowContent(ServerPixmap pixmap, xcb_render_pictformat_t opaqueFormat, PixelRect picture)
        : pixmap(std::move(pixmap)), format(opaqueFormat), picture(picture) {}

    /// 0 for content that was never seen.
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

  private:
    const ServerPixmap pixmap;
    const xcb_render_pictformat_t format = 0;
    const PixelRect picture;

    mutable std::mutex lock;      ///< Guards what follows.
    std::deque<PixelRect> recent; ///< The last damages; the newest one's number is `noted`.
    std::uint64_t noted = 0;
};

} // namespace mirrolet::platform::desktop::x11
