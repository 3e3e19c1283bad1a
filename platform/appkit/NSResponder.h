#pragma once

namespace mirrolet::platform {

struct NSEvent;

/// An object that receives events. Main thread.
class NSResponder {
  public:
    virtual ~NSResponder() = default;

    /// Called when the pointer enters or leaves a tracking area that this object owns.
    virtual void mouseEntered(const NSEvent& /*event*/) {}
    virtual void mouseExited(const NSEvent& /*event*/) {}
};

} // namespace mirrolet::platform
