#pragma once

#include <memory>

namespace mirrolet::platform {

class NSView;
struct NSTrackingArea;

/// The interface through which views reach the window or widget that shows them. Main thread.
class ViewContext {
  public:
    virtual ~ViewContext() = default;
    /// Called when a view has to be drawn again.
    virtual void viewChanged() = 0;
    /// Called when only the picture of the source window has to be drawn again.
    virtual void pictureChanged() = 0;
    virtual void trackingAreaAdded(const std::shared_ptr<NSTrackingArea>& area) = 0;
    virtual void makeFirstResponder(NSView* view) = 0;
    [[nodiscard]] virtual bool isFirstResponder(const NSView* view) const = 0;
};

} // namespace mirrolet::platform
