#pragma once

#include <memory>

namespace mirrolet::platform {

class NSView;
struct NSTrackingArea;

/// The surroundings of a view that is shown, as the view and its subviews see them. Main thread.
class ViewContext {
  public:
    virtual ~ViewContext() = default;
    /// Some view has to be drawn again.
    virtual void viewChanged() = 0;
    /// The picture of the image view has to be drawn again, and nothing else.
    virtual void pictureChanged() = 0;
    virtual void trackingAreaAdded(const std::shared_ptr<NSTrackingArea>& area) = 0;
    virtual void makeFirstResponder(NSView* view) = 0;
    [[nodiscard]] virtual bool isFirstResponder(const NSView* view) const = 0;
};

} // namespace mirrolet::platform
