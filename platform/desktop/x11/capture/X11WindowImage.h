#pragma once

#include "platform/desktop/WindowCapture.h"
#include "platform/desktop/x11/capture/WindowContent.h"

#include <cstdint>
#include <memory>

namespace mirrolet::platform::desktop::x11 {

class CaptureSource;

/// A window's image whose pixels stay on the server. The image holds its source, so the window's changes are
/// watched as long as one image is held.
class X11WindowImage final : public WindowImage {
  public:
    X11WindowImage(X11Connection& connection, std::shared_ptr<const CaptureSource> source,
                   std::shared_ptr<const WindowContent> content)
        : connection(connection), source(std::move(source)), theContent(std::move(content)),
          theSerial(theContent->serial()) {}

    [[nodiscard]] PixelSize size() const override { return theContent->size(); }
    [[nodiscard]] Bitmap readBack() const override;

    [[nodiscard]] const std::shared_ptr<const WindowContent>& content() const { return theContent; }
    /// Returns the serial that the content had when the image was made.
    [[nodiscard]] std::uint64_t serial() const { return theSerial; }
    /// Returns whether both images are of the same content and this image is without the latest changes of
    /// `other`.
    [[nodiscard]] bool precedes(const X11WindowImage& other) const {
        return theContent == other.theContent && theSerial < other.theSerial;
    }

  private:
    X11Connection& connection;
    const std::shared_ptr<const CaptureSource> source;
    const std::shared_ptr<const WindowContent> theContent;
    const std::uint64_t theSerial;
};

} // namespace mirrolet::platform::desktop::x11
