#pragma once

#include "platform/desktop/FrameImporter.h"
#include "platform/desktop/x11/capture/SharedSegments.h"
#include "platform/desktop/x11/capture/WindowContent.h"
#include "platform/desktop/x11/capture/X11WindowImage.h"

#include <memory>

namespace mirrolet::platform::desktop::x11 {

/// Has the server copy frames from shared memory into a pixmap. The server maps the memory itself, so no
/// pixel passes through this program.
class X11FrameImporter final : public FrameImporter {
  public:
    /// Returns nullptr, and logs the reason, if the server cannot map memory by file descriptor (MIT-SHM 1.2)
    /// or has no format for the pixels.
    static std::unique_ptr<FrameImporter> make(X11Connection& connection);

    std::shared_ptr<const WindowImage> import(const SharedFrame& frame,
                                              std::shared_ptr<const void> source) override;
    std::shared_ptr<const WindowImage> lastImage(std::shared_ptr<const void> source) override;

  private:
    X11FrameImporter(X11Connection& connection, xcb_render_pictformat_t format)
        : connection(connection), format(format), segments(connection) {}
    void makeContent(PixelSize size);
    [[nodiscard]] xcb_void_cookie_t copy(const SharedFrame& frame, xcb_shm_seg_t segment);
    void logOnce(const char* problem);

    X11Connection& connection;
    const xcb_render_pictformat_t format;
    SharedSegments segments;
    ServerContext context;
    std::shared_ptr<WindowContent> content; ///< Stays as long as the visible part keeps its size.
    std::weak_ptr<const X11WindowImage> latest;
    bool hasLogged = false;
};

} // namespace mirrolet::platform::desktop::x11
