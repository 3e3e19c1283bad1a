#include "platform/desktop/fake/FakePresenter.h"

namespace mirrolet::platform::desktop::fake {

FakePresenter::~FakePresenter() {
    record->picture = nullptr;
}

void FakePresenter::resize(PixelSize size, double cornerRadius) {
    if (size.width <= 0 || size.height <= 0)
        misuses->add("WindowPresenter::resize to nothing");
    sized = true;
    record->size = size;
    record->cornerRadius = cornerRadius;
    record->overlay = {};
    record->pictureTarget = {};
}

void FakePresenter::setPicture(std::shared_ptr<const WindowImage> image, PixelRect target) {
    if (!sized)
        misuses->add("WindowPresenter::setPicture before resize");
    ++record->picturesSet;
    record->picture = std::move(image);
    record->pictureTarget = target;
}

void FakePresenter::setOverlay(const Bitmap& overlay) {
    if (overlay.size != record->size)
        misuses->add("WindowPresenter::setOverlay of another size than the window");
    ++record->overlaysSet;
    record->overlay = overlay;
}

} // namespace mirrolet::platform::desktop::fake
