#pragma once

#include "tests/desktop/harness/ChildProcess.h"

#include <csignal>
#include <memory>
#include <string>

namespace mirrolet::harness {

/// Runs a D-Bus session bus for the test. With Services::installed, the bus starts the machine's D-Bus
/// services when a client asks for them, because some window managers need them.
class SessionBus {
  public:
    enum class Services { none, installed };

    explicit SessionBus(Services services = Services::none, const Environment& more = {});

    /// Kills the bus. All clients of the bus lose their connection at once.
    void kill() const { process->signal(SIGKILL); }
    /// Starts a new bus at the same address.
    void restart();
    [[nodiscard]] Environment with(Environment others) const;

  private:
    void start();

    Sandbox sandbox;
    Environment environment;
    std::unique_ptr<ChildProcess> process;
    std::string where;
};

} // namespace mirrolet::harness
