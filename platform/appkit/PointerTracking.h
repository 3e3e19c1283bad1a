#pragma once

#include "platform/appkit/NSView.h"
#include "platform/coregraphics/Geometry.h"

#include <map>
#include <memory>
#include <optional>

namespace mirrolet::platform {

/// Knows where the pointer is over one tree of views. Tells the owners of tracking areas when the pointer
/// enters or leaves an area, and chooses the cursor. Main thread.
class PointerTracking {
  public:
    /// Returns the pointer's position in window coordinates, or none while the pointer is outside of the
    /// window.
    [[nodiscard]] const std::optional<NSPoint>& pointer() const { return place; }
    /// Stores the pointer's position. The owners of areas are told only by update().
    void setPointer(std::optional<NSPoint> position) { place = position; }
    /// Tells the owners of the areas that the pointer has entered or left since the last call.
    void update(const NSView& root);
    /// Called for each new area. If the pointer was inside an area that the new one replaces, and the owner
    /// is the same, the pointer counts as inside the new area. The owner is not told a second time.
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
