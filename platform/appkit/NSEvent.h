#pragma once

#include "platform/coregraphics/Geometry.h"

#include <cstdint>

class QPointF;

namespace mirrolet::platform {

enum class NSEventType { leftMouseDown, leftMouseDragged, leftMouseUp, mouseEntered, mouseExited, keyDown };

/// Bits of NSEvent::modifierFlags, as the shortcut conversion reads them.
namespace NSEventModifierFlags {
inline constexpr unsigned long capsLock = 1UL << 16;
inline constexpr unsigned long shift = 1UL << 17;
inline constexpr unsigned long control = 1UL << 18;
inline constexpr unsigned long option = 1UL << 19;
inline constexpr unsigned long command = 1UL << 20;
inline constexpr unsigned long numericPad = 1UL << 21;
} // namespace NSEventModifierFlags

/// One event for a view. Main thread.
struct NSEvent {
    NSEventType type = NSEventType::leftMouseDown;
    NSPoint locationInWindow; ///< y upwards, from the window's bottom-left corner.
    unsigned long modifierFlags = 0;
    std::uint16_t keyCode = 0; ///< Virtual key code, which names the place of the key whatever the layout.
    bool isARepeat = false;    ///< The key was down before.

    /// The pointer's place at the time of the event being delivered, in screen coordinates (y upwards).
    static NSPoint mouseLocation();
    /// Called by whoever delivers an event, before it is delivered. In Qt's screen coordinates.
    static void noteMouseLocation(const QPointF& onQtScreen);
};

} // namespace mirrolet::platform
