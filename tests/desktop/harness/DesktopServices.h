#pragma once

#include "tests/desktop/harness/ChildProcess.h"

#include <csignal>
#include <memory>

namespace mirrolet::harness {

class XServer;

/// A tray that shows status icons (trayer, by XEmbed). Owns the tray selection when made.
class TrayHost {
  public:
    explicit TrayHost(const XServer& server);
    /// Without goodbye.
    void kill() const { process->signal(SIGKILL); }

  private:
    Sandbox sandbox;
    std::unique_ptr<ChildProcess> process;
};

/// A compositing manager (picom, without shadows and fading). Owns the compositing selection when made; ends
/// with the object.
class Picom {
  public:
    explicit Picom(const XServer& server);
    /// Without goodbye.
    void kill() const { process->signal(SIGKILL); }

  private:
    Sandbox sandbox;
    std::unique_ptr<ChildProcess> process;
};

} // namespace mirrolet::harness
