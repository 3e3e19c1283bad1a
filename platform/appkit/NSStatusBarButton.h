#pragma once

#include "platform/appkit/NSImage.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace mirrolet::platform {

/// The visible part of a status item. Shows an image, or the title if there is no image. Main thread.
class NSStatusBarButton {
  public:
    void setImage(std::shared_ptr<NSImage> image);
    void setTitle(std::string title);
    [[nodiscard]] const std::shared_ptr<NSImage>& image() const { return shown; }
    [[nodiscard]] const std::string& title() const { return text; }

    /// Sets the function that is called after each change.
    void setOnChange(std::function<void()> call) { changed = std::move(call); }

  private:
    std::shared_ptr<NSImage> shown;
    std::string text;
    std::function<void()> changed;
};

} // namespace mirrolet::platform
