#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/x11/capture/UnobscuredGuard.h"
#include "platform/desktop/x11/capture/X11WindowImage.h"
#include "platform/desktop/x11/mirror/ScalePlan.h"
#include "platform/desktop/x11/server/RenderFormats.h"
#include "platform/desktop/x11/server/RenderResources.h"

#include <memory>
#include <optional>
#include <vector>

namespace mirrolet::platform::desktop::x11 {

/// Scales one window's picture on the server in steps. The result of each step is kept, so that only the
/// changed parts are scaled again. To be used by one thread at a time.
class PictureScaler {
  public:
    PictureScaler(X11Connection& connection, const RenderFormats& formats)
        : connection(connection), formats(formats) {}

    /// Sets the image that is scaled from now on, and the size of the result. `image` may be null. Returns
    /// the part of the result that has changed.
    PixelRect setImage(std::shared_ptr<const X11WindowImage> image, PixelSize size);
    /// Draws `part` of the result to the picture `destination`. The top-left corner of the whole result lies
    /// at (left, top) of that picture.
    void draw(xcb_render_picture_t destination, int left, int top, PixelRect part);

  private:
    /// Keeps the result of one step. The last step has no Level, because it draws to the destination.
    struct Level {
        Surface surface;
        PixelRect stale; ///< The part to scale anew before the level is read.
    };

    void rebuild();
    void readDirectly(const DirectPixels& direct);
    void readFrom(xcb_drawable_t drawable, const StoredPixels& stored);
    void drawStep(std::size_t step, xcb_render_picture_t to, int left, int top, const PixelRect& part);
    void setTransform(xcb_render_picture_t picture, const ScaleStep& step, int left, int top);
    void fillBlack(xcb_render_picture_t to, const PixelRect& part);
    PixelRect markStale(PixelRect changed);
    void refreshLevels();

    X11Connection& connection;
    const RenderFormats& formats;
    std::shared_ptr<const X11WindowImage> image;
    PixelSize size;
    std::vector<ScaleStep> steps;
    ServerPicture source;                 ///< What the first step reads: a pixmap or the window.
    std::optional<UnobscuredGuard> guard; ///< Set while `source` is the window itself.
    /// The window that the first step reads once the copy of the window's pixels has been drawn. The pointer
    /// is valid as long as `image` is held.
    const DirectPixels* nextSource = nullptr;
    std::vector<Level> levels;
};

} // namespace mirrolet::platform::desktop::x11
