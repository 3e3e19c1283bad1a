#include "platform/appkit/PointerTracking.h"

#include "platform/appkit/NSResponder.h"

namespace mirrolet::platform {

bool PointerTracking::isInside(const NSView& view, const NSTrackingArea& area) const {
    if (!place)
        return false;
    const NSRect rect = area.options & NSTrackingAreaOptions::inVisibleRect ? view.bounds() : area.rect;
    return rect.contains(view.convertFromWindow(*place));
}

void PointerTracking::areaAdded(const std::shared_ptr<NSTrackingArea>& area) {
    const auto isReplaced = [&area](const auto& before) {
        const bool sameOwner =
            !before.second.owner_before(area->owner) && !area->owner.owner_before(before.second);
        return before.first.expired() && sameOwner;
    };
    if (std::erase_if(entered, isReplaced) > 0)
        entered.emplace(area, area->owner);
}

void PointerTracking::update(const NSView& root) {
    std::erase_if(entered, [](const auto& area) { return area.first.expired(); });
    updateView(root);
}

void PointerTracking::updateView(const NSView& view) {
    // The loops use copies, because the owner of an area may change the view's areas or subviews when it is
    // told that the pointer has entered or left.
    const auto areas = view.trackingAreas(); // NOLINT(performance-unnecessary-copy-initialization)
    for (const auto& area : areas)
        updateArea(view, area);
    const auto children = view.subviews(); // NOLINT(performance-unnecessary-copy-initialization)
    for (const auto& child : children)
        updateView(*child);
}

void PointerTracking::updateArea(const NSView& view, const std::shared_ptr<NSTrackingArea>& area) {
    const bool inside = isInside(view, *area);
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
    event.locationInWindow = place.value_or(NSPoint{});
    if (inside)
        owner->mouseEntered(event);
    else
        owner->mouseExited(event);
}

NSCursor PointerTracking::cursor(NSView& root) const {
    const NSView* view = place ? root.hitTest(*place) : nullptr;
    return view ? view->cursorAt(view->convertFromWindow(*place)) : NSCursor::arrow;
}

} // namespace mirrolet::platform
