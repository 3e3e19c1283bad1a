#pragma once

#include "platform/desktop/Applications.h"
#include "platform/desktop/applications/ApplicationRegistry.h"
#include "platform/desktop/x11/server/X11Connection.h"
#include "platform/desktop/x11/windows/PreviousFocus.h"

#include <optional>
#include <vector>

namespace mirrolet::platform::desktop::x11 {

/// Finds the applications that the windows of an X server belong to. May be used by any thread.
class X11Applications final : public Applications {
  public:
    X11Applications(X11Connection& connection, PreviousFocus& previousFocus);
    X11Applications(X11Connection& connection, PreviousFocus& previousFocus, DesktopEntryIndex entries);

    std::optional<Application> frontmost() override;
    std::optional<Application> running(std::int32_t pid) override { return registry.running(pid); }

    /// Returns the application of each window, in the order of the windows. `windows` must hold all windows
    /// on screen.
    std::vector<Application> applicationsOf(const std::vector<WindowOwner>& windows) {
        return registry.applicationsOf(windows, true);
    }

  private:
    std::optional<xcb_window_t> activeWindow();
    [[nodiscard]] std::optional<xcb_window_t> focusedTopLevel(xcb_window_t focus) const;
    [[nodiscard]] bool isOrdinary(xcb_window_t topLevel) const;

    X11Connection& connection;
    PreviousFocus& previousFocus;
    ApplicationRegistry registry;
};

} // namespace mirrolet::platform::desktop::x11
