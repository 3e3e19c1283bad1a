#include "platform/desktop/x11/keys/X11HotKeys.h"

#include "platform/desktop/x11/keys/KeyLabels.h"
#include "platform/desktop/x11/server/XcbXkb.h"
#include "platform/foundation/NSLog.h"

#include <string>
#include <utility>
#include <vector>

namespace mirrolet::platform::desktop::x11 {

namespace {

constexpr std::uint32_t evdevOffset = 8;
constexpr std::uint16_t modifierBits =
    0xff; // Above them: pointer buttons, and the layout group in bits 13 and 14.

std::optional<xcb_keycode_t> keyCodeOf(const X11Connection& connection, std::uint32_t evdevCode) {
    const auto* setup = xcb_get_setup(connection.xcb());
    if (evdevCode > setup->max_keycode - evdevOffset || evdevCode + evdevOffset < setup->min_keycode)
        return std::nullopt;
    return static_cast<xcb_keycode_t>(evdevCode + evdevOffset);
}

/// Every state of the locks that a combination has to work in.
std::vector<std::uint16_t> variantsOf(std::uint16_t bits, std::uint16_t lockBits) {
    const auto locks = static_cast<std::uint16_t>(lockBits & ~bits);
    std::vector<std::uint16_t> variants;
    for (auto some = locks;; some = static_cast<std::uint16_t>((some - 1) & locks)) {
        variants.push_back(static_cast<std::uint16_t>(bits | some));
        if (some == 0)
            return variants;
    }
}

/// Without this, a held key looks like a row of presses and releases.
void askForDetectableRepeat(const X11Connection& connection) {
    if (!connection.extensions().xkb)
        return;
    constexpr std::uint32_t flag = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    const auto cookie =
        xcb_xkb_per_client_flags(connection.xcb(), XCB_XKB_ID_USE_CORE_KBD, flag, flag, 0, 0, 0);
    xcb_discard_reply(connection.xcb(), cookie.sequence);
}

} // namespace

X11HotKeys::X11HotKeys(X11Connection& connection) : connection(connection) {
    askForDetectableRepeat(connection);
    pressSubscription = connection.subscribe<KeyPress>([this](const KeyPress& event) { keyPressed(event); });
    releaseSubscription =
        connection.subscribe<KeyRelease>([this](const KeyRelease& event) { keyReleased(event); });
    followMapping();
}

/// Grabs go by key code: new symbols (a switched layout) change nothing, only a new modifier mapping does.
/// The server tells a client that speaks XKB nothing of it by the core event.
void X11HotKeys::followMapping() {
    if (!connection.extensions().xkb) {
        mappingSubscriptions[0] = connection.subscribe<xcb_mapping_notify_event_t>([this](const auto& event) {
            if (event.request == XCB_MAPPING_MODIFIER)
                followModifiers();
        });
        return;
    }
    xcb_xkb_select_events(connection.xcb(), XCB_XKB_ID_USE_CORE_KBD,
                          XCB_XKB_EVENT_TYPE_MAP_NOTIFY | XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY, 0,
                          XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY, XCB_XKB_MAP_PART_MODIFIER_MAP,
                          XCB_XKB_MAP_PART_MODIFIER_MAP, nullptr);
    mappingSubscriptions[0] =
        connection.subscribe<xcb_xkb_map_notify_event_t>([this](const auto&) { followModifiers(); });
    mappingSubscriptions[1] =
        connection.subscribe<xcb_xkb_new_keyboard_notify_event_t>([this](const auto&) { followModifiers(); });
}

X11HotKeys::~X11HotKeys() {
    pressSubscription = {};
    releaseSubscription = {};
    for (auto& subscription : mappingSubscriptions)
        subscription = {};
    for (auto& [number, combination] : held)
        letGo(combination);
    connection.flush();
}

void X11HotKeys::setPressed(std::function<void(std::uint32_t)> handler) {
    pressed = std::move(handler);
}

GrabResult X11HotKeys::grab(std::uint32_t number, std::uint32_t evdevCode, std::uint32_t modifiers) {
    const auto key = keyCodeOf(connection, evdevCode);
    if (!key)
        return GrabResult::invalid;
    const std::lock_guard guard(lock);
    letGoOf(number);
    if (!modifierMap)
        modifierMap = ModifierMap::read(connection);
    if (!modifierMap)
        return GrabResult::invalid;
    Combination combination{*key, modifiers, modifierMap->bits(modifiers), false};
    const GrabResult result = acquire(combination);
    if (isSuspended)
        letGo(combination);
    if (result == GrabResult::held)
        held.emplace(number, combination);
    connection.flush(); // What was let go must not wait for the next request.
    return result;
}

void X11HotKeys::release(std::uint32_t number) {
    const std::lock_guard guard(lock);
    letGoOf(number);
    connection.flush();
}

void X11HotKeys::suspend(bool suspended) {
    const std::lock_guard guard(lock);
    if (std::exchange(isSuspended, suspended) == suspended)
        return;
    for (auto& [number, combination] : held) {
        if (suspended)
            letGo(combination);
        else
            reacquire(number, combination);
    }
    connection.flush();
}

GrabResult X11HotKeys::acquire(Combination& combination) const {
    if (!combination.bits)
        return GrabResult::invalid;
    if (heldByUs(combination))
        return GrabResult::taken; // The server would silently hand the grab over, and lose both on the first
                                  // release.
    std::vector<xcb_void_cookie_t> cookies;
    for (const auto variant : variantsOf(*combination.bits, modifierMap->lockBits))
        cookies.push_back(xcb_grab_key_checked(connection.xcb(), 0, connection.root(), variant,
                                               combination.key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    std::uint8_t error = 0;
    bool all = true;
    for (const auto cookie : cookies)
        all = connection.succeeds(cookie, &error) && all;
    combination.grabbed = true;
    if (all)
        return GrabResult::held;
    letGo(combination);
    return error == XCB_ACCESS ? GrabResult::taken : GrabResult::invalid;
}

void X11HotKeys::letGo(Combination& combination) const {
    if (!std::exchange(combination.grabbed, false))
        return;
    for (const auto variant : variantsOf(*combination.bits, modifierMap->lockBits))
        xcb_ungrab_key(connection.xcb(), combination.key, connection.root(), variant);
}

void X11HotKeys::letGoOf(std::uint32_t number) {
    const auto found = held.find(number);
    if (found == held.end())
        return;
    letGo(found->second);
    held.erase(found);
}

void X11HotKeys::reacquire(std::uint32_t number, Combination& combination) const {
    if (acquire(combination) != GrabResult::held)
        NSLog("X11: hot key " + std::to_string(number) + " is out of use: its combination " +
              (combination.bits ? "was taken by another program" : "is not on this keyboard any more"));
}

bool X11HotKeys::heldByUs(const Combination& wanted) const {
    for (const auto& [number, other] : held)
        if (&other != &wanted && other.key == wanted.key && other.bits == wanted.bits)
            return true;
    return false;
}

std::optional<std::uint32_t> X11HotKeys::numberOf(const xcb_key_press_event_t& event) const {
    for (const auto& [number, combination] : held) {
        if (!combination.bits || combination.key != event.detail)
            continue;
        const auto locks = modifierMap->lockBits & ~*combination.bits;
        if ((event.state & modifierBits & ~locks) == *combination.bits)
            return number;
    }
    return std::nullopt;
}

void X11HotKeys::keyPressed(const xcb_key_press_event_t& event) {
    std::optional<std::uint32_t> number;
    {
        const std::lock_guard guard(lock);
        if (down.empty())
            grabbedBy = event.detail;
        if (!down.insert(event.detail).second)
            return;
        number = numberOf(event);
    }
    if (number && pressed)
        pressed(*number);
}

void X11HotKeys::keyReleased(const xcb_key_release_event_t& event) {
    const std::lock_guard guard(lock);
    down.erase(event.detail);
    if (event.detail == grabbedBy)
        down.clear(); // The grab ended: the releases of keys that are still down go to someone else.
}

void X11HotKeys::followModifiers() {
    const std::lock_guard guard(lock);
    if (!modifierMap)
        return;
    const auto fresh = ModifierMap::read(connection);
    if (!fresh || *fresh == *modifierMap)
        return;
    std::vector<std::uint32_t> changed;
    for (auto& [number, combination] : held) {
        const auto bits = fresh->bits(combination.modifiers);
        if (bits == combination.bits && fresh->lockBits == modifierMap->lockBits)
            continue;
        letGo(combination);
        combination.bits = bits;
        changed.push_back(number);
    }
    // All are let go before the first is taken again: two of them may have changed places.
    modifierMap = fresh;
    for (const auto number : changed)
        if (!isSuspended)
            reacquire(number, held[number]);
    connection.flush();
}

std::string X11HotKeys::keyLabel(std::uint32_t evdevCode) {
    const auto key = keyCodeOf(connection, evdevCode);
    return key ? keyLabelOf(connection, *key) : std::string();
}

} // namespace mirrolet::platform::desktop::x11
