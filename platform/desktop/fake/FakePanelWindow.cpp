#include "platform/desktop/fake/FakePanelWindow.h"

namespace mirrolet::platform::desktop::fake {

FakePanelWindow::~FakePanelWindow() {
    record->alive = false;
    record->shown = false;
}

void FakePanelWindow::didShow() {
    if (!std::exchange(announced, false))
        misuses->add("PanelWindow::didShow without willShow");
    record->shown = true;
    ++record->timesShown;
}

void FakePanelWindow::takeFocus() {
    if (!record->shown)
        misuses->add("PanelWindow::takeFocus while hidden");
    record->hasFocus = true;
    ++record->timesFocused;
}

void FakePanelWindow::setCorners(PixelSize size, double radius) {
    record->corners = size;
    record->cornerRadius = radius;
}

} // namespace mirrolet::platform::desktop::fake
