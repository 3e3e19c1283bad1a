#pragma once

#include "platform/desktop/WindowCapture.h"
#include "platform/foundation/Mutex.h"

#include <map>
#include <memory>

namespace mirrolet::platform::desktop::fake {

/// An image in one colour.
class FakeWindowImage final : public WindowImage {
  public:
    FakeWindowImage(PixelSize size, std::uint32_t colour, std::shared_ptr<int> alive)
        : extent(size), fill(colour), alive(std::move(alive)) {}

    [[nodiscard]] PixelSize size() const override { return extent; }
    [[nodiscard]] Bitmap readBack() const override;

  private:
    PixelSize extent;
    std::uint32_t fill;
    std::shared_ptr<int> alive; ///< The use count tells how many images still exist.
};

/// Gives the images that a test sets with setPicture(). Gives the same image object until the test changes
/// the picture. May be used by any thread.
class FakeWindowCapture final : public WindowCapture {
  public:
    void setPermitted(bool permitted);
    /// Makes or changes a window's picture. The colour is 0xRRGGBB and opaque.
    void setPicture(WindowNumber window, PixelSize size, std::uint32_t colour);
    /// Makes the window gone for good. A later setPicture() for the same number has no effect on captures.
    void destroyWindow(WindowNumber window);
    /// Makes all further captures of the window fail for this reason.
    void failWindow(WindowNumber window, CaptureFailure failure);
    /// Returns how often this window was captured.
    [[nodiscard]] int captures(WindowNumber window) const;
    /// Returns how many images are held outside of this object. A mirror that has ended holds none.
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
