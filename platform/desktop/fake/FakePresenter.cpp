#include "platform/desktop/fake/FakePresenter.h"

namespace mirrolet::platform::desktop::fake {

FakePresenter::~FakePresenter() {
    record->alive = false;
    record->picture = nullptr;
}

void FakePresenter::resize(PixelSize size, double cornerRadius) {
    if (size.width <= 0 || size.height <= 0)
        misuses->add("WindowPresenter::resize to nothing");
    sized = changed = true;
    record->size = size;
    record->cornerRadius = cornerRadius;
    record->overlay = {};
    record->pictureTarget = {};
}

void FakePresenter::setBackground(std::uint32_t colour) {
    changed = true;
    record->background = colour;
}

void FakePresenter::setPicture(std::shared_ptr<const WindowImage> image, PixelRect target) {
    if (!sized)
        misuses->add("WindowPresenter::setPicture before resize");
    changed = true;
    ++record->picturesSet;
    record->picture = std::move(image);
    record->pictureTarget = target;
}

void FakePresenter::setOverlay(const Bitmap& overlay) {
    if (overlay.size != record->size)
        misuses->add("WindowPresenter::setOverlay of another size than the window");
    changed = true;
    ++record->overlaysSet;
    record->overlay = overlay;
}

void FakePresenter::present() {
    ++(std::exchange(changed, false) ? record->presents : record->emptyPresents);
}

} // namespace mirrolet::platform::desktop::fake
