#pragma once

#include "tests/desktop/harness/ChildProcess.h"

#include <memory>
#include <ostream>
#include <string>

namespace mirrolet::harness {

class XServer;
class SessionBus;

/// The window managers of the tests. The last three are too large for every run.
enum class WindowManagerKind { none, openbox, xfwm4, i3, fluxbox, icewm, mutter, kwin, marco };

/// A running window manager with its own settings. The constructor waits until it manages the display.
class WindowManager {
  public:
    /// The bus is for xfwm4 and the three large ones, which start their settings service on the bus.
    WindowManager(const XServer& server, WindowManagerKind kind, const SessionBus* bus = nullptr);
    /// Kills the window manager, because fluxbox sometimes ignores a request to end.
    ~WindowManager();
    WindowManager(const WindowManager&) = delete;
    WindowManager& operator=(const WindowManager&) = delete;

    [[nodiscard]] WindowManagerKind kind() const { return which; }
    /// For the names of parameterized tests.
    static std::string name(WindowManagerKind kind);

  private:
    WindowManagerKind which;
    Sandbox sandbox;
    std::unique_ptr<ChildProcess> process;
};

/// The name, where a test's output tells its parameter.
inline void PrintTo(WindowManagerKind kind, std::ostream* out) {
    *out << WindowManager::name(kind);
}

} // namespace mirrolet::harness
