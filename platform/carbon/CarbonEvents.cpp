#include "platform/carbon/CarbonEvents.h"

#include "platform/carbon/KeyCodes.h"
#include "platform/desktop/Desktop.h"
#include "platform/dispatch/DispatchQueue.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <utility>
#include <vector>

namespace mirrolet::platform {

struct OpaqueEventTarget {};

struct OpaqueEvent {
    EventTypeSpec type;
    EventHotKeyID hotKey;
};

struct OpaqueEventHandler {
    EventHandlerProc handler = nullptr;
    std::vector<EventTypeSpec> types;
    void* userData = nullptr;

    [[nodiscard]] bool takes(const EventTypeSpec& type) const {
        return std::any_of(types.begin(), types.end(), [&type](const auto& one) {
            return one.eventClass == type.eventClass && one.eventKind == type.eventKind;
        });
    }
};

struct OpaqueEventHotKey {
    EventHotKeyID id;
    std::uint32_t keyCode = 0;
    std::uint32_t modifiers = 0;
};

struct OpaqueHotKeyMode {};

namespace {

OpaqueEventTarget applicationTarget;

/// Holds the installed handlers and the registered hot keys. Main thread only. Never destroyed, because
/// presses may arrive until the end of the program.
struct Registry {
    /// The handler that was installed last is called first.
    std::vector<std::shared_ptr<OpaqueEventHandler>> handlers;
    /// Each hot key is stored under the number that was passed to the backend's grab().
    std::map<std::uint32_t, std::unique_ptr<OpaqueEventHotKey>> hotKeys;
    std::set<std::unique_ptr<OpaqueHotKeyMode>> modes;
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::string> titles; ///< Keyed by signature and id.
    std::uint32_t lastGrab = 0;

    static Registry& instance() {
        static auto& registry = *new Registry();
        return registry;
    }

    void deliver(OpaqueEvent event) {
        // A handler may remove itself or another handler. The copy keeps removed handlers alive until the
        // loop ends, but the loop does not call them.
        const auto installed = handlers;
        for (auto next = installed.rbegin(); next != installed.rend(); ++next) {
            if (std::find(handlers.begin(), handlers.end(), *next) == handlers.end() ||
                !(*next)->takes(event.type))
                continue;
            if ((*next)->handler(nullptr, &event, (*next)->userData) == noErr)
                return;
        }
    }

    [[nodiscard]] bool holds(std::uint32_t keyCode, std::uint32_t modifiers) const {
        return std::any_of(hotKeys.begin(), hotKeys.end(), [=](const auto& entry) {
            return entry.second->keyCode == keyCode && entry.second->modifiers == modifiers;
        });
    }

