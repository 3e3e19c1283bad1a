// Fuzzes the hot keys. Registers, unregisters, suspends and presses them in the order that the input chooses.

#include "hotkeys/HotkeyManager.h"
#include "platform/carbon/CarbonEvents.h"
#include "platform/carbon/KeyCodes.h"
#include "platform/desktop/fake/FakeDesktop.h"
#include "platform/dispatch/fake/VirtualTime.h"
#include "tests/fuzz/Fuzz.h"

#include <cstdint>

namespace {

using namespace mirrolet;
using namespace mirrolet::platform;
using fuzz::expect;

/// Reads a number from the input. Most results are small, because real key codes are small.
std::uint32_t numberFrom(fuzz::Bytes& input) {
    const std::uint32_t first = input.byte();
    if (first < 250)
        return first + 256 * (input.byte() % 4);
    return first << 24 | std::uint32_t{input.byte()} << 16 | std::uint32_t{input.byte()} << 8 | input.byte();
}

void expectRoundTrip(std::uint32_t code) {
    if (const auto evdev = evdevFromVirtual(code))
        expect(virtualFromEvdev(*evdev).has_value());
    if (const auto key = virtualFromEvdev(code))
        expect(evdevFromVirtual(*key) == code);
}

void runSteps(fuzz::Bytes& input, desktop::fake::FakeDesktop& desktop, dispatch::VirtualTime& time) {
    FollowDesktopHotKeys();
    const auto manager = HotkeyManager::make();
    int pressed = 0;
    manager->onHotkeyPressed = [&pressed](HotkeyID id) {
        expect(hotkeyIDFromRawValue(rawValue(id)) == id);
        ++pressed;
    };
    HotKeyModeRef mode = nullptr;
    while (!input.atEnd()) {
        const std::uint32_t step = input.byte();
        const auto id = step & 8 ? HotkeyID::togglePiPVisibility : HotkeyID::pipFrontmostWindow;
        const auto code = numberFrom(input);
        expectRoundTrip(code);
        switch (step % 6) {
        case 0:
            manager->registerHotkey(id, code, numberFrom(input) << (step >> 4));
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
    fuzz::Bytes input(fuzz::textOf(data, size));
    runSteps(input, desktop, time);
    time.run();
    expect(desktop.hotKeys().held().empty() && desktop.misuses().empty());
    desktop::Desktop::setCurrent(nullptr);
    return 0;
}
