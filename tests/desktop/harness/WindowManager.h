#pragma once

#include "tests/desktop/harness/ChildProcess.h"

#include <cstdint>
#include <memory>
#include <ostream>
#include <string>

namespace mirrolet::harness {

class XServer;
class SessionBus;
class XClient;

/// Names the window managers that tests use. Ordinary test runs leave out mutter, kwin and marco, because
/// these are large programs.
enum class WindowManagerKind { none, openbox, xfwm4, i3, fluxbox, icewm, mutter, kwin, marco };

/// Runs a window manager with its own settings. The constructor waits until the window manager manages
/// windows. The display must have no other window manager.
class WindowManager {
  public:
    /// Starts the window manager. xfwm4, mutter, kwin and marco need `bus`, because they start their settings
    /// service through the session bus.
    WindowManager(const XServer& server, WindowManagerKind kind, const SessionBus* bus = nullptr);
    /// Kills the window manager, because fluxbox sometimes ignores a request to end.
    ~WindowManager();
    WindowManager(const WindowManager&) = delete;
    WindowManager& operator=(const WindowManager&) = delete;

    [[nodiscard]] WindowManagerKind kind() const { return which; }
    /// Makes two desktops and waits until the one with this index is shown.
    void showDesktop(XClient& client, std::uint32_t index) const;
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
