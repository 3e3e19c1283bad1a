#pragma once

#include "platform/appkit/NSImage.h"
#include "platform/appkit/NSView.h"

#include <functional>
#include <memory>

namespace mirrolet::platform {

enum class NSCellImagePosition { noImage = 0, imageOnly = 1 };

/// A view that can be clicked. Has no border and shows an image in its tint colour. The action runs if the
/// pointer is over the view when the mouse button is released.
class NSButton : public NSView {
  public:
    using NSView::NSView;

    void setImage(std::shared_ptr<const NSImage> image);
    [[nodiscard]] const std::shared_ptr<const NSImage>& image() const { return shown; }

    NSCellImagePosition imagePosition = NSCellImagePosition::noImage;
    NSColor contentTintColor = NSColor::black();
    std::function<void()> action;

    void draw(NSRect dirtyRect) override;
    void mouseDown(const NSEvent& event) override;
    void mouseDragged(const NSEvent& event) override;
    void mouseUp(const NSEvent& event) override;

  private:
    std::shared_ptr<const NSImage> shown;
};

} // namespace mirrolet::platform
