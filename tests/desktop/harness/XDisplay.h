#pragma once

#include "tests/desktop/harness/Sandbox.h"

#include <string>

namespace mirrolet::harness {

/// A place where X clients connect: an X server of its own, or the XWayland of a Wayland session.
class XDisplay {
  public:
    XDisplay() = default;
    virtual ~XDisplay() = default;
    XDisplay(const XDisplay&) = delete;
    XDisplay& operator=(const XDisplay&) = delete;

    /// Returns the display name, such as ":1".
    [[nodiscard]] const std::string& display() const { return name; }
    /// Returns the environment with the variables by which a client finds this display.
    [[nodiscard]] virtual Environment with(Environment environment) const;

  protected:
    std::string name;
};

} // namespace mirrolet::harness
