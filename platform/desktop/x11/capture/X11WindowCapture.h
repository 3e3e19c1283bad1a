#pragma once

#include "platform/desktop/WindowCapture.h"
#include "platform/desktop/x11/server/CompositingManager.h"
#include "platform/desktop/x11/server/RenderFormats.h"
#include "platform/desktop/x11/server/X11Connection.h"

#include <memory>
#include <vector>

namespace mirrolet::platform::desktop::x11 {

class CaptureSource;

/// Captures windows with the COMPOSITE and DAMAGE extensions. A window is watched from its first image on
/// until its last image is released, and is redirected while it is obscured. All images must be released
/// before the connection is destroyed.
class X11WindowCapture final : public WindowCapture {
  public:
    /// Must be called before X11Connection::start().
    explicit X11WindowCapture(X11Connection& connection);
    ~X11WindowCapture() override;

    [[nodiscard]] bool permitted() const override;
    CaptureResult capture(WindowNumber window) override;
    /// Returns whether an image of this window is held now, as it is while the window is mirrored. Returns
    /// false once the window is destroyed. Makes no request. May be called on any thread.
    [[nodiscard]] bool isCaptured(WindowNumber window) const;

  private:
    class Sources;

    template <typename Event, typename Action> void watch(xcb_window_t Event::*window, Action action);
    void watchWindows();
    void watchCompositingManager();

    X11Connection& connection;
    CompositingManager compositingManager;
    const RenderFormats formats;
    const std::shared_ptr<Sources> sources;
    std::vector<X11Connection::Subscription> subscriptions;
};

} // namespace mirrolet::platform::desktop::x11
