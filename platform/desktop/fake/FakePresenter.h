#pragma once

#include "platform/desktop/WindowPresenter.h"
#include "platform/desktop/fake/Misuses.h"

#include <memory>
#include <utility>

namespace mirrolet::platform::desktop::fake {

/// The last values that a presenter was given, and how often it drew. Outlives the presenter.
struct PresenterRecord {
    WindowNumber window = 0;
    bool alive = true;
    PixelSize size;
    double cornerRadius = 0;
    std::uint32_t background = 0;
    std::shared_ptr<const WindowImage> picture;
    PixelRect pictureTarget;
    Bitmap overlay;
    int overlaysSet = 0;
    int picturesSet = 0;
    int presents = 0;      ///< Calls that had something to draw.
    int emptyPresents = 0; ///< Calls without a change.
};

/// A presenter that records instead of drawing. Notes as a misuse a picture or an overlay before the first
/// size, and an overlay of another size.
class FakePresenter final : public WindowPresenter {
  public:
    FakePresenter(std::shared_ptr<PresenterRecord> record, std::shared_ptr<Misuses> misuses)
        : record(std::move(record)), misuses(std::move(misuses)) {}
    ~FakePresenter() override;
    FakePresenter(const FakePresenter&) = delete;
    FakePresenter& operator=(const FakePresenter&) = delete;

    void resize(PixelSize size, double cornerRadius) override;
    void setBackground(std::uint32_t colour) override;
    void setPicture(std::shared_ptr<const WindowImage> image, PixelRect target) override;
    void setOverlay(const Bitmap& overlay) override;
    void present() override;
    void repair(PixelRect) override {}

  private:
    std::shared_ptr<PresenterRecord> record;
    std::shared_ptr<Misuses> misuses;
    bool sized = false;
    bool changed = false;
};

} // namespace mirrolet::platform::desktop::fake
