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
/// The modifier bits in an event's state. The higher bits are pointer buttons and the layout group.
constexpr std::uint16_t modifierBits = 0xff;
/// The server sets this bit in the type of an event that a client sent.
constexpr std::uint8_t sentByClient = 0x80;

std::optional<xcb_keycode_t> keyCodeOf(const X11Connection& connection, std::uint32_t evdevCode) {
    const auto* setup = xcb_get_setup(connection.xcb());
    if (evdevCode > setup->max_keycode - evdevOffset || evdevCode + evdevOffset < setup->min_keycode)
        return std::nullopt;
    return static_cast<xcb_keycode_t>(evdevCode + evdevOffset);
}

/// Returns the combination's modifier bits together with every combination of lock bits. A hot key has to
/// work whether CapsLock and NumLock are on or off.
std::vector<std::uint16_t> variantsOf(std::uint16_t bits, std::uint16_t lockBits) {
    const auto locks = static_cast<std::uint16_t>(lockBits & ~bits);
    std::vector<std::uint16_t> variants;
    for (auto some = locks;; some = static_cast<std::uint16_t>((some - 1) & locks)) {
        variants.push_back(static_cast<std::uint16_t>(bits | some));
        if (some == 0)
            return variants;
    }
}

/// Asks the server to report a held key as presses only. By default the server also reports a release before
/// each repeated press, which then looks like a new press.
void askForDetectableRepeat(const X11Connection& connection) {
    if (!connection.extensions().xkb)
        return;
    constexpr std::uint32_t flag = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    const auto cookie =
        xcb_xkb_per_client_flags(connection.xcb(), XCB_XKB_ID_USE_CORE_KBD, flag, flag, 0, 0, 0);
    xcb_discard_reply(connection.xcb(), cookie.sequence);
}

} // namespace

X11HotKeys::X11HotKeys(X11Connection& connection) : connection(connection), heldBeforeGrab(connection) {
    askForDetectableRepeat(connection);
    pressSubscription = connection.subscribe<KeyPress>([this](const KeyPress& event) { keyPressed(event); });
    releaseSubscription =
        connection.subscribe<KeyRelease>([this](const KeyRelease& event) { keyReleased(event); });
    rawReleaseSubscription =
        connection.subscribe<xcb_input_raw_key_release_event_t>([this](const auto& event) {
            const MutexLock lock(combinationsMutex);
            heldBeforeGrab.remove(static_cast<xcb_keycode_t>(event.detail));
        });
    followMapping();
}

/// Subscribes to changes of the modifier mapping, because they change what has to be grabbed. A change of the
/// keyboard layout alone does not matter, because grabs go by key code. A client that uses XKB does not get
/// the core event MappingNotify and has to select events of XKB instead.
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
    rawReleaseSubscription = {};
    for (auto& subscription : mappingSubscriptions)
        subscription = {};
    for (auto& [number, combination] : combinations)
        ungrab(combination);
    connection.flush();
}

void X11HotKeys::setPressed(std::function<void(std::uint32_t)> handler) {
    pressed = std::move(handler);
}

GrabResult X11HotKeys::grab(std::uint32_t number, std::uint32_t evdevCode, std::uint32_t modifiers) {
    const auto key = keyCodeOf(connection, evdevCode);
    if (!key)
        return GrabResult::invalid;
    const MutexLock lock(combinationsMutex);
    remove(number);
    if (!modifierMap)
        modifierMap = ModifierMap::read(connection);
    if (!modifierMap)
        return GrabResult::invalid;
    Combination combination{*key, modifiers, modifierMap->bits(modifiers), false};
    const GrabResult result = acquire(combination);
    if (isSuspended)
        ungrab(combination);
    if (result == GrabResult::held)
        combinations.emplace(number, combination);
    connection.flush(); // Sends the ungrab requests now, so that other programs can grab the keys.
    return result;
}

void X11HotKeys::release(std::uint32_t number) {
    const MutexLock lock(combinationsMutex);
    remove(number);
    connection.flush();
}

void X11HotKeys::suspend(bool suspended) {
    const MutexLock lock(combinationsMutex);
    if (std::exchange(isSuspended, suspended) == suspended)
        return;
    for (auto& [number, combination] : combinations) {
        if (suspended)
            ungrab(combination);
        else
            reacquire(number, combination);
    }
    connection.flush();
}

