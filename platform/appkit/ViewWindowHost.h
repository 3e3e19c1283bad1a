#pragma once

#include "platform/appkit/ViewTree.h"
#include "platform/appkit/WindowHost.h"
#include "platform/desktop/PanelWindow.h"
#include "platform/desktop/WindowPresenter.h"

#include <memory>

class QBackingStore;
class QWindow;

namespace mirrolet::platform {

/// Shows a tree of views in a frameless native window. Where the desktop can compose, the picture of a
/// mirrored window never passes through here: the views are painted into an overlay, and only when they
/// change.
class ViewWindowHost final : public WindowHost {
  public:
    explicit ViewWindowHost(NSWindow& window);
    ~ViewWindowHost() override;

    void setGeometry(const QRect& geometry) override;
    void setTitle(const std::string& title) override;
    void setLevel(int level) override;
    void show() override;
    void hide() override;
    void takeFocus() override;
    [[nodiscard]] bool isVisible() const override;
    [[nodiscard]] QRect geometry() const override;

  private:
    class Window;

    void createNative();
    void destroyNative();
    void exposed();
    void resized();
    void cutCorners();
    void takeGeometry();
    void scheduleDrawing();
    void draw();
    void drawPresented();
    void drawByToolkit();
    [[nodiscard]] desktop::PixelSize pixelSize() const;
    [[nodiscard]] double cornerRadius() const;
    [[nodiscard]] desktop::Bitmap renderOverlay() const;
    [[nodiscard]] desktop::PixelRect pictureTarget(const NSImageView& view) const;
    void setPicture();
    void leavePicture();
    void setCursor(NSCursor cursor);

    ViewTree tree;
    std::unique_ptr<Window> window;
    std::unique_ptr<QBackingStore> backingStore;
    // Both point at the native window and go before it.
    std::unique_ptr<desktop::PanelWindow> panel;
    std::unique_ptr<desktop::WindowPresenter> presenter;
    desktop::PanelStacking stacking;
    desktop::PixelSize presentedSize;
    QRect shownAt; ///< What was asked for at the last showing.
    bool announceShown = false;
    bool focusWanted = false;
    bool drawingScheduled = false;
    bool overlayDirty = true;
    bool pictureDirty = true;
};

} // namespace mirrolet::platform
