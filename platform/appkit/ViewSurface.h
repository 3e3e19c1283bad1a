#pragma once

#include "platform/desktop/WindowPresenter.h"

#include <cstdint>
#include <memory>

class QBackingStore;
class QWindow;

namespace mirrolet::platform {

class NSImageView;
class ViewTree;

/// The drawing of a tree of views in a native window. If the desktop can compose, the desktop draws the
/// picture of the source window. The views are then painted into an overlay, only when they change. Otherwise
/// Qt paints the picture and the views. Main thread.
class ViewSurface {
  public:
    /// Makes a surface. `window` and `tree` must outlive the surface.
    ViewSurface(QWindow& window, const ViewTree& tree);
    ~ViewSurface();

    /// Starts drawing into the native window. Call this after the native window was made. `background` lies
    /// under everything, as 0xAARRGGBB.
    void open(std::uint32_t background);
    /// Stops drawing into the native window. Call this before the native window is destroyed.
    void close();

    void contentChanged();
    void pictureChanged();
    /// Draws on the next turn of the event loop.
    void schedule();
    /// Draws what has changed, if the window can be seen.
    void draw();
    /// Restores the window's content after the server has lost the content.
    void repair();
    /// Stops drawing the picture. Call this when the window cannot be seen any more, because a presenter
    /// would go on drawing a picture that changes.
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
