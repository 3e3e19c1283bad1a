#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/x11/capture/DirectPixels.h"
#include "platform/desktop/x11/capture/ImageViewer.h"
#include "platform/desktop/x11/capture/StoredPixels.h"
#include "platform/foundation/Mutex.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <variant>
#include <vector>

namespace mirrolet::platform::desktop::x11 {

/// Stands for the pixels of a window that has never been seen. The mirror shows such a window black.
struct NothingSeen {
    PixelSize size;
};

/// The pixmap of a redirected window. The window draws to the pixmap as long as the window keeps its size and
/// stays mapped.
struct RedirectedPixels {
    StoredPixels stored;
    int borderWidth; ///< The width of the window's border, which the pixmap holds as well.
};

/// Holds the content of a window on the server. A new object is made when the window's geometry changes, and
/// when the window is captured in another way. May be used by any thread.
class WindowContent {
  public:
    using Pixels = std::variant<NothingSeen, RedirectedPixels, std::unique_ptr<DirectPixels>>;
    explicit WindowContent(Pixels pixels);

    [[nodiscard]] PixelSize size() const { return {visible.width, visible.height}; }
    /// Returns the redirected window's pixmap, or the copy of the directly read window. Returns nullptr if no
    /// pixels were ever seen.
    [[nodiscard]] const StoredPixels* stored() const;
    /// Returns the window if it is read directly. Returns nullptr for any other window, and after
    /// stopReading().
    [[nodiscard]] const DirectPixels* direct() const;
    /// Ends the direct reading of the window. The copy keeps the last pixels. Does nothing for a window that
    /// is not read directly.
    void stopReading();

    /// Notes that the window drew into `area`, which is relative to the window without its border.
    void noteDamage(PixelRect area);
    void noteDamageEverywhere() { noteDamage(visible); }
    /// Returns a number that grows with each noted damage.
    [[nodiscard]] std::uint64_t serial() const;
    /// Returns the bounding box of the changes between two serials, relative to the visible part. Returns the
    /// whole visible part if `earlier` is too long ago.
    [[nodiscard]] PixelRect changedBetween(std::uint64_t earlier, std::uint64_t later) const;

    /// Passes each new image of this content to the viewer from now on. Must not be called from
    /// ImageViewer::show(), nor while the caller holds a mutex that show() locks.
    void watch(ImageViewer& viewer) const;
    /// Passes no further images to the viewer. Waits until a running ImageViewer::show() has returned, and
    /// must therefore not be called from show().
    void unwatch(ImageViewer& viewer) const;
    /// Passes the image to all viewers. Returns true if there are viewers and all of them have drawn the
    /// image.
    [[nodiscard]] bool showToViewers(const std::shared_ptr<const X11WindowImage>& image) const;

  private:
    const Pixels pixels;
    const PixelRect visible; ///< The visible part of the window, relative to the window without its border.

    mutable Mutex damageMutex; ///< No other mutex is locked while this one is held.
    /// The areas of the latest damages. The newest damage has the number `noted`.
    std::deque<PixelRect> recent MIRROLET_GUARDED_BY(damageMutex);
    std::uint64_t noted MIRROLET_GUARDED_BY(damageMutex) = 0;

    /// Held while the viewers show an image. Each viewer then locks its own mutex and `damageMutex`.
    mutable Mutex viewersMutex MIRROLET_ACQUIRED_BEFORE(damageMutex);
    mutable std::vector<ImageViewer*> viewers MIRROLET_GUARDED_BY(viewersMutex);
};

} // namespace mirrolet::platform::desktop::x11
