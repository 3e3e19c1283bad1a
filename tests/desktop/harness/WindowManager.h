#pragma once

#include "tests/desktop/harness/ChildProcess.h"

#include <memory>
#include <ostream>
#include <string>

namespace mirrolet::harness {

class XServer;
class SessionBus;

/// The window managers of the tests. The last three are left out of ordinary runs, because they are large.
enum class WindowManagerKind { none, openbox, xfwm4, i3, fluxbox, icewm, mutter, kwin, marco };

/// A running window manager with its own settings. The constructor waits until it manages the display.
class WindowManager {
  public:
    /// xfwm4 and the three large window managers need the bus, because they start their settings service on
    /// it.
    WindowManager(const XServer& server, WindowManagerKind kind, const SessionBus* bus = nullptr);
    /// Kills the window manager, because fluxbox sometimes ignores a request to end.
    ~WindowManager();
    WindowManager(const WindowManager&) = delete;
    WindowManager& operator=(const WindowManager&) = delete;

    [[nodiscard]] WindowManagerKind kind() const { return which; }
    /// Returns the window manager's name, which becomes part of the names of parameterized tests.
    static std::string name(WindowManagerKind kind);

  private:
    WindowManagerKind which;
    Sandbox sandbox;
    std::unique_ptr<ChildProcess> process;
};

/// Prints the window manager's name where a test's output shows the test's parameter.
inline void PrintTo(WindowManagerKind kind, std::ostream* out) {
    *out << WindowManager::name(kind);
}

} // namespace mirrolet::harness
