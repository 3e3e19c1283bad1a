#pragma once

#include "tests/desktop/harness/InputDevice.h"
#include "tests/desktop/harness/XClient.h"

namespace mirrolet::harness {

/// Makes key and pointer events on an X server, with the XTEST extension.
class XInput : public InputDevice {
  public:
    explicit XInput(XClient& client) : client(client) {}

    void key(int evdevCode, bool pressed) override;
    void moveTo(int x, int y) override;
    void button(int number, bool pressed) override;

  private:
    void fake(int type, int detail, int x, int y);

    XClient& client;
};

} // namespace mirrolet::harness
