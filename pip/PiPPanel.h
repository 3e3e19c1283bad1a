#pragma once

#include "pip/PiPContainerView.h"
#include "pip/PiPResizeHandleView.h"
#include "platform/appkit/NSButton.h"
#include "platform/appkit/NSImageView.h"
#include "platform/appkit/NSPanel.h"
#include "platform/appkit/NSTrackingArea.h"

#include <functional>
#include <memory>
#include <optional>

namespace mirrolet {

/// The mirror: a small floating panel that shows the source window. The panel has rounded corners, is dragged
/// by its body and resized by its grip. Its close button shows while the pointer is over the panel. Created
/// hidden. Main thread only.
class PiPPanel : public platform::NSPanel {
  public:
    /// Makes a hidden panel. `contentRect` is in screen coordinates and becomes the rectangle of the whole
    /// panel, because the panel has no border.
    static std::shared_ptr<PiPPanel> make(platform::NSRect contentRect);

    [[nodiscard]] bool canBecomeKeyWindow() const override { return true; }
    [[nodiscard]] bool canBecomeMainWindow() const override { return false; }

    void setFrame(platform::NSRect frame, bool display) override;
    void mouseEntered(const platform::NSEvent& event) override;
    void mouseExited(const platform::NSEvent& event) override;
    void closeButtonTapped();

    /// Called when the close button is clicked.
    std::function<void()> onCloseRequested;
    const std::shared_ptr<platform::NSImageView> imageView;
    const std::shared_ptr<PiPResizeHandleView> resizeHandle;
    const std::shared_ptr<platform::NSButton> closeButton;
    std::shared_ptr<platform::NSTrackingArea> hoverTrackingArea;
    // The positions of the pointer and of the panel when a drag began, in screen coordinates. Empty while
    // there is no drag.
    std::optional<platform::NSPoint> dragOrigin;
    std::optional<platform::NSPoint> windowOriginAtDragStart;

  private:
    explicit PiPPanel(platform::NSRect contentRect);

    void setUpViews();
    void setUpCloseButton();
    void setUpMoving(PiPContainerView& container);
    std::weak_ptr<PiPPanel> weakSelf();
    void beginMove();
    void continueMove();
    void endMove();
    void resize(platform::CGFloat dx, platform::CGFloat dy);
    void layOutControls();
    void fadeCloseButton(double alpha);
};

} // namespace mirrolet
