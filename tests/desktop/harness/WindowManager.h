#pragma once

#include "tests/desktop/harness/ChildProcess.h"

#include <memory>
#include <ostream>
#include <string>

namespace mirrolet::harness {

class XServer;
class SessionBus;

/// The last three are too large for every run.
enum class WindowManagerKind { none, openbox, xfwm4, i3, fluxbox, icewm, mutter, kwin, marco };

/// A window manager with settings of its own; has taken the display when made.
class WindowManager {
  public:
    /// The bus is for those that start their settings service on it: xfwm4 and the large ones.
    WindowManager(const XServer& server, WindowManagerKind kind, const SessionBus* bus = nullptr);
    /// Kills it: fluxbox now and then does not end when asked to.
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
