#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace mirrolet::platform {

// This file declares hot keys and the events that report their presses. Every function is for the main thread
// only.

using OSStatus = std::int32_t;
using OptionBits = std::uint32_t;

inline constexpr OSStatus noErr = 0;
inline constexpr OSStatus paramErr = -50;
inline constexpr OSStatus eventParameterNotFoundErr = -9870;
inline constexpr OSStatus eventHotKeyExistsErr = -9878;
inline constexpr OSStatus eventHotKeyInvalidErr = -9879;

/// Packs four ASCII characters into one number, the first character in the highest byte.
constexpr std::uint32_t fourCharacterCode(const char (&code)[5]) {
    std::uint32_t number = 0;
    for (int i = 0; i < 4; ++i)
        number = number << 8 | static_cast<unsigned char>(code[i]);
    return number;
}

inline constexpr std::uint32_t kEventClassKeyboard = fourCharacterCode("keyb");
inline constexpr std::uint32_t kEventHotKeyPressed = 5;
inline constexpr std::uint32_t kEventParamDirectObject = fourCharacterCode("----");
inline constexpr std::uint32_t typeEventHotKeyID = fourCharacterCode("hkid");

// A modifier mask is the sum of some of these bits.
inline constexpr std::uint32_t cmdKey = 256;
inline constexpr std::uint32_t shiftKey = 512;
inline constexpr std::uint32_t optionKey = 2048;
inline constexpr std::uint32_t controlKey = 4096;

struct EventHotKeyID {
    std::uint32_t signature = 0;
    std::uint32_t id = 0;
};

struct EventTypeSpec {
    std::uint32_t eventClass = 0;
    std::uint32_t eventKind = 0;
};

// These types are opaque handles. Callers only pass the handles back to the functions below.
using EventHotKeyRef = struct OpaqueEventHotKey*;
using EventHandlerRef = struct OpaqueEventHandler*;
using EventHandlerCallRef = struct OpaqueEventHandlerCall*;
using EventTargetRef = struct OpaqueEventTarget*;
using EventRef = struct OpaqueEvent*;
using HotKeyModeRef = struct OpaqueHotKeyMode*;
/// A handler returns noErr if it has handled the event. After any other result, the handler that was
/// installed before this one is called.
using EventHandlerProc = OSStatus (*)(EventHandlerCallRef next, EventRef event, void* userData);

/// Makes the hot-key presses of the current backend arrive at the handlers as events. Call this once for each
/// backend, before the first hot key is registered.
void FollowDesktopHotKeys();

EventTargetRef GetApplicationEventTarget();

/// Installs a handler for the events that are listed in `types`. RemoveEventHandler() removes the handler.
OSStatus InstallEventHandler(EventTargetRef target, EventHandlerProc handler, std::size_t typeCount,
                             const EventTypeSpec* types, void* userData, EventHandlerRef* installed);
OSStatus RemoveEventHandler(EventHandlerRef handler);

/// Copies a parameter of an event to `data`. The only parameter is an EventHotKeyID with the name
/// kEventParamDirectObject. `actualType` and `actualSize` may be null.
OSStatus GetEventParameter(EventRef event, std::uint32_t name, std::uint32_t desiredType,
                           std::uint32_t* actualType, std::size_t bufferSize, std::size_t* actualSize,
                           void* data);

/// Sets the title that tells the user what the hot key with this ID does. Desktops that list the shortcuts of
/// all programs show the title. To be called before the hot key is registered.
void SetEventHotKeyTitle(EventHotKeyID id, const std::string& title);

/// Registers a hot key that works whichever window has the focus. `keyCode` is a virtual key code. Returns
/// eventHotKeyExistsErr if this or another program has registered the same combination. Returns paramErr if
/// the keyboard has no such key or modifier. After an error nothing is registered.
OSStatus RegisterEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID id,
                             EventTargetRef target, OptionBits options, EventHotKeyRef* registered);
OSStatus UnregisterEventHotKey(EventHotKeyRef hotKey);

inline constexpr OptionBits kHIHotKeyModeAllDisabled = 1;

/// Turns all hot keys of this program off until PopSymbolicHotKeyMode() is called with the result. Their
/// combinations then reach the focused window like any other key, so that a shortcut recorder can record
/// them. Several calls may be in effect at once. Returns nullptr unless `options` is
/// kHIHotKeyModeAllDisabled.
HotKeyModeRef PushSymbolicHotKeyMode(OptionBits options);
/// Ends the effect of one PushSymbolicHotKeyMode(). After the last one has ended, the hot keys work again.
/// Ignores nullptr and a mode that has ended already.
void PopSymbolicHotKeyMode(HotKeyModeRef mode);

} // namespace mirrolet::platform
