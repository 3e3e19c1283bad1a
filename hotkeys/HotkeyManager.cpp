#include "hotkeys/HotkeyManager.h"

#include "platform/dispatch/DispatchQueue.h"
#include "platform/foundation/NSLog.h"

#include <string>

namespace mirrolet {

using namespace platform;

namespace {

constexpr std::uint32_t hotKeySignature = fourCharacterCode("qHtK");

const char* titleOf(HotkeyID id) {
    return id == HotkeyID::togglePiPVisibility ? "Show/hide PiP" : "Start/close PiP";
}

} // namespace

std::shared_ptr<HotkeyManager> HotkeyManager::make() {
    return std::shared_ptr<HotkeyManager>(new HotkeyManager());
}

HotkeyManager::~HotkeyManager() {
    for (const auto& [id, reference] : hotKeyRefs)
        UnregisterEventHotKey(reference);
    if (eventHandlerRef)
        RemoveEventHandler(eventHandlerRef);
}

void HotkeyManager::registerHotkey(HotkeyID id, std::uint32_t keyCode, std::uint32_t modifiers) {
    unregisterHotkey(id);
    if (!eventHandlerRef)
        installHandler();
    SetEventHotKeyTitle({hotKeySignature, rawValue(id)}, titleOf(id));
    EventHotKeyRef reference = nullptr;
    const auto status = RegisterEventHotKey(keyCode, modifiers, {hotKeySignature, rawValue(id)},
                                            GetApplicationEventTarget(), 0, &reference);
    if (status == noErr && reference) {
        hotKeyRefs[rawValue(id)] = reference;
        return;
    }
    NSLog("HotkeyManager: RegisterEventHotKey failed for id " + std::to_string(rawValue(id)) +
          " with status " + std::to_string(status));
}

void HotkeyManager::unregisterHotkey(HotkeyID id) {
    const auto found = hotKeyRefs.find(rawValue(id));
    if (found == hotKeyRefs.end())
        return;
    auto* const reference = found->second;
    hotKeyRefs.erase(found);
    UnregisterEventHotKey(reference);
}

void HotkeyManager::installHandler() {
    const EventTypeSpec pressed{kEventClassKeyboard, kEventHotKeyPressed};
    InstallEventHandler(GetApplicationEventTarget(), &HotkeyManager::handle, 1, &pressed, this,
                        &eventHandlerRef);
}

OSStatus HotkeyManager::handle(EventHandlerCallRef, EventRef event, void* userData) {
    if (!event || !userData)
        return noErr;
    EventHotKeyID hotKey;
    const auto status = GetEventParameter(event, kEventParamDirectObject, typeEventHotKeyID, nullptr,
                                          sizeof hotKey, nullptr, &hotKey);
    if (status != noErr || hotKey.signature != hotKeySignature)
        return noErr;
    const auto id = hotkeyIDFromRawValue(hotKey.id);
    if (!id)
        return noErr;
    // `userData` points at the manager. The pointer is valid, because the manager's destructor removes this
    // handler. The posted task keeps the manager alive.
    auto manager = static_cast<HotkeyManager*>(userData)->shared_from_this();
    DispatchQueue::main().async([manager = std::move(manager), id = *id] {
        if (manager->onHotkeyPressed)
            manager->onHotkeyPressed(id);
    });
    return noErr;
}

std::uint32_t carbonModifiers(std::uint64_t fromCocoaFlags) {
    struct Pair {
        unsigned bit;
        std::uint32_t mask;
    };
    std::uint32_t mask = 0;
    for (const auto& [bit, carbon] :
         {Pair{20, cmdKey}, Pair{17, shiftKey}, Pair{19, optionKey}, Pair{18, controlKey}}) {
        if ((fromCocoaFlags >> bit & 1) != 0)
            mask |= carbon;
    }
    return mask;
}

} // namespace mirrolet
