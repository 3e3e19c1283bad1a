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

/// The small floating panel that shows the mirrored window: rounded, dragged by its body, resized by its
/// grip, closed by a button that shows while the pointer is over it. Created hidden. Main thread.
class PiPPanel : public platform::NSPanel {
  public:
    /// `contentRect` in screen coordinates; the panel is borderless, so it is its frame as well.
    static std::shared_ptr<PiPPanel> make(platform::NSRect contentRect);

    [[nodiscard]] bool canBecomeKeyWindow() const override { return true; }
    [[nodiscard]] bool canBecomeMainWindow() const override { return false; }

    void setFrame(platform::NSRect frame, bool display) override;
    void mouseEntered(const platform::NSEvent& event) override;
    void mouseExited(const platform::NSEvent& event) override;
    void closeButtonTapped();

    /// Fired by the close button.
    std::function<void()> onCloseRequested;
    const std::shared_ptr<platform::NSImageView> imageView;
    const std::shared_ptr<PiPResizeHandleView> resizeHandle;
    const std::shared_ptr<platform::NSButton> closeButton;
    std::shared_ptr<platform::NSTrackingArea> hoverTrackingArea;
    // Both set from the press to the release of a move: pointer and panel origin when it began, screen
    // coordinates.
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
