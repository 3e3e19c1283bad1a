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

/// A window of which no pixels were ever seen. It is shown black.
struct NothingSeen {
    PixelSize size;
};

/// The pixmap of a redirected window. The window draws to the pixmap as long as it keeps its size and stays
/// mapped.
struct RedirectedPixels {
    StoredPixels stored;
    int borderWidth; ///< Of the window; the pixmap holds the border as well.
};

/// What a window shows between two changes of its geometry or of the way that it is captured. Any thread.
class WindowContent {
  public:
    /// One of three kinds.
    using Pixels = std::variant<NothingSeen, RedirectedPixels, std::unique_ptr<DirectPixels>>;
    explicit WindowContent(Pixels pixels);

    [[nodiscard]] PixelSize size() const { return {visible.width, visible.height}; }
    /// The redirected window's pixmap, or the copy of the directly read window. nullptr if nothing was seen.
    [[nodiscard]] const StoredPixels* stored() const;
    /// The window to read directly. nullptr for the other kinds, and after stopReading().
    [[nodiscard]] const DirectPixels* direct() const;
    /// The window is not read directly any more, if it was. Its copy holds what it showed last.
    void stopReading();

    /// Notes that the window drew into `area`, which is in the window without its border.
    void noteDamage(PixelRect area);
    void noteDamageEverywhere() { noteDamage(visible); }
    /// Grows with each noted damage.
    [[nodiscard]] std::uint64_t serial() const;
    /// The box of the changes between two serials, in the visible part. All of that part if `earlier` is too
    /// long ago.
    [[nodiscard]] PixelRect changedBetween(std::uint64_t earlier, std::uint64_t later) const;

    /// From now on the viewer gets each new image of this content. Must not be called from show(), nor with a
    /// mutex held that show() locks.
    void watch(ImageViewer& viewer) const;
    /// Waits until the viewer has shown the image that it is showing. Must not be called from show() either.
    void unwatch(ImageViewer& viewer) const;
    /// Whether there are viewers, and all of them have drawn the image.
    [[nodiscard]] bool showToViewers(const std::shared_ptr<const X11WindowImage>& image) const;

  private:
    const Pixels pixels;
    const PixelRect visible; ///< In the window, without its border.

    mutable Mutex damageMutex; ///< The last in the order of the mutexes; none is locked while it is held.
    /// The last damages, in the window. The newest one has the number `noted`.
    std::deque<PixelRect> recent MIRROLET_GUARDED_BY(damageMutex);
    std::uint64_t noted MIRROLET_GUARDED_BY(damageMutex) = 0;

    /// Held while the viewers show an image. Each of them then locks its own mutex and the damage mutex.
    mutable Mutex viewersMutex MIRROLET_ACQUIRED_BEFORE(damageMutex);
    mutable std::vector<ImageViewer*> viewers MIRROLET_GUARDED_BY(viewersMutex);
};

} // namespace mirrolet::platform::desktop::x11
