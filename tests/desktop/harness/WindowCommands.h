#pragma once

#include "tests/desktop/harness/XClient.h"

#include <string>

namespace mirrolet::harness {

/// Asks the window manager to change windows or to switch desktops, as a task list or a desktop switcher
/// does.
class WindowCommands {
  public:
    explicit WindowCommands(XClient& client) : client(client) {}

    void activate(xcb_window_t window);
    void close(xcb_window_t window);
    void minimize(xcb_window_t window);
    void addState(xcb_window_t window, const std::string& state);
    void setDesktopCount(std::uint32_t count);
    void switchToDesktop(std::uint32_t index);
    /// Waits until the window manager has handled all earlier requests. Makes a window of its own and asks
    /// for another place for that window. The window manager handles requests in order, so all earlier
    /// requests are done when the window has moved. Throws HarnessError if the window does not move.
    void awaitManager();

  private:
    XClient& client;
};

} // namespace mirrolet::harness
