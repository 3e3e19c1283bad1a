#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/x11/capture/DirectPixels.h"
#include "platform/desktop/x11/capture/ImageViewer.h"
#include "platform/desktop/x11/capture/StoredPixels.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
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

    mutable std::mutex damageMutex; ///< Guards the next two.
    std::deque<PixelRect> recent; ///< The last damages, in the window. The newest one has the number `noted`.
    std::uint64_t noted = 0;

    mutable std::mutex viewersMutex; ///< Guards the viewers, and is held while they show an image.
    mutable std::vector<ImageViewer*> viewers;
};

} // namespace mirrolet::platform::desktop::x11
