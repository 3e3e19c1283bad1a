#pragma once

#include "platform/appkit/NSView.h"
#include "platform/coregraphics/Geometry.h"

#include <map>
#include <memory>
#include <optional>

namespace mirrolet::platform {

/// The pointer's place over one tree of views. Tells the owners of tracking areas when the pointer enters and
/// leaves, and knows which cursor to show. Main thread.
class PointerTracking {
  public:
    /// Returns the pointer's place in window coordinates, or nothing while the pointer is elsewhere.
    [[nodiscard]] const std::optional<NSPoint>& pointer() const { return place; }
    /// Notes the pointer's place without telling any owner. update() tells the owners.
    void setPointer(std::optional<NSPoint> position) { place = position; }
    /// Tells the owners of the areas that the pointer has entered or left since the last call.
    void update(const NSView& root);
    /// Notes a new area. An area that replaces an entered area of the same owner counts as entered, because
    /// the owner has been told already.
    void areaAdded(const std::shared_ptr<NSTrackingArea>& area);
    [[nodiscard]] NSCursor cursor(NSView& root) const;

  private:
    void updateView(const NSView& view);
    void updateArea(const NSView& view, const std::shared_ptr<NSTrackingArea>& area);
    [[nodiscard]] bool isInside(const NSView& view, const NSTrackingArea& area) const;

    std::optional<NSPoint> place;
    /// The areas whose owners were told that the pointer is inside, each with its owner.
    std::map<std::weak_ptr<NSTrackingArea>, std::weak_ptr<NSResponder>, std::owner_less<>> entered;
};

} // namespace mirrolet::platform
