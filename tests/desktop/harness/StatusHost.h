#pragma once

#include "tests/desktop/harness/ChildProcess.h"
#include "tests/desktop/harness/SessionBus.h"

#include <memory>
#include <string>

namespace mirrolet::harness {

/// A place for status icons on the session bus. At first there is only a registry. setPresent() adds a host.
class StatusHost {
  public:
    explicit StatusHost(const SessionBus& bus);

    void setPresent(bool present) const { process->write(present ? "host 1\n" : "host 0\n"); }
    /// Clicks the latest icon with the left button.
    void click() const { process->write("click\n"); }
    /// Returns how many icons have appeared and not disappeared.
    [[nodiscard]] int icons() const;
    [[nodiscard]] const ChildProcess& child() const { return *process; }

  private:
    Sandbox sandbox;
    std::unique_ptr<ChildProcess> process;
};

} // namespace mirrolet::harness
