#include "tests/desktop/harness/plasma/KWinInput.h"

#include <array>
#include <fake-input-client-protocol.h>
#include <linux/input-event-codes.h>

namespace mirrolet::harness {

KWinInput::KWinInput(const PlasmaSession& session)
    : client(session),
      device(client.bind<org_kde_kwin_fake_input>(org_kde_kwin_fake_input_interface,
                                                  ORG_KDE_KWIN_FAKE_INPUT_KEYBOARD_KEY_SINCE_VERSION)) {
    org_kde_kwin_fake_input_authenticate(device, "desktop_tests", "end-to-end tests");
    client.sync();
}

KWinInput::~KWinInput() {
    org_kde_kwin_fake_input_destroy(device);
}

void KWinInput::key(int evdevCode, bool pressed) {
    org_kde_kwin_fake_input_keyboard_key(device, static_cast<std::uint32_t>(evdevCode), pressed ? 1 : 0);
    client.sync();
}

void KWinInput::moveTo(int x, int y) {
    org_kde_kwin_fake_input_pointer_motion_absolute(device, wl_fixed_from_int(x), wl_fixed_from_int(y));
    client.sync();
}

void KWinInput::button(int number, bool pressed) {
    constexpr std::array<std::uint32_t, 4> codes{0, BTN_LEFT, BTN_MIDDLE, BTN_RIGHT};
    org_kde_kwin_fake_input_button(device, codes.at(static_cast<std::size_t>(number)), pressed ? 1 : 0);
    client.sync();
}

} // namespace mirrolet::harness
