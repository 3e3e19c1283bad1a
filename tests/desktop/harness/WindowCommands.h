#pragma once

#include "tests/desktop/harness/XClient.h"

#include <string>

namespace mirrolet::harness {

/// Sends the requests of a pager or a task list to the window manager.
class WindowCommands {
  public:
    explicit WindowCommands(XClient& client) : client(client) {}

    void activate(xcb_window_t window);
    void close(xcb_window_t window);
    void minimize(xcb_window_t window);
    void addState(xcb_window_t window, const std::string& state);
    void setDesktopCount(std::uint32_t count);
    void switchToDesktop(std::uint32_t index);
    /// Waits until the window manager has handled all earlier requests. Creates a window and asks for another
    /// place for it, because only the window manager moves the window, and does so in the order of the
    /// requests. Throws HarnessError if the window is not moved.
    void awaitManager();

  private:
    XClient& client;
};

} // namespace mirrolet::harness
