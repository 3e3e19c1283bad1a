#pragma once

#include "tests/desktop/harness/Picture.h"
#include "tests/desktop/harness/WindowFacts.h"
#include "tests/desktop/harness/plasma/BusClient.h"

namespace mirrolet::harness {

class PlasmaSession;

/// Reads what KWin shows on the screen, with the windows of all clients.
class PlasmaScreen {
  public:
    explicit PlasmaScreen(const PlasmaSession& session);

    [[nodiscard]] Picture screenshot(const Box& box) const;
    [[nodiscard]] std::uint32_t pixel(int x, int y) const { return screenshot({x, y, 1, 1}).at(0, 0); }

  private:
    BusClient bus;
};

} // namespace mirrolet::harness
