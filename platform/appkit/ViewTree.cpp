#include "platform/appkit/ViewTree.h"

#include "platform/appkit/Drawing.h"
#include "platform/appkit/NSImageView.h"
#include "platform/appkit/NSWindow.h"
#include "platform/carbon/KeyCodes.h"

#include <QCursor>
#include <QKeyEvent>
#include <QPainterPath>

#include <algorithm>
#include <utility>

namespace mirrolet::platform {

namespace {

/// Where the pointer was when the event being delivered was made; asking the server would cost a round trip
/// for each move of a drag.
std::optional<QPointF> eventPosition;

constexpr NSPoint overNothing{-1e6, -1e6};

unsigned long flagsOf(Qt::KeyboardModifiers modifiers) {
    unsigned long flags = 0;
    if (modifiers & Qt::ShiftModifier)
        flags |= NSEventModifierFlags::shift;
    if (modifiers & Qt::ControlModifier)
        flags |= NSEventModifierFlags::control;
    if (modifiers & Qt::AltModifier)
        flags |= NSEventModifierFlags::option;
    if (modifiers & Qt::MetaModifier)
        flags |= NSEventModifierFlags::command;
    if (modifiers & Qt::KeypadModifier)
        flags |= NSEventModifierFlags::numericPad;
    return flags;
}

/// Origin of a view's own coordinates in those of its tree.
NSPoint originInTree(const NSView& view) {
    NSPoint origin;
    for (const NSView* at = &view; at; at = at->superview()) {
        origin.x += at->frame().minX();
        origin.y += at->frame().minY();
    }
    return origin;
}

NSImageView* pictureViewIn(NSView& view) {
    if (auto* images = dynamic_cast<NSImageView*>(&view); images && images->showsWindow())
        return images;
    for (const auto& child : view.subviews())
        if (auto* found = pictureViewIn(*child))
            return found;
    return nullptr;
}

/// X key codes are evdev's plus 8. None for an event that no key made.
std::optional<std::uint16_t> virtualKeyCode(const QKeyEvent& event) {
    const auto scanCode = event.nativeScanCode();
    const auto code = scanCode >= 8 ? virtualFromEvdev(scanCode - 8) : std::nullopt;
    return code ? std::optional(static_cast<std::uint16_t>(*code)) : std::nullopt;
}

/// Modifier keys only change the flags of other keys' events; by place, or by what the layout makes of it.
bool isModifierKey(const QKeyEvent& event, std::uint16_t keyCode) {
    switch (event.key()) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_Hyper_L:
    case Qt::Key_Hyper_R:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
        return true;
    default:
        return keyCode >= 54 && keyCode <= 63;
    }
}

} // namespace

NSPoint NSEvent::mouseLocation() {
    return fromQtScreen(eventPosition.value_or(QPointF(QCursor::pos())));
}

ViewTree::ViewTree(Host treeHost) : host(std::move(treeHost)) {}

ViewTree::~ViewTree() {
    if (rootView)
        rootView->hostTree = nullptr;
}

void ViewTree::setRoot(const std::shared_ptr<NSView>& view) {
    if (rootView)
        rootView->hostTree = nullptr;
    rootView = view;
    if (rootView)
        rootView->hostTree = this;
}

NSImageView* ViewTree::pictureView() const {
    return rootView ? pictureViewIn(*rootView) : nullptr;
}

void ViewTree::paintTree(QPainter& painter, Content content) {
    if (!rootView)
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(0, rootView->frame().height());
    painter.scale(1, -1);
    paintView(painter, *rootView, content);
    painter.restore();
}

void ViewTree::paintView(QPainter& painter, NSView& view, Content content) {
    if (view.alphaValue() <= 0)
        return;
    painter.save();
    painter.setOpacity(painter.opacity() * view.alphaValue());
    painter.translate(view.frame().minX(), view.frame().minY());
    const QRectF bounds = toQRect(view.bounds());
    const CALayer& layer = view.layer();
    QPainterPath shape;
    shape.addRoundedRect(bounds, layer.cornerRadius, layer.cornerRadius);
    const bool background = layer.backgroundColor && (content == Content::all || &view != rootView.get());
    if (background)
        painter.fillPath(shape, toQColor(*layer.backgroundColor));
    painter.save();
    if (layer.masksToBounds && content == Content::all)
        painter.setClipPath(shape, Qt::IntersectClip);
    auto* images = dynamic_cast<NSImageView*>(&view);
    if (!(content == Content::overlay && images && images->showsWindow())) {
        const Drawing drawing(painter);
        view.draw(view.bounds());
    }
    for (const auto& child : view.subviews())
        paintView(painter, *child, content);
    painter.restore();
    if (layer.borderWidth > 0) {
        const double inset = layer.borderWidth / 2; // The line runs inside the edge.
        QPainterPath line;
        line.addRoundedRect(bounds.adjusted(inset, inset, -inset, -inset), layer.cornerRadius - inset,
                            layer.cornerRadius - inset);
        painter.strokePath(line, QPen(toQColor(layer.borderColor), layer.borderWidth));
    }
    painter.restore();
}

NSPoint ViewTree::toTree(QPointF position) const {
    return {position.x(), (rootView ? rootView->frame().height() : 0) - position.y()};
}

NSEvent ViewTree::mouseEvent(NSEventType type, QPointF position, QPointF onScreen) const {
    eventPosition = onScreen;
    NSEvent event;
    event.type = type;
    event.locationInWindow = toTree(position);
    return event;
}

