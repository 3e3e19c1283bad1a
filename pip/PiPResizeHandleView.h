#pragma once

#include "platform/appkit/NSView.h"

#include <functional>
#include <optional>

namespace mirrolet {

/// The resize grip in the bottom-right corner of the mirror panel.
class PiPResizeHandleView : public platform::NSView {
  public:
    using NSView::NSView;

    /// Called for each movement of the pointer while the grip is dragged. `dx` and `dy` are the distance
    /// since the previous call, in screen coordinates (y upwards).
    std::function<void(platform::CGFloat dx, platform::CGFloat dy)> onResizeDrag;
    std::optional<platform::NSPoint> lastLocation;

    void mouseDown(const platform::NSEvent& event) override;
    void mouseDragged(const platform::NSEvent& event) override;
    void mouseUp(const platform::NSEvent& event) override;
    void resetCursorRects() override;
    void draw(platform::NSRect dirtyRect) override;
};

} // namespace mirrolet
