#pragma once

#include "tests/desktop/harness/ChildProcess.h"

#include <csignal>
#include <memory>

namespace mirrolet::harness {

class XServer;

/// A tray that shows status icons (trayer, by XEmbed). The constructor waits until it owns the tray
/// selection.
class TrayHost {
  public:
    explicit TrayHost(const XServer& server);
    /// Kills the process without letting it clean up.
    void kill() const { process->signal(SIGKILL); }

  private:
    Sandbox sandbox;
    std::unique_ptr<ChildProcess> process;
};

/// A compositing manager (picom, without shadows and fading). The constructor waits until it owns the
/// compositing selection. The destructor ends it.
class Picom {
  public:
    explicit Picom(const XServer& server);
    /// Kills the process without letting it clean up.
    void kill() const { process->signal(SIGKILL); }

  private:
    Sandbox sandbox;
    std::unique_ptr<ChildProcess> process;
};

} // namespace mirrolet::harness
