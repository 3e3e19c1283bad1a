#pragma once

#include <memory>

namespace mirrolet::platform {

class NSView;

/// An object that provides a window's content.
class NSViewController {
  public:
    virtual ~NSViewController() = default;
    [[nodiscard]] virtual std::shared_ptr<NSView> view() const = 0;
};

} // namespace mirrolet::platform
