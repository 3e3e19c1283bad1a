#include "platform/appkit/ViewTree.h"

#include "platform/appkit/KeyDownEvent.h"
#include "platform/appkit/NSImageView.h"

#include <utility>

namespace mirrolet::platform {

namespace {

constexpr NSPoint overNothing{-1e6, -1e6};

NSImageView* pictureViewIn(NSView& view) {
    if (auto* images = dynamic_cast<NSImageView*>(&view); images && images->showsWindow())
        return images;
    for (const auto& child : view.subviews())
        if (auto* found = pictureViewIn(*child))
            return found;
    return nullptr;
}

} // namespace

ViewTree::~ViewTree() {
    setRoot(nullptr);
}

void ViewTree::setRoot(const std::shared_ptr<NSView>& view) {
    if (rootView)
        rootView->setContext(nullptr);
    rootView = view;
    if (rootView)
        rootView->setContext(this);
}

NSImageView* ViewTree::pictureView() const {
    return rootView ? pictureViewIn(*rootView) : nullptr;
}

void ViewTree::paint(QPainter& painter, PaintedParts parts) const {
    if (rootView)
        paintViews(*rootView, painter, parts);
}

NSPoint ViewTree::toWindow(QPointF position) const {
    return {position.x(), (rootView ? rootView->frame().height() : 0) - position.y()};
}

NSEvent ViewTree::mouseEvent(NSEventType type, QPointF position) const {
    NSEvent event;
    event.type = type;
    event.locationInWindow = toWindow(position);
    return event;
}

void ViewTree::mousePressed(QPointF position, QPointF onScreen) {
    if (!rootView)
        return;
    auto* hit = rootView->hitTest(toWindow(position));
    if (!hit)
        return;
    // `held` keeps the view alive, because the handler may remove the view from the tree.
    const auto held = hit->shared_from_this();
    pressedView = held;
    NSEvent::noteMouseLocation(onScreen);
    held->mouseDown(mouseEvent(NSEventType::leftMouseDown, position));
}

void ViewTree::mouseMoved(QPointF position, QPointF onScreen, bool pressed) {
    tracking.setPointer(toWindow(position));
    NSEvent::noteMouseLocation(onScreen);
    // If the mouse button is up already, its release event went to another program.
    if (!pressed)
        pressLost();
    if (const auto view = pressedView.lock())
        view->mouseDragged(mouseEvent(NSEventType::leftMouseDragged, position));
    else
        pointerChanged();
}

void ViewTree::mouseReleased(QPointF position, QPointF onScreen) {
    if (const auto view = pressedView.lock()) {
        NSEvent::noteMouseLocation(onScreen);
        view->mouseUp(mouseEvent(NSEventType::leftMouseUp, position));
    }
    pressedView.reset();
    if (!tracking.pointer())
        return;
    tracking.setPointer(toWindow(position));
    pointerChanged();
}

void ViewTree::pointerEntered(QPointF position, QPointF onScreen) {
    if (!isPressed())
        mouseMoved(position, onScreen, false);
}

void ViewTree::pointerLeft() {
    if (isPressed())
        return;
    tracking.setPointer(std::nullopt);
    pointerChanged();
}

void ViewTree::pressLost() {
    const auto view = std::exchange(pressedView, {}).lock();
    if (!view)
        return;
    NSEvent event;
    event.type = NSEventType::leftMouseUp;
    // The position is outside of every view, so the release makes no button act.
    event.locationInWindow = overNothing;
    view->mouseUp(event);
    updateTracking();
}

void ViewTree::updateTracking() {
    if (const auto root = rootView)
        tracking.update(*root);
}

void ViewTree::pointerChanged() {
    updateTracking();
    const NSCursor shape = rootView ? tracking.cursor(*rootView) : NSCursor::arrow;
    if (shape != std::exchange(cursor, shape))
        host.setCursor(shape);
}

void ViewTree::trackingAreaAdded(const std::shared_ptr<NSTrackingArea>& area) {
    tracking.areaAdded(area);
}

bool ViewTree::keyPressed(const QKeyEvent& event) {
    const auto view = firstResponder.lock();
    if (!view)
        return false;
    if (const auto key = keyDownEvent(event))
        view->keyDown(*key);
    return true;
}

void ViewTree::makeFirstResponder(NSView* view) {
    const auto before = firstResponder.lock();
    if (before.get() == view)
        return;
    if (view && !view->acceptsFirstResponder())
        return;
    if (before && !before->resignFirstResponder())
        return;
    firstResponder = view ? view->weak_from_this() : std::weak_ptr<NSView>();
    host.firstResponderChanged(view != nullptr);
}

bool ViewTree::isFirstResponder(const NSView* view) const {
    return firstResponder.lock().get() == view;
}

} // namespace mirrolet::platform
