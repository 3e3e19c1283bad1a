#pragma once

#include "tests/desktop/harness/ChildProcess.h"
#include "tests/desktop/harness/SessionBus.h"

#include <memory>
#include <string>

namespace mirrolet::harness {

/// Runs a tray that shows status icons through the session bus. At first there is only the registry, to which
/// programs announce their icons. setPresent(true) adds the host, which displays the icons.
class StatusHost {
  public:
    explicit StatusHost(const SessionBus& bus);

    void setPresent(bool present) const { process->write(present ? "host 1\n" : "host 0\n"); }
    /// Clicks the newest icon with the left button.
    void click() const { process->write("click\n"); }
    /// Returns the number of icons that are in the tray now.
    [[nodiscard]] int icons() const;
    [[nodiscard]] const ChildProcess& child() const { return *process; }

  private:
    Sandbox sandbox;
    std::unique_ptr<ChildProcess> process;
};

} // namespace mirrolet::harness
