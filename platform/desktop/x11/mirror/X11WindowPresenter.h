#pragma once

#include "platform/desktop/WindowPresenter.h"
#include "platform/desktop/x11/capture/ImageViewer.h"
#include "platform/desktop/x11/mirror/PictureScaler.h"
#include "platform/desktop/x11/mirror/RoundedCorners.h"
#include "platform/desktop/x11/server/RenderFormats.h"
#include "platform/desktop/x11/server/RenderResources.h"

#include <memory>
#include <mutex>
#include <optional>

namespace mirrolet::platform::desktop::x11 {

/// Composes with RENDER: a canvas of background, picture and overlay, whose corners are then cut where the
/// window can be translucent; from it the window. It stays on the server from frame to frame, only what
/// changed is drawn again, and nothing waits for a reply. A window that died in between makes it all go
/// nowhere. What a capture finds to have changed in the picture is drawn there and then, unless the main
/// thread is about to draw anyway.
class X11WindowPresenter final : public WindowPresenter, private ImageViewer {
  public:
    /// nullptr on a server without RENDER, and for a window that is gone. Waits for the server, this once.
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
    void show(const std::shared_ptr<const X11WindowImage>& image) override;
    void take(std::shared_ptr<const X11WindowImage> image, PixelRect rect);
    void watch(std::shared_ptr<const WindowContent> content);
    void draw();
    [[nodiscard]] PixelRect whole() const { return {0, 0, canvas.size.width, canvas.size.height}; }
    void drawCanvas(const PixelRect& part);
    void layOver(const PixelRect& part);
    void copyToWindow(const PixelRect& part);

    X11Connection& connection;
    const RenderFormats formats;
    const Target target;
    std::shared_ptr<const WindowContent> watched; ///< The main thread's.

    std::mutex lock; ///< Guards what follows. Not held while `watched` changes.
    ServerContext context;
    PictureScaler scaler;
    Surface canvas;  ///< Background, picture, overlay, with the window's depth and cut corners.
    Surface overlay; ///< Premultiplied. None before the first setOverlay().
    std::optional<RoundedCorners> corners;
    std::uint32_t background = 0xff000000;
    std::shared_ptr<const X11WindowImage> picture;
    PixelRect pictureRect;
    PixelRect stale; ///< What present() has to draw.
};

} // namespace mirrolet::platform::desktop::x11
