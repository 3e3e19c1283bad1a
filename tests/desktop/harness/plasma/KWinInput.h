#pragma once

#include "tests/desktop/harness/InputDevice.h"
#include "tests/desktop/harness/plasma/WaylandClient.h"

struct org_kde_kwin_fake_input;

namespace mirrolet::harness {

/// Makes key and pointer events in KWin, with KWin's own Wayland protocol for that.
class KWinInput : public InputDevice {
  public:
    explicit KWinInput(const PlasmaSession& session);
    ~KWinInput() override;
    KWinInput(const KWinInput&) = delete;
    KWinInput& operator=(const KWinInput&) = delete;

    void key(int evdevCode, bool pressed) override;
    void moveTo(int x, int y) override;
    void button(int number, bool pressed) override;

  private:
    WaylandClient client;
    org_kde_kwin_fake_input* device;
};

} // namespace mirrolet::harness
