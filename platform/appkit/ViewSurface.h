#pragma once

#include "platform/desktop/WindowPresenter.h"

#include <cstdint>
#include <memory>

class QBackingStore;
class QWindow;

namespace mirrolet::platform {

class NSImageView;
class ViewTree;

/// Draws a tree of views in a native window. Where the desktop can compose, the picture of a mirrored window
/// never passes through here: the views are painted into an overlay, and only when they change. Elsewhere Qt
/// paints all of it. Main thread.
class ViewSurface {
  public:
    /// Both outlive the surface.
    ViewSurface(QWindow& window, const ViewTree& tree);
    ~ViewSurface();

    /// After the native window was made. `background` lies under everything, as 0xAARRGGBB.
    void open(std::uint32_t background);
    /// Before the native window goes.
    void close();

    void contentChanged();
    void pictureChanged();
    /// Draws on the next turn of the event loop.
    void schedule();
    /// Draws what has changed, if the window can be seen.
    void draw();
    /// The server has lost what the window showed.
    void repair();
    /// The window cannot be seen any more: a presenter would go on drawing a picture that changes.
    void leavePicture();

  private:
    void drawPresented();
    void drawByQt();
    [[nodiscard]] desktop::PixelSize pixelSize() const;
    [[nodiscard]] double cornerRadius() const;
    [[nodiscard]] desktop::Bitmap renderOverlay() const;
    [[nodiscard]] desktop::PixelRect pictureTarget(const NSImageView& view) const;
    void setPicture();

    QWindow& window;
    const ViewTree& tree;
    std::unique_ptr<QBackingStore> backingStore;
    std::unique_ptr<desktop::WindowPresenter> presenter; ///< Points at the native window.
    desktop::PixelSize presentedSize;
    bool scheduled = false;
    bool overlayDirty = true;
    bool pictureDirty = true;
};

} // namespace mirrolet::platform
