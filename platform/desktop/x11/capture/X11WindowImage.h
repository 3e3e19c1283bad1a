#pragma once

#include "platform/desktop/WindowCapture.h"
#include "platform/desktop/x11/capture/WindowContent.h"

#include <atomic>
#include <cstdint>
#include <memory>

namespace mirrolet::platform::desktop::x11 {

class CaptureSource;

/// A window's picture that stays on the server. Holds its source: as long as one image is held, the window's
/// changes are watched.
class X11WindowImage final : public WindowImage {
  public:
    X11WindowImage(X11Connection& connection, std::shared_ptr<const CaptureSource> source,
                   std::shared_ptr<const WindowContent> content)
        : connection(connection), source(std::move(source)), theContent(std::move(content)),
          theAge(theContent->age()) {}

    [[nodiscard]] PixelSize size() const override { return theContent->size(); }
    [[nodiscard]] Bitmap readBack() const override;
    [[nodiscard]] bool isShown() const override { return shown; }
    void noteShown() const { shown = true; }

    [[nodiscard]] const std::shared_ptr<const WindowContent>& content() const { return theContent; }
    /// The content's age when the image was made.
    [[nodiscard]] std::uint64_t age() const { return theAge; }
    [[nodiscard]] bool isOlderThan(const X11WindowImage& other) const {
        return theContent == other.theContent && theAge < other.theAge;
    }

  private:
    X11Connection& connection;
    const std::shared_ptr<const CaptureSource> source;
    const std::shared_ptr<const WindowContent> theContent;
    const std::uint64_t theAge;
    mutable std::atomic<bool> shown = false;
};

} // namespace mirrolet::platform::desktop::x11