GrabResult X11HotKeys::acquire(Combination& combination) {
    if (!combination.bits)
        return GrabResult::invalid;
    if (heldByUs(combination))
        // This process has grabbed the same combination already. The server would accept a second grab, but
        // giving up one of the two grabs would end both.
        return GrabResult::taken;
    heldBeforeGrab.note(combination.key);
    std::vector<xcb_void_cookie_t> cookies;
    for (const auto variant : variantsOf(*combination.bits, modifierMap->lockBits))
        cookies.push_back(xcb_grab_key_checked(connection.xcb(), 0, connection.root(), variant,
                                               combination.key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    XError error{};
    bool all = true;
    for (const auto cookie : cookies)
        all = connection.succeeds(cookie, {XError::access}, &error) && all;
    combination.grabbed = true;
    if (all)
        return GrabResult::held;
    ungrab(combination);
    return error == XError::access ? GrabResult::taken : GrabResult::invalid;
}

void X11HotKeys::ungrab(Combination& combination) const {
    if (!std::exchange(combination.grabbed, false))
        return;
    for (const auto variant : variantsOf(*combination.bits, modifierMap->lockBits))
        xcb_ungrab_key(connection.xcb(), combination.key, connection.root(), variant);
}

void X11HotKeys::remove(std::uint32_t number) {
    const auto found = combinations.find(number);
    if (found == combinations.end())
        return;
    ungrab(found->second);
    combinations.erase(found);
}

void X11HotKeys::reacquire(std::uint32_t number, Combination& combination) {
    if (acquire(combination) != GrabResult::held)
        NSLog("X11: hot key " + std::to_string(number) + " is out of use: its combination " +
              (combination.bits ? "was taken by another program" : "is not on this keyboard any more"));
}

bool X11HotKeys::heldByUs(const Combination& wanted) const {
    for (const auto& [number, other] : combinations)
        if (&other != &wanted && other.key == wanted.key && other.bits == wanted.bits)
            return true;
    return false;
}

std::optional<std::uint32_t> X11HotKeys::numberOf(const xcb_key_press_event_t& event) const {
    for (const auto& [number, combination] : combinations) {
        if (!combination.bits || combination.key != event.detail)
            continue;
        const auto locks = modifierMap->lockBits & ~*combination.bits;
        if ((event.state & modifierBits & ~locks) == *combination.bits)
            return number;
    }
    return std::nullopt;
}

void X11HotKeys::keyPressed(const xcb_key_press_event_t& event) {
    if (event.response_type & sentByClient)
        return;
    std::optional<std::uint32_t> number;
    {
        const MutexLock lock(combinationsMutex);
        if (down.empty())
            grabbedBy = event.detail;
        if (!down.insert(event.detail).second || heldBeforeGrab.contains(event.detail))
            return; // The press is auto-repeat.
        number = numberOf(event);
    }
    if (number && pressed)
        pressed(*number);
}

void X11HotKeys::keyReleased(const xcb_key_release_event_t& event) {
    if (event.response_type & sentByClient)
        return;
    const MutexLock lock(combinationsMutex);
    down.erase(event.detail);
    heldBeforeGrab.remove(event.detail);
    if (event.detail == grabbedBy)
        down.clear(); // The grab has ended, so no KeyRelease will come for keys that are still down.
}

void X11HotKeys::followModifiers() {
    const MutexLock lock(combinationsMutex);
    if (!modifierMap)
        return;
    const auto fresh = ModifierMap::read(connection);
    if (!fresh || *fresh == *modifierMap)
        return;
    std::vector<std::uint32_t> changed;
    for (auto& [number, combination] : combinations) {
        const auto bits = fresh->bits(combination.modifiers);
        if (bits == combination.bits && fresh->lockBits == modifierMap->lockBits)
            continue;
        ungrab(combination);
        combination.bits = bits;
        changed.push_back(number);
    }
    // All changed combinations are ungrabbed before the first one is grabbed again, because two of them may
    // have swapped their bits.
    modifierMap = fresh;
    for (const auto number : changed)
        if (!isSuspended)
            reacquire(number, combinations[number]);
    connection.flush();
}

std::string X11HotKeys::keyLabel(std::uint32_t evdevCode) {
    const auto key = keyCodeOf(connection, evdevCode);
    return key ? keyLabelOf(connection, *key) : std::string();
}

bool X11HotKeys::isDown(std::uint32_t evdevCode) {
    const auto key = keyCodeOf(connection, evdevCode);
    return key && isKeyDown(connection, *key);
}

} // namespace mirrolet::platform::desktop::x11
