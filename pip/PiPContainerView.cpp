#include "pip/PiPContainerView.h"

namespace mirrolet {

using namespace platform;

void PiPContainerView::mouseDown(const NSEvent& event) {
    if (onMouseDown)
        onMouseDown(event);
}

void PiPContainerView::mouseDragged(const NSEvent& event) {
    if (onMouseDragged)
        onMouseDragged(event);
}

void PiPContainerView::mouseUp(const NSEvent& event) {
    if (onMouseUp)
        onMouseUp(event);
}

} // namespace mirrolet
