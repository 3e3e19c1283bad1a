#pragma once

#include "platform/appkit/NSView.h"

#include <functional>

namespace mirrolet {

/// The content view of the mirror panel. Reports presses and drags to the panel, which moves the mirror.
class PiPContainerView : public platform::NSView {
  public:
    using NSView::NSView;

    std::function<void(const platform::NSEvent&)> onMouseDown;
    std::function<void(const platform::NSEvent&)> onMouseDragged;
    std::function<void(const platform::NSEvent&)> onMouseUp;

    void mouseDown(const platform::NSEvent& event) override;
    void mouseDragged(const platform::NSEvent& event) override;
    void mouseUp(const platform::NSEvent& event) override;
};

} // namespace mirrolet
