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
}

void FakePanelWindow::takeFocus() {
    if (!record->shown)
        misuses->add("PanelWindow::takeFocus while hidden");
    ++record->timesFocused;
}

} // namespace mirrolet::platform::desktop::fake
