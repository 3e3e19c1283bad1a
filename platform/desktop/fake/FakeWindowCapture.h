#pragma once

#include "platform/desktop/WindowCapture.h"
#include "platform/foundation/Mutex.h"

#include <map>
#include <memory>

namespace mirrolet::platform::desktop::fake {

/// A picture of one colour.
class FakeWindowImage final : public WindowImage {
  public:
    FakeWindowImage(PixelSize size, std::uint32_t colour, std::shared_ptr<int> alive)
        : extent(size), fill(colour), alive(std::move(alive)) {}

    [[nodiscard]] PixelSize size() const override { return extent; }
    [[nodiscard]] Bitmap readBack() const override;
    [[nodiscard]] std::uint32_t colour() const { return fill; }

  private:
    PixelSize extent;
    std::uint32_t fill;
    std::shared_ptr<int> alive; ///< Counts the images that somebody still holds.
};

/// Gives the pictures that a test puts in. Gives the same image object until the test changes the picture.
/// Any thread.
class FakeWindowCapture final : public WindowCapture {
  public:
    void setPermitted(bool permitted);
    /// Makes or changes a window's picture. The colour is 0xRRGGBB and opaque.
    void setPicture(WindowNumber window, PixelSize size, std::uint32_t colour);
    /// Destroys the window for good, even if its number gets a picture again.
    void destroyWindow(WindowNumber window);
    /// Makes captures of the window fail from now on, for this reason.
    void failWindow(WindowNumber window, CaptureFailure failure);
    /// Returns how often this window was captured.
    [[nodiscard]] int captures(WindowNumber window) const;
    /// Returns how many images are held outside of this object. A mirror that ended holds none.
    [[nodiscard]] long imagesHeld() const;

    [[nodiscard]] bool permitted() const override;
    CaptureResult capture(WindowNumber window) override;

  private:
    mutable Mutex captureMutex;
    bool mayCapture MIRROLET_GUARDED_BY(captureMutex) = true;
    std::map<WindowNumber, std::shared_ptr<const FakeWindowImage>> pictures MIRROLET_GUARDED_BY(captureMutex);
    std::map<WindowNumber, CaptureFailure> failures MIRROLET_GUARDED_BY(captureMutex);
    std::map<WindowNumber, int> captureCounts MIRROLET_GUARDED_BY(captureMutex);
    std::shared_ptr<int> alive = std::make_shared<int>();
};

} // namespace mirrolet::platform::desktop::fake
