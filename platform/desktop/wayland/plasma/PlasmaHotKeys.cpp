#include "platform/desktop/wayland/plasma/PlasmaHotKeys.h"

#include "platform/desktop/wayland/plasma/HotKeyGrabs.h"
#include "platform/desktop/wayland/plasma/KGlobalAccel.h"
#include "platform/desktop/wayland/plasma/KeyboardLayouts.h"
#include "platform/desktop/wayland/plasma/QtKeyCodes.h"
#include "platform/desktop/wayland/plasma/TimedAnswer.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/SessionBus.h"

#include <chrono>
#include <utility>
#include <vector>

namespace mirrolet::platform::desktop::wayland {

namespace {

/// How long the main thread waits for an answer. KWin usually answers within a few milliseconds.
constexpr std::chrono::milliseconds mainThreadPatience{500};

} // namespace

// Only the bus's thread uses the members, except KeyboardLayouts::current().
struct PlasmaHotKeys::State {
    State(std::shared_ptr<const Keymap> present, HotKeyGrabs::IsDown isDown)
        : keymap(std::move(present)),
          grabs(
              *service, [this](auto code, auto modifiers) { return combinations(code, modifiers); },
              std::move(isDown)) {}

    void use(GDBusConnection* connection);
    void end();
    void handlePress(const std::string& name);
    [[nodiscard]] std::vector<std::int32_t> combinations(std::uint32_t evdevCode,
                                                         std::uint32_t modifiers) const;

    std::shared_ptr<const Keymap> keymap;
    std::function<void(std::uint32_t)> pressed;
    const std::shared_ptr<KGlobalAccel> service = KGlobalAccel::make();
    const std::shared_ptr<KeyboardLayouts> layouts = KeyboardLayouts::make();
    HotKeyGrabs grabs;
    bool hasEnded = false;
};

void PlasmaHotKeys::State::use(GDBusConnection* connection) {
    if (hasEnded)
        return;
    service->use(connection);
    layouts->use(connection);
}

void PlasmaHotKeys::State::end() {
    hasEnded = true;
    grabs.releaseAll();
    service->end();
    layouts->end();
}

void PlasmaHotKeys::State::handlePress(const std::string& name) {
    if (const auto number = grabs.pressed(name); number && pressed)
        pressed(*number);
}

std::vector<std::int32_t> PlasmaHotKeys::State::combinations(std::uint32_t evdevCode,
                                                             std::uint32_t modifiers) const {
    return keymap ? qtCombinationsOf(keymap->strokes(evdevCode, modifiers)) : std::vector<std::int32_t>();
}

PlasmaHotKeys::PlasmaHotKeys(SeatKeyboard& keyboard, std::function<bool(std::uint32_t)> isDown)
    : keyboard(keyboard), state(std::make_shared<State>(keyboard.keymap(), std::move(isDown))) {
    // The handlers may keep a raw pointer to the state. The state owns the service, so the handlers are gone
    // before the state is.
    auto* const raw = state.get();
    state->service->setHandlers({
        .available = [raw](bool available) { raw->grabs.setAvailable(available); },
        .pressed = [raw](const std::string& name) { raw->handlePress(name); },
        .released = [raw](const std::string& name) { raw->grabs.released(name); },
    });
    keyboard.setChanged([this] {
        SessionBus::shared().run([state = state, keymap = this->keyboard.keymap()] {
            state->keymap = keymap;
            state->grabs.keymapChanged();
        });
    });
}

/// Begins to use the service with the first grab. A second process of the program grabs nothing and ends at
/// once. It must not use the service, because the service would then remove the first process's shortcuts.
void PlasmaHotKeys::follow() {
    if (std::exchange(follows, true))
        return;
    SessionBus::shared().follow([weak = std::weak_ptr(state)](GDBusConnection* connection) {
        if (const auto self = weak.lock())
            self->use(connection);
    });
}

PlasmaHotKeys::~PlasmaHotKeys() {
    const auto ended = std::make_shared<TimedAnswer<bool>>();
    SessionBus::shared().run([state = state, ended] {
        state->end();
        ended->set(true);
    });
    (void)ended->waitFor(mainThreadPatience); // The shortcuts should be gone when the program ends.
}

void PlasmaHotKeys::setPressed(std::function<void(std::uint32_t)> handler) {
    SessionBus::shared().run([state = state, handler = std::move(handler)] { state->pressed = handler; });
}

GrabResult PlasmaHotKeys::grab(std::uint32_t number, std::uint32_t evdevCode, std::uint32_t modifiers) {
    follow();
    const auto answer = std::make_shared<TimedAnswer<GrabResult>>();
    SessionBus::shared().run([=, state = state] {
        state->grabs.grab(number, evdevCode, modifiers, [number, answer](GrabResult result) {
            if (!answer->set(result) && result != GrabResult::held)
                NSLog("Plasma: hot key " + std::to_string(number) +
                      " could not be registered: the session's shortcut service refused it, late");
        });
    });
    // If KWin is late, the grab counts as held. The hot key then works once KWin has answered.
    return answer->waitFor(mainThreadPatience).value_or(GrabResult::held);
}

void PlasmaHotKeys::setTitle(std::uint32_t number, const std::string& title) {
    SessionBus::shared().run([=, state = state] { state->grabs.setTitle(number, title); });
}

void PlasmaHotKeys::release(std::uint32_t number) {
    SessionBus::shared().run([=, state = state] { state->grabs.release(number); });
}

void PlasmaHotKeys::suspend(bool suspended) {
    SessionBus::shared().run([=, state = state] { state->grabs.suspend(suspended); });
}

std::string PlasmaHotKeys::keyLabel(std::uint32_t evdevCode) {
    const auto keymap = keyboard.keymap();
    return keymap ? keymap->label(evdevCode, state->layouts->current()) : std::string();
}

} // namespace mirrolet::platform::desktop::wayland
