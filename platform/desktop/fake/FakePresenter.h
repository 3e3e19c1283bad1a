#pragma once

#include "platform/desktop/WindowPresenter.h"
#include "platform/desktop/fake/Misuses.h"

#include <memory>
#include <utility>

namespace mirrolet::platform::desktop::fake {

/// Records the values that a FakePresenter was given last. The record outlives the presenter.
struct PresenterRecord {
    PixelSize size;
    double cornerRadius = 0;
    std::uint32_t background = 0;
    std::shared_ptr<const WindowImage> picture;
    PixelRect pictureTarget;
    Bitmap overlay;
    int overlaysSet = 0;
    int picturesSet = 0;
};

/// A presenter that only records which of its functions are called. Notes three misuses: a resize() to an
/// empty size, a setPicture() before resize(), and a setOverlay() with another size than the window's.
class FakePresenter final : public WindowPresenter {
  public:
    FakePresenter(std::shared_ptr<PresenterRecord> record, std::shared_ptr<Misuses> misuses)
        : record(std::move(record)), misuses(std::move(misuses)) {}
    ~FakePresenter() override;
    FakePresenter(const FakePresenter&) = delete;
    FakePresenter& operator=(const FakePresenter&) = delete;

    void resize(PixelSize size, double cornerRadius) override;
    void setBackground(std::uint32_t colour) override { record->background = colour; }
    void setPicture(std::shared_ptr<const WindowImage> image, PixelRect target) override;
    void setOverlay(const Bitmap& overlay) override;
    void present() override {}
    void repair(PixelRect) override {}

  private:
    std::shared_ptr<PresenterRecord> record;
    std::shared_ptr<Misuses> misuses;
    bool sized = false;
};

} // namespace mirrolet::platform::desktop::fake
