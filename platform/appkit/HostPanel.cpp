#include "platform/appkit/HostPanel.h"

#include "platform/desktop/Desktop.h"

#include <utility>

namespace mirrolet::platform {

void HostPanel::open(desktop::WindowNumber number, desktop::PanelStacking stacking, int level,
                     const desktop::PanelShadow& shadow) {
    panel = desktop::Desktop::current().makePanelWindow(number, stacking);
    panel->setLevel(level);
    panel->setShadow(shadow);
}

void HostPanel::setLevel(int level) {
    if (panel)
        panel->setLevel(level);
}

void HostPanel::setCorners(desktop::PixelSize size, double radius) {
    if (panel)
        panel->setCorners(size, radius);
}

void HostPanel::raise() {
    if (panel)
        panel->didShow();
}

void HostPanel::willShow() {
    if (!panel)
        return;
    awaitsShowing = true;
    panel->willShow();
}

bool HostPanel::shown() {
    if (!panel || !std::exchange(awaitsShowing, false))
        return false;
    panel->didShow();
    if (std::exchange(focusWanted, false))
        panel->takeFocus();
    return true;
}

void HostPanel::willHide() {
    awaitsShowing = focusWanted = false;
    if (panel)
        panel->willHide();
}

void HostPanel::didHide() {
    if (panel)
        panel->didHide();
}

void HostPanel::takeFocus() {
    focusWanted = awaitsShowing;
    if (!focusWanted && panel)
        panel->takeFocus();
}

void HostPanel::returnFocus() {
    if (panel)
        panel->returnFocus();
}

} // namespace mirrolet::platform
