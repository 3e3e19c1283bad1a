#pragma once

#include "platform/appkit/NSView.h"
#include "platform/swiftui/View.h"

#include <memory>

namespace mirrolet::platform {

/// A window's content view that shows a declarative view. The constructor builds the widgets, and the view
/// description is not needed afterwards. If the root view has a rounded background, this view's layer gets
/// the same corner radius.
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
