#pragma once

#include "tests/desktop/harness/ChildProcess.h"

#include <csignal>
#include <memory>
#include <string>

namespace mirrolet::harness {

/// A session bus of the test's own. It starts services only for the window managers that need them.
class SessionBus {
  public:
    enum class Services { none, installed };

    explicit SessionBus(Services services = Services::none, const Environment& more = {});

    /// Without goodbye, to all that are on it.
    void kill() const { process->signal(SIGKILL); }
    /// A new one at the same place.
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
