// Shortcuts as a defaults file gives them, and presses that come at any time, into the events of the system.

#include "hotkeys/HotkeyManager.h"
#include "platform/carbon/KeyCodes.h"
#include "platform/desktop/fake/FakeDesktop.h"
#include "platform/dispatch/fake/VirtualTime.h"
#include "platform/foundation/NSLog.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace mirrolet::platform {
void NSLog(std::string_view /*message*/) {}
} // namespace mirrolet::platform

namespace {

using namespace mirrolet;
using namespace mirrolet::platform;

void expect(bool holds) {
    if (!holds)
        std::abort();
}

class Input {
  public:
    explicit Input(std::string_view bytes) : rest(bytes) {}

    [[nodiscard]] bool atEnd() const { return rest.empty(); }
    std::uint32_t byte() {
        if (rest.empty())
            return 0;
        const auto first = static_cast<std::uint8_t>(rest.front());
        rest.remove_prefix(1);
        return first;
    }
    /// Small ones mostly: they are keys.
    std::uint32_t number() {
        const auto first = byte();
        return first < 250 ? first + 256 * (byte() % 4) : first << 24 | byte() << 16 | byte() << 8 | byte();
    }

  private:
    std::string_view rest;
};

void expectRoundTrip(std::uint32_t code) {
    if (const auto evdev = evdevFromVirtual(code))
        expect(virtualFromEvdev(*evdev).has_value());
    if (const auto key = virtualFromEvdev(code))
        expect(evdevFromVirtual(*key) == code);
}

void runSteps(Input& input, desktop::fake::FakeDesktop& desktop, dispatch::VirtualTime& time) {
    const auto manager = HotkeyManager::make();
    int pressed = 0;
    manager->onHotkeyPressed = [&pressed](HotkeyID id) {
        expect(hotkeyIDFromRawValue(rawValue(id)) == id);
        ++pressed;
    };
    HotKeyModeRef mode = nullptr;
    while (!input.atEnd()) {
        const auto step = input.byte();
        const auto id = step & 8 ? HotkeyID::togglePiPVisibility : HotkeyID::pipFrontmostWindow;
        const auto code = input.number();
        expectRoundTrip(code);
        switch (step % 6) {
        case 0:
            manager->registerHotkey(id, code, input.number() << (step >> 4));
            break;
        case 1:
            manager->unregisterHotkey(id);
            break;
        case 2:
            desktop.hotKeys().take({code, input.byte()});
            break;
        case 3:
            PopSymbolicHotKeyMode(mode);
            mode = step & 16 ? PushSymbolicHotKeyMode(kHIHotKeyModeAllDisabled) : nullptr;
            break;
        case 4:
            time.run();
            break;
        default:
            for (const auto& held : desktop.hotKeys().held())
                desktop.hotKeys().press(held);
        }
        expect(desktop.hotKeys().held().size() <= 2);
    }
    PopSymbolicHotKeyMode(mode);
    time.run();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    dispatch::VirtualTime time;
    auto& desktop = desktop::fake::FakeDesktop::install();
    Input input({reinterpret_cast<const char*>(data), size});
    runSteps(input, desktop, time);
    time.run();
    expect(desktop.hotKeys().held().empty() && desktop.misuses().empty());
    desktop::Desktop::setCurrent(nullptr);
    return 0;
}
