#pragma once

#include "platform/appkit/NSImage.h"
#include "platform/appkit/NSView.h"

#include <memory>

namespace mirrolet::platform {

enum class NSImageScaling { none = 2, proportionallyUpOrDown = 3 };

/// A view that shows one image, centred.
class NSImageView : public NSView {
  public:
    using NSView::NSView;

    [[nodiscard]] const std::shared_ptr<const NSImage>& image() const { return shown; }
    /// Sets the image to show. Setting the same picture again draws nothing.
    void setImage(std::shared_ptr<const NSImage> image);

    NSImageScaling imageScaling = NSImageScaling::none;

    /// Returns the rectangle of the scaled image, in this view's coordinates.
    [[nodiscard]] NSRect imageRect() const;
    [[nodiscard]] bool showsWindow() const;

    void draw(NSRect dirtyRect) override;

  private:
    std::shared_ptr<const NSImage> shown;
};

} // namespace mirrolet::platform
