#include "platform/appkit/NSView.h"

#include "platform/appkit/AlphaAnimation.h"
#include "platform/appkit/NSAnimationContext.h"
#include "platform/appkit/ViewContext.h"

#include <algorithm>
#include <utility>

namespace mirrolet::platform {

NSView::NSView() = default;

NSView::NSView(NSRect frame) : frameRect(frame) {}

NSView::~NSView() {
    for (const auto& child : children)
        child->parent = nullptr;
}

void NSView::setFrame(NSRect frame) {
    if (frame == frameRect)
        return;
    const bool resized = frame.size != frameRect.size;
    frameRect = frame;
    refreshCursorRects();
    if (resized)
        layoutSubviews();
    setNeedsDisplay();
}

NSRect NSView::convertToWindow(NSRect rect) const {
    for (const NSView* view = this; view; view = view->parent) {
        rect.origin.x += view->frameRect.minX();
        rect.origin.y += view->frameRect.minY();
    }
    return rect;
}

NSPoint NSView::convertFromWindow(NSPoint point) const {
    const NSPoint origin = convertToWindow({}).origin;
    return {point.x - origin.x, point.y - origin.y};
}

void NSView::addSubview(const std::shared_ptr<NSView>& view) {
    view->parent = this;
    children.push_back(view);
    view->refreshCursorRects();
    layoutSubviews();
    setNeedsDisplay();
}

void NSView::setAlphaValue(double value) {
    if (animation)
        animation->stop();
    alpha = value;
    setNeedsDisplay();
}

void NSView::animateAlphaValue(double target) {
    // The closure may use `this`, because this view owns the animation.
    if (!animation)
        animation = std::make_unique<AlphaAnimation>([this](double value) {
            alpha = value;
            setNeedsDisplay();
        });
    animation->run(alpha, target, NSAnimationContext::currentDuration());
}

void NSView::setLayer(CALayer layer) {
    properties = layer;
    setNeedsDisplay();
}

void NSView::setNeedsDisplay() {
    if (auto* shownIn = context())
        shownIn->viewChanged();
}

void NSView::draw(NSRect /*dirtyRect*/) {}

// Passes the event on to the superview. A subclass that handles the event overrides this function.
void NSView::mouseDown(const NSEvent& event) {
    if (parent)
        parent->mouseDown(event);
}

void NSView::mouseDragged(const NSEvent& event) {
    if (parent)
        parent->mouseDragged(event);
}

void NSView::mouseUp(const NSEvent& event) {
    if (parent)
        parent->mouseUp(event);
}

void NSView::keyDown(const NSEvent& event) {
    if (parent)
        parent->keyDown(event);
}

bool NSView::isFirstResponder() const {
    const auto* shownIn = context();
    return shownIn && shownIn->isFirstResponder(this);
}

void NSView::resetCursorRects() {}

void NSView::addCursorRect(NSRect rect, NSCursor cursor) {
    cursorRects.emplace_back(rect, cursor);
}

NSCursor NSView::cursorAt(NSPoint point) const {
    for (const auto& [rect, cursor] : cursorRects)
        if (rect.contains(point))
            return cursor;
    return NSCursor::arrow;
}

void NSView::refreshCursorRects() {
    cursorRects.clear();
    resetCursorRects();
}

void NSView::addTrackingArea(const std::shared_ptr<NSTrackingArea>& area) {
    areas.push_back(area);
    if (auto* shownIn = context())
        shownIn->trackingAreaAdded(area);
}

void NSView::removeTrackingArea(const std::shared_ptr<NSTrackingArea>& area) {
    std::erase(areas, area);
}

NSView* NSView::hitTest(NSPoint point) {
    if (!frameRect.contains(point))
        return nullptr;
    const NSPoint inside{point.x - frameRect.minX(), point.y - frameRect.minY()};
    for (auto child = children.rbegin(); child != children.rend(); ++child)
        if (auto* hit = (*child)->hitTest(inside))
            return hit;
    return this;
}

void NSView::makeFirstResponder(NSView* view) {
    if (auto* shownIn = context())
        shownIn->makeFirstResponder(view);
}

ViewContext* NSView::context() const {
    const NSView* view = this;
    while (view->parent)
        view = view->parent;
    return view->rootContext;
}

void NSView::addConstraint(const NSLayoutConstraint& constraint) {
    constraints.push_back(constraint);
    if (parent)
        parent->layoutSubviews();
}

void NSView::layoutSubviews() {
    for (const auto& child : children)
        child->resolveConstraints(frameRect.size);
}

void NSView::resolveConstraints(NSSize container) {
    if (!constraints.empty())
        setFrame(NSLayoutConstraint::resolve(constraints, frameRect, container));
}

} // namespace mirrolet::platform
