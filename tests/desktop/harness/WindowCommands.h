#pragma once

#include "tests/desktop/harness/XClient.h"

#include <string>

namespace mirrolet::harness {

/// What a pager or a task list asks of the window manager.
class WindowCommands {
  public:
    explicit WindowCommands(XClient& client) : client(client) {}

    void activate(xcb_window_t window);
    void close(xcb_window_t window);
    void minimize(xcb_window_t window);
    void addState(xcb_window_t window, const std::string& state);
    void setDesktopCount(std::uint32_t count);
    void switchToDesktop(std::uint32_t index);
    /// Waits until the window manager has done what it was asked for before: it alone moves a window that
    /// asks for another place, in its turn. Throws HarnessError if it does not.
    void awaitManager();

  private:
    XClient& client;
};

} // namespace mirrolet::harness