    void pressed(std::uint32_t grab) {
        const auto found = hotKeys.find(grab);
        // The hot key may have been unregistered after the press.
        if (found != hotKeys.end())
            deliver({{kEventClassKeyboard, kEventHotKeyPressed}, found->second->id});
    }
};

desktop::HotKeys& desktopHotKeys() {
    return desktop::Desktop::current().hotKeys();
}

std::optional<std::uint32_t> desktopModifiers(std::uint32_t carbon) {
    using Pair = std::pair<std::uint32_t, std::uint32_t>;
    std::uint32_t modifiers = 0;
    for (const auto& [mask, modifier] :
         {Pair{cmdKey, desktop::superModifier}, Pair{shiftKey, desktop::shiftModifier},
          Pair{optionKey, desktop::altModifier}, Pair{controlKey, desktop::controlModifier}}) {
        if ((carbon & mask) != 0)
            modifiers |= modifier;
        carbon &= ~mask;
    }
    // A mask with an unknown modifier is refused. Ignoring the unknown modifier would grab another
    // combination, perhaps a key without any modifier.
    return carbon == 0 ? std::optional(modifiers) : std::nullopt;
}

OSStatus statusOf(desktop::GrabResult result) {
    switch (result) {
    case desktop::GrabResult::held:
        return noErr;
    case desktop::GrabResult::taken:
        return eventHotKeyExistsErr;
    case desktop::GrabResult::invalid:
        break;
    }
    return paramErr;
}

} // namespace

void FollowDesktopHotKeys() {
    // The backend calls this closure on its own thread, so the closure posts the press to the main queue.
    desktopHotKeys().setPressed([](std::uint32_t grab) {
        DispatchQueue::main().async([grab] { Registry::instance().pressed(grab); });
    });
}

EventTargetRef GetApplicationEventTarget() {
    return &applicationTarget;
}

OSStatus InstallEventHandler(EventTargetRef target, EventHandlerProc handler, std::size_t typeCount,
                             const EventTypeSpec* types, void* userData, EventHandlerRef* installed) {
    if (target != &applicationTarget || !handler || !types || typeCount == 0)
        return paramErr;
    auto made = std::make_shared<OpaqueEventHandler>();
    *made = {handler, {types, types + typeCount}, userData};
    if (installed)
        *installed = made.get();
    Registry::instance().handlers.push_back(std::move(made));
    return noErr;
}

OSStatus RemoveEventHandler(EventHandlerRef handler) {
    auto& handlers = Registry::instance().handlers;
    return std::erase_if(handlers, [handler](const auto& one) { return one.get() == handler; }) > 0
               ? noErr
               : paramErr;
}

OSStatus GetEventParameter(EventRef event, std::uint32_t name, std::uint32_t desiredType,
                           std::uint32_t* actualType, std::size_t bufferSize, std::size_t* actualSize,
                           void* data) {
    if (!event || !data)
        return paramErr;
    if (name != kEventParamDirectObject || desiredType != typeEventHotKeyID)
        return eventParameterNotFoundErr;
    if (bufferSize < sizeof event->hotKey)
        return paramErr;
    if (actualType)
        *actualType = typeEventHotKeyID;
    if (actualSize)
        *actualSize = sizeof event->hotKey;
    std::memcpy(data, &event->hotKey, sizeof event->hotKey);
    return noErr;
}

void SetEventHotKeyTitle(EventHotKeyID id, const std::string& title) {
    Registry::instance().titles[{id.signature, id.id}] = title;
}

OSStatus RegisterEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID id,
                             EventTargetRef target, OptionBits, EventHotKeyRef* registered) {
    const auto key = evdevFromVirtual(keyCode);
    const auto desktopMask = desktopModifiers(modifiers);
    if (target != &applicationTarget || !registered || !key || !desktopMask)
        return paramErr;
    auto& registry = Registry::instance();
    if (registry.holds(keyCode, modifiers)) // One press cannot go to two hot keys.
        return eventHotKeyExistsErr;
    const auto grab = ++registry.lastGrab;
    desktopHotKeys().setTitle(grab, registry.titles[{id.signature, id.id}]);
    const auto status = statusOf(desktopHotKeys().grab(grab, *key, *desktopMask));
    if (status != noErr)
        return status;
    auto& made = registry.hotKeys[grab];
    made = std::make_unique<OpaqueEventHotKey>(OpaqueEventHotKey{id, keyCode, modifiers});
    *registered = made.get();
    return noErr;
}

OSStatus UnregisterEventHotKey(EventHotKeyRef hotKey) {
    auto& hotKeys = Registry::instance().hotKeys;
    const auto found = std::find_if(hotKeys.begin(), hotKeys.end(),
                                    [hotKey](const auto& entry) { return entry.second.get() == hotKey; });
    if (found == hotKeys.end())
        return eventHotKeyInvalidErr;
    desktopHotKeys().release(found->first);
    hotKeys.erase(found);
    return noErr;
}

HotKeyModeRef PushSymbolicHotKeyMode(OptionBits options) {
    if (options != kHIHotKeyModeAllDisabled)
        return nullptr;
    auto& modes = Registry::instance().modes;
    if (modes.empty())
        desktopHotKeys().suspend(true);
    return modes.insert(std::make_unique<OpaqueHotKeyMode>()).first->get();
}

void PopSymbolicHotKeyMode(HotKeyModeRef mode) {
    auto& modes = Registry::instance().modes;
    const auto removed = std::erase_if(modes, [mode](const auto& one) { return one.get() == mode; });
    if (removed > 0 && modes.empty())
        desktopHotKeys().suspend(false);
}

} // namespace mirrolet::platform
