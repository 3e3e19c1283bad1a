#pragma once

#include "tests/desktop/harness/ChildProcess.h"

#include <csignal>
#include <memory>
#include <string>

namespace mirrolet::harness {

/// The test's own session bus. It starts services only for the window managers that need them.
class SessionBus {
  public:
    enum class Services { none, installed };

    explicit SessionBus(Services services = Services::none, const Environment& more = {});

    /// Kills the bus. All its clients lose their connection at once.
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
