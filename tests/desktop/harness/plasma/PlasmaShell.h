#pragma once

#include "tests/desktop/harness/plasma/BusClient.h"

#include <string>

namespace mirrolet::harness {

class PlasmaSession;

/// Makes requests to KWin over the session bus, as Plasma's own programs do.
class PlasmaShell {
  public:
    explicit PlasmaShell(const PlasmaSession& session);

    /// Shows another virtual desktop. The first one is 0.
    void switchToDesktop(int index) const;
    /// Returns whether a program holds global shortcuts under this name now.
    [[nodiscard]] bool hasShortcuts(const std::string& component) const;

  private:
    BusClient bus;
};

} // namespace mirrolet::harness
