#pragma once

#include "platform/appkit/NSView.h"
#include "platform/coregraphics/Geometry.h"

#include <map>
#include <memory>
#include <optional>

namespace mirrolet::platform {

/// Follows the pointer over one tree of views: tells the owners of tracking areas when the pointer comes and
/// goes, and knows the cursor that belongs under it. Main thread.
class PointerTracking {
  public:
    /// In window coordinates; none while the pointer is elsewhere.
    [[nodiscard]] const std::optional<NSPoint>& pointer() const { return place; }
    /// Only notes the place; update() tells the owners.
    void setPointer(std::optional<NSPoint> position) { place = position; }
    /// Tells the owners of those areas that the pointer has entered or left since the last call.
    void update(const NSView& root);
    /// An area that replaces an entered one counts as entered, because its owner has been told already.
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
