#pragma once

#include "platform/appkit/NSWindow.h"
#include "platform/swiftui/NSHostingView.h"

#include <memory>

namespace mirrolet::platform {

/// A view controller that brings a declarative view into a window.
class NSHostingController : public NSViewController {
  public:
    explicit NSHostingController(const swiftui::View& rootView)
        : host(std::make_shared<NSHostingView>(rootView)) {}

    [[nodiscard]] std::shared_ptr<NSView> view() const override { return host; }

  private:
    std::shared_ptr<NSHostingView> host;
};

} // namespace mirrolet::platform
