#pragma once

namespace mirrolet::platform {

struct NSEvent;

/// An object that is told of events. Main thread.
class NSResponder {
  public:
    virtual ~NSResponder() = default;

    /// The pointer came to a tracking area that this object owns, or left it.
    virtual void mouseEntered(const NSEvent& /*event*/) {}
    virtual void mouseExited(const NSEvent& /*event*/) {}
};

} // namespace mirrolet::platform
