#pragma once

#include "hotkeys/HotkeyID.h"
#include "platform/carbon/CarbonEvents.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>

namespace mirrolet {

/// Registers the system-wide shortcuts and reports their presses. The destructor unregisters every shortcut.
/// Main thread only.
class HotkeyManager : public std::enable_shared_from_this<HotkeyManager> {
  public:
    static std::shared_ptr<HotkeyManager> make();
    ~HotkeyManager();
    HotkeyManager(const HotkeyManager&) = delete;
    HotkeyManager& operator=(const HotkeyManager&) = delete;

    /// Called on the main thread after a shortcut was pressed. The call is posted to the main queue, so it
    /// runs after the event handler has returned.
    std::function<void(HotkeyID)> onHotkeyPressed;

    /// Registers the shortcut for `id` and unregisters the one that `id` had before. `keyCode` is a virtual
    /// key code, and `modifiers` is a Carbon modifier mask. A failure is logged, and `id` then has no
    /// shortcut.
    void registerHotkey(HotkeyID id, std::uint32_t keyCode, std::uint32_t modifiers);
    void unregisterHotkey(HotkeyID id);

  private:
    HotkeyManager() = default;
    void installHandler();
    static platform::OSStatus handle(platform::EventHandlerCallRef next, platform::EventRef event,
                                     void* userData);

    std::map<std::uint32_t, platform::EventHotKeyRef> hotKeyRefs; ///< The key is the raw value of a HotkeyID.
    platform::EventHandlerRef eventHandlerRef = nullptr; ///< The first registration installs the handler.
};

/// Converts AppKit's modifier flags to a Carbon modifier mask. Ignores flags that Carbon does not have.
[[nodiscard]] std::uint32_t carbonModifiers(std::uint64_t fromCocoaFlags);

} // namespace mirrolet
