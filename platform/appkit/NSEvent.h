#pragma once

#include "platform/coregraphics/Geometry.h"

#include <cstdint>

class QPointF;

namespace mirrolet::platform {

enum class NSEventType { leftMouseDown, leftMouseDragged, leftMouseUp, mouseEntered, mouseExited, keyDown };

/// The bits of NSEvent::modifierFlags. carbonModifiers() converts them for shortcuts.
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
    NSPoint locationInWindow; ///< In window coordinates (y upwards from the bottom-left corner).
    unsigned long modifierFlags = 0;
    std::uint16_t keyCode = 0; ///< Virtual key code: the key's place, in any keyboard layout.
    bool isARepeat = false;    ///< True if the key was down already.

    /// Returns the position of the pointer at the event that is being delivered, in screen coordinates (y
    /// upwards).
    static NSPoint mouseLocation();
    /// Stores the position that mouseLocation() returns. Called before each event is delivered. `onQtScreen`
    /// is in Qt's screen coordinates.
    static void noteMouseLocation(const QPointF& onQtScreen);
};

} // namespace mirrolet::platform
