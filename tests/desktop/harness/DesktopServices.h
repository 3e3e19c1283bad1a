#pragma once

#include "tests/desktop/harness/ChildProcess.h"

#include <csignal>
#include <memory>

namespace mirrolet::harness {

class XServer;

/// Runs a tray that shows status icons through the XEmbed protocol. The constructor waits until the tray owns
/// the tray selection.
class TrayHost {
  public:
    explicit TrayHost(const XServer& server);
    /// Kills the tray without letting it clean up.
    void kill() const { process->signal(SIGKILL); }

  private:
    Sandbox sandbox;
    std::unique_ptr<ChildProcess> process;
};

/// Runs picom, a compositing manager, without shadows and fading. The constructor waits until picom owns the
/// compositing selection. The destructor ends picom.
class Picom {
  public:
    explicit Picom(const XServer& server);
    /// Kills picom without letting it clean up.
    void kill() const { process->signal(SIGKILL); }

  private:
    Sandbox sandbox;
    std::unique_ptr<ChildProcess> process;
};

} // namespace mirrolet::harness
