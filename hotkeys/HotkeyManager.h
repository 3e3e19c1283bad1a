#pragma once

#include "hotkeys/HotkeyID.h"
#include "platform/carbon/CarbonEvents.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>

namespace mirrolet {

/// Registers the system-wide shortcuts and reports their presses. Its destruction unregisters every shortcut.
/// Main thread only.
class HotkeyManager : public std::enable_shared_from_this<HotkeyManager> {
  public:
    static std::shared_ptr<HotkeyManager> make();
    ~HotkeyManager();
    HotkeyManager(const HotkeyManager&) = delete;
    HotkeyManager& operator=(const HotkeyManager&) = delete;

    /// Called on the main thread, on a later turn of the main loop than the press.
    std::function<void(HotkeyID)> onHotkeyPressed;

    /// Makes a virtual key code with a Carbon modifier mask the shortcut for `id`, in place of an earlier
    /// one. A failure is logged and leaves `id` without a shortcut.
    void registerHotkey(HotkeyID id, std::uint32_t keyCode, std::uint32_t modifiers);
    void unregisterHotkey(HotkeyID id);

  private:
    HotkeyManager() = default;
    void installHandler();
    static platform::OSStatus handle(platform::EventHandlerCallRef next, platform::EventRef event,
                                     void* userData);

    std::map<std::uint32_t, platform::EventHotKeyRef> hotKeyRefs; ///< Keyed by raw id.
    platform::EventHandlerRef eventHandlerRef = nullptr; ///< Installed once, by the first registration.
};

/// Converts AppKit's modifier flags to a Carbon modifier mask. Flags without a counterpart are dropped.
[[nodiscard]] std::uint32_t carbonModifiers(std::uint64_t fromCocoaFlags);

} // namespace mirrolet
