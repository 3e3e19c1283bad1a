#pragma once

#include <cstddef>
#include <cstdint>

namespace mirrolet::platform {

// Hot keys and the events that report them. Main thread only.

using OSStatus = std::int32_t;
using OptionBits = std::uint32_t;

inline constexpr OSStatus noErr = 0;
inline constexpr OSStatus paramErr = -50;
inline constexpr OSStatus eventParameterNotFoundErr = -9870;
inline constexpr OSStatus eventHotKeyExistsErr = -9878;
inline constexpr OSStatus eventHotKeyInvalidErr = -9879;

/// Returns four ASCII characters as one number, the first character in the highest byte.
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

// Modifier masks.
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

// These point at objects of the platform layer.
using EventHotKeyRef = struct OpaqueEventHotKey*;
using EventHandlerRef = struct OpaqueEventHandler*;
using EventHandlerCallRef = struct OpaqueEventHandlerCall*;
using EventTargetRef = struct OpaqueEventTarget*;
using EventRef = struct OpaqueEvent*;
using HotKeyModeRef = struct OpaqueHotKeyMode*;
/// A handler returns noErr if it has handled the event. After any other value the handler that was installed
/// before is called next.
using EventHandlerProc = OSStatus (*)(EventHandlerCallRef next, EventRef event, void* userData);

/// Turns the key presses that the process's desktop reports into events. Called once for a desktop, before
/// the first hot key is registered.
void FollowDesktopHotKeys();

EventTargetRef GetApplicationEventTarget();

/// Installs a handler. The event loop calls the handler for events of these types until the handler is
/// removed.
OSStatus InstallEventHandler(EventTargetRef target, EventHandlerProc handler, std::size_t typeCount,
                             const EventTypeSpec* types, void* userData, EventHandlerRef* installed);
OSStatus RemoveEventHandler(EventHandlerRef handler);

/// Copies a parameter out of an event. The only parameter is the EventHotKeyID under kEventParamDirectObject.
/// The out parameters for type and size may be null.
OSStatus GetEventParameter(EventRef event, std::uint32_t name, std::uint32_t desiredType,
                           std::uint32_t* actualType, std::size_t bufferSize, std::size_t* actualSize,
                           void* data);

/// Makes a key (virtual key code, modifier mask) a hot key, whichever window has the focus. Returns
/// eventHotKeyExistsErr if this or another program holds the key, and paramErr if the keyboard has no such
/// key or modifier. After an error no key is held.
OSStatus RegisterEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID id,
                             EventTargetRef target, OptionBits options, EventHotKeyRef* registered);
OSStatus UnregisterEventHotKey(EventHotKeyRef hotKey);

inline constexpr OptionBits kHIHotKeyModeAllDisabled = 1;

/// Pushes a mode. While at least one mode is pushed, hot keys let their keys through to the focused window,
/// because a shortcut recorder has to see combinations that are hot keys already. Returns nullptr for any
/// mode but kHIHotKeyModeAllDisabled.
HotKeyModeRef PushSymbolicHotKeyMode(OptionBits options);
/// Pops a mode. Ignores nullptr and a mode that was popped already.
void PopSymbolicHotKeyMode(HotKeyModeRef mode);

} // namespace mirrolet::platform
