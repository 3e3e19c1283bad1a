#pragma once

#include "platform/appkit/NSView.h"
#include "platform/swiftui/View.h"

#include <memory>

namespace mirrolet::platform {

/// A window's content view that shows a declarative view. The widgets are built once, in the constructor, and
/// the view description is not needed afterwards. A root view with a rounded background lends its corner
/// radius to this view's layer.
class NSHostingView : public NSView {
  public:
    explicit NSHostingView(const swiftui::View& rootView);
    ~NSHostingView() override;

    /// Returns the size that the root view asks for.
    [[nodiscard]] std::optional<NSSize> intrinsicContentSize() const override;
    [[nodiscard]] QWidget* hostedWidget() override;

  private:
    struct Root;
    std::unique_ptr<Root> root;
};

} // namespace mirrolet::platform
