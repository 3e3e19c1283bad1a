#include "platform/appkit/NSView.h"

#include "platform/appkit/AlphaAnimation.h"
#include "platform/appkit/NSAnimationContext.h"
#include "platform/appkit/ViewTree.h"

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
    if (!animation)
        animation =
            std::make_unique<AlphaAnimation>([this](double value) { // Owned by this view: ends with it.
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
    if (auto* host = tree())
        host->viewChanged();
}

void NSView::draw(NSRect /*dirtyRect*/) {}

// A view that does not want a click leaves it to the view behind it.
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
    const auto* host = tree();
    return host && host->isFirstResponder(this);
}

void NSView::resetCursorRects() {}

void NSView::addCursorRect(NSRect rect, NSCursor cursor) {
    cursorRects.emplace_back(rect, cursor);
}

void NSView::refreshCursorRects() {
    cursorRects.clear();
    resetCursorRects();
}

void NSView::addTrackingArea(const std::shared_ptr<NSTrackingArea>& area) {
    areas.push_back(area);
    if (auto* host = tree())
        host->trackingAreaAdded(area);
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
    if (auto* host = tree())
        host->makeFirstResponder(view);
}

ViewTree* NSView::tree() const {
    const NSView* view = this;
    while (view->parent)
        view = view->parent;
    return view->hostTree;
}

void NSView::layoutSubviews() {
    for (const auto& child : children)
        child->resolveConstraints(frameRect.size);
}

/// Edges pin to the container; a dimension fills in for the opposite edge. What is not constrained stays.
void NSView::resolveConstraints(NSSize container) {
    if (constraints.empty())
        return;
    std::optional<CGFloat> left, right, top, bottom, width, height;
    for (const auto& constraint : constraints) {
        switch (constraint.attribute) {
        case NSLayoutAttribute::leading:
            left = 0;
            break;
        case NSLayoutAttribute::trailing:
            right = container.width;
            break;
        case NSLayoutAttribute::bottom:
            bottom = 0;
            break;
        case NSLayoutAttribute::top:
            top = container.height;
            break;
        case NSLayoutAttribute::width:
            width = constraint.constant;
            break;
        case NSLayoutAttribute::height:
            height = constraint.constant;
            break;
        }
    }
    NSRect frame = frameRect;
    frame.size.width = width ? *width : left && right ? *right - *left : frame.width();
    frame.size.height = height ? *height : bottom && top ? *top - *bottom : frame.height();
    frame.origin.x = left ? *left : right ? *right - frame.width() : frame.minX();
    frame.origin.y = bottom ? *bottom : top ? *top - frame.height() : frame.minY();
    setFrame(frame);
}

} // namespace mirrolet::platform
