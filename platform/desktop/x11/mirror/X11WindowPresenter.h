#pragma once

#include "platform/desktop/WindowPresenter.h"
#include "platform/desktop/x11/capture/ImageViewer.h"
#include "platform/desktop/x11/mirror/PictureScaler.h"
#include "platform/desktop/x11/mirror/TranslucentCorners.h"
#include "platform/desktop/x11/server/RenderFormats.h"
#include "platform/desktop/x11/server/RenderResources.h"
#include "platform/foundation/Mutex.h"

#include <memory>
#include <optional>

namespace mirrolet::platform::desktop::x11 {

/// Composes the content of a mirror by means of RENDER. Background, picture and overlay are drawn to a
/// canvas. If the window can be translucent, the canvas's corners are made round. The canvas is then copied
/// to the window. The canvas stays on the server from frame to frame, and only what has changed is drawn
/// again. No request waits for a reply. The requests have no effect if the window has been destroyed.
///
/// When a capture finds a change in the picture, the capturing thread draws the change at once. If the main
/// thread is about to draw anyway, it draws the change instead of the capturing thread.
class X11WindowPresenter final : public WindowPresenter, private ImageViewer {
  public:
    /// Returns nullptr on a server without RENDER, and for a window that is gone. Waits for the server. No
    /// other function of this class waits.
    static std::unique_ptr<WindowPresenter> make(X11Connection& connection, WindowNumber window);
    ~X11WindowPresenter() override;
    X11WindowPresenter(const X11WindowPresenter&) = delete;
    X11WindowPresenter& operator=(const X11WindowPresenter&) = delete;

    void resize(PixelSize size, double cornerRadius) override;
    void setBackground(std::uint32_t colour) override;
    void setPicture(std::shared_ptr<const WindowImage> image, PixelRect target) override;
    void setOverlay(const Bitmap& overlay) override;
    void present() override;
    void repair(PixelRect area) override;

  private:
    struct Target {
        xcb_window_t window;
        std::uint8_t depth;
        xcb_render_pictformat_t format;
        bool translucent;
    };

    X11WindowPresenter(X11Connection& connection, RenderFormats formats, Target target);
    [[nodiscard]] bool show(const std::shared_ptr<const X11WindowImage>& image) override;
    void take(std::shared_ptr<const X11WindowImage> image, PixelRect rect) MIRROLET_REQUIRES(presenterMutex);
    void watch(std::shared_ptr<const WindowContent> content) MIRROLET_EXCLUDES(presenterMutex);
    void draw() MIRROLET_REQUIRES(presenterMutex);
    [[nodiscard]] PixelRect whole() const MIRROLET_REQUIRES(presenterMutex) {
        return {0, 0, canvas.size.width, canvas.size.height};
    }
    void drawCanvas(const PixelRect& part) MIRROLET_REQUIRES(presenterMutex);
    void layOver(const PixelRect& part) MIRROLET_REQUIRES(presenterMutex);
    void copyToWindow(const PixelRect& part) MIRROLET_REQUIRES(presenterMutex);

    X11Connection& connection;
    const RenderFormats formats;
    const Target target;
    std::shared_ptr<const WindowContent> watched; ///< Used by the main thread only.

    /// Must not be held while `watched` changes, because that change locks the `viewersMutex` of a content. A
    /// capture locks the two in the other order: `viewersMutex` first, and then this mutex in show().
    Mutex presenterMutex;
    ServerContext context MIRROLET_GUARDED_BY(presenterMutex);
    PictureScaler scaler MIRROLET_GUARDED_BY(presenterMutex);
    /// Holds the composed background, picture, overlay and round corners, in the window's depth.
    Surface canvas MIRROLET_GUARDED_BY(presenterMutex);
    /// The overlay with premultiplied colours. Empty before the first setOverlay().
    Surface overlay MIRROLET_GUARDED_BY(presenterMutex);
    std::optional<TranslucentCorners> corners MIRROLET_GUARDED_BY(presenterMutex);
    std::uint32_t background MIRROLET_GUARDED_BY(presenterMutex) = 0xff000000;
    std::shared_ptr<const X11WindowImage> picture MIRROLET_GUARDED_BY(presenterMutex);
    PixelRect pictureRect MIRROLET_GUARDED_BY(presenterMutex);
    PixelRect stale MIRROLET_GUARDED_BY(presenterMutex); ///< The part that present() has to draw.
};

} // namespace mirrolet::platform::desktop::x11