void ViewTree::mousePressed(QPointF position, QPointF onScreen) {
    if (!rootView)
        return;
    auto* hit = rootView->hitTest(toTree(position));
    if (!hit)
        return;
    const auto held = hit->shared_from_this(); // The view may go with what its handler does.
    pressedView = held;
    held->mouseDown(mouseEvent(NSEventType::leftMouseDown, position, onScreen));
}

void ViewTree::mouseMoved(QPointF position, QPointF onScreen, bool pressed) {
    pointer = toTree(position);
    eventPosition = onScreen;
    if (!pressed)
        pressLost(); // Another client has got the release.
    if (const auto view = pressedView.lock()) {
        view->mouseDragged(mouseEvent(NSEventType::leftMouseDragged, position, onScreen));
        return;
    }
    updateTracking();
    updateCursor();
}

void ViewTree::mouseReleased(QPointF position, QPointF onScreen) {
    if (const auto view = pressedView.lock())
        view->mouseUp(mouseEvent(NSEventType::leftMouseUp, position, onScreen));
    pressedView.reset();
    if (!pointer)
        return;
    pointer = toTree(position);
    updateTracking();
    updateCursor();
}

void ViewTree::pointerEntered(QPointF position, QPointF onScreen) {
    if (!isPressed())
        mouseMoved(position, onScreen, false);
}

void ViewTree::pointerLeft() {
    if (isPressed())
        return;
    pointer.reset();
    updateTracking();
    updateCursor();
}

void ViewTree::pressLost() {
    const auto view = std::exchange(pressedView, {}).lock();
    if (!view)
        return;
    NSEvent event;
    event.type = NSEventType::leftMouseUp;
    event.locationInWindow = overNothing; // A button takes it for a change of mind.
    view->mouseUp(event);
    updateTracking();
}

bool ViewTree::keyPressed(const QKeyEvent& event) {
    const auto view = firstResponder.lock();
    if (!view)
        return false;
    const auto keyCode = virtualKeyCode(event);
    if (!keyCode || isModifierKey(event, *keyCode))
        return true;
    NSEvent key;
    key.type = NSEventType::keyDown;
    key.modifierFlags = flagsOf(event.modifiers());
    key.keyCode = *keyCode;
    key.isARepeat = event.isAutoRepeat();
    view->keyDown(key);
    return true;
}

void ViewTree::keyboardLost() {
    makeFirstResponder(nullptr);
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
    if (host.takeKeyboard)
        host.takeKeyboard(view != nullptr);
}

bool ViewTree::isFirstResponder(const NSView* view) const {
    return firstResponder.lock().get() == view;
}

void ViewTree::trackingAreaAdded(const std::shared_ptr<NSTrackingArea>& area) {
    const auto isReplaced = [&area](const auto& before) {
        const bool sameOwner =
            !before.second.owner_before(area->owner) && !area->owner.owner_before(before.second);
        return before.first.expired() && sameOwner;
    };
    if (std::erase_if(entered, isReplaced) > 0)
        entered.emplace(area, area->owner);
}

bool ViewTree::pointerIsIn(const NSView& view, const NSTrackingArea& area) const {
    if (!pointer)
        return false;
    const NSPoint origin = originInTree(view);
    const NSRect rect = area.options & NSTrackingAreaOptions::inVisibleRect ? view.bounds() : area.rect;
    return rect.contains({pointer->x - origin.x, pointer->y - origin.y});
}

void ViewTree::updateTracking() {
    std::erase_if(entered, [](const auto& area) { return area.first.expired(); });
    if (const auto view = rootView)
        trackIn(*view);
}

void ViewTree::trackIn(const NSView& view) {
    // Copies, because an owner may change its areas and a view its subviews while they are told.
    const auto areas = view.trackingAreas(); // NOLINT(performance-unnecessary-copy-initialization)
    for (const auto& area : areas)
        track(view, area);
    const auto children = view.subviews(); // NOLINT(performance-unnecessary-copy-initialization)
    for (const auto& child : children)
        trackIn(*child);
}

void ViewTree::track(const NSView& view, const std::shared_ptr<NSTrackingArea>& area) {
    const bool inside = pointerIsIn(view, *area);
    if (inside == entered.contains(area))
        return;
    if (inside)
        entered.emplace(area, area->owner);
    else
        entered.erase(area);
    const auto owner = area->owner.lock();
    if (!owner)
        return;
    NSEvent event;
    event.type = inside ? NSEventType::mouseEntered : NSEventType::mouseExited;
    event.locationInWindow = pointer.value_or(NSPoint{});
    if (inside)
        owner->mouseEntered(event);
    else
        owner->mouseExited(event);
}

NSCursor ViewTree::cursorAtPointer() const {
    NSView* view = pointer && rootView ? rootView->hitTest(*pointer) : nullptr;
    if (!view)
        return NSCursor::arrow;
    const NSPoint origin = originInTree(*view);
    for (const auto& [rect, shape] : view->cursorRects)
        if (rect.contains({pointer->x - origin.x, pointer->y - origin.y}))
            return shape;
    return NSCursor::arrow;
}

void ViewTree::updateCursor() {
    const NSCursor shape = cursorAtPointer();
    if (shape == cursor)
        return;
    cursor = shape;
    host.setCursor(shape);
}

} // namespace mirrolet::platform
