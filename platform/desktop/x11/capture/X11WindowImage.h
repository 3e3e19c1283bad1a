#pragma once

#include "platform/desktop/WindowCapture.h"
#include "platform/desktop/x11/capture/WindowContent.h"

#include <cstdint>
#include <memory>

namespace mirrolet::platform::desktop::x11 {

/// An image of a window whose pixels stay on the server. Each image holds the source that watches the window.
/// The window is therefore watched as long as one of its images exists.
class X11WindowImage final : public WindowImage {
  public:
    X11WindowImage(X11Connection& connection, std::shared_ptr<const void> source,
                   std::shared_ptr<const WindowContent> content)
        : connection(connection), source(std::move(source)), theContent(std::move(content)),
          theSerial(theContent->serial()) {}

    [[nodiscard]] PixelSize size() const override { return theContent->size(); }
    [[nodiscard]] Bitmap readBack() const override;

    [[nodiscard]] const std::shared_ptr<const WindowContent>& content() const { return theContent; }
    /// Returns the serial that the content had when the image was made.
    [[nodiscard]] std::uint64_t serial() const { return theSerial; }
    /// Returns whether both images are of the same content and `other` is the newer one.
    [[nodiscard]] bool precedes(const X11WindowImage& other) const {
        return theContent == other.theContent && theSerial < other.theSerial;
    }

  private:
    X11Connection& connection;
    const std::shared_ptr<const void> source;
    const std::shared_ptr<const WindowContent> theContent;
    const std::uint64_t theSerial;
};

} // namespace mirrolet::platform::desktop::x11
