#pragma once

#include "platform/desktop/WindowPresenter.h"

#include <cstdint>
#include <memory>

class QBackingStore;
class QWindow;

namespace mirrolet::platform {

class NSImageView;
class ViewTree;

/// Draws a tree of views in a native window. If the backend has a presenter, the presenter draws the picture
/// of the source window. Qt then paints the views into an overlay, which is painted again only when the views
/// change. Without a presenter, Qt paints the picture and the views. Main thread.
class ViewSurface {
  public:
    /// Makes a surface. `window` and `tree` must outlive the surface.
    ViewSurface(QWindow& window, const ViewTree& tree);
    ~ViewSurface();

    /// Starts drawing into the native window. Call this after the native window was made. `background` is the
    /// colour under everything, as 0xAARRGGBB.
    void open(std::uint32_t background);
    /// Stops drawing into the native window. Call this before the native window is destroyed.
    void close();

    void contentChanged();
    void pictureChanged();
    /// Calls draw() on the next turn of the event loop.
    void schedule();
    /// Draws what has changed. Does nothing if the window cannot be seen.
    void draw();
    /// Draws the whole window again after the server has lost the window's content.
    void repair();
    /// Stops drawing the picture of the source window. Call this when the native window cannot be seen any
    /// more, because otherwise the presenter would go on drawing each change of the picture.
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
    std::unique_ptr<desktop::WindowPresenter> presenter; ///< Destroyed before the native window.
    desktop::PixelSize presentedSize;
    bool scheduled = false;
    bool overlayDirty = true;
    bool pictureDirty = true;
};

} // namespace mirrolet::platform
