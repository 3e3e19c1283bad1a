#include "platform/appkit/KeyDownEvent.h"

#include "platform/carbon/KeyCodes.h"

#include <QKeyEvent>

#include <cstdint>

namespace mirrolet::platform {

namespace {

unsigned long flagsOf(Qt::KeyboardModifiers modifiers) {
    unsigned long flags = 0;
    if (modifiers & Qt::ShiftModifier)
        flags |= NSEventModifierFlags::shift;
    if (modifiers & Qt::ControlModifier)
        flags |= NSEventModifierFlags::control;
    if (modifiers & Qt::AltModifier)
        flags |= NSEventModifierFlags::option;
    if (modifiers & Qt::MetaModifier)
        flags |= NSEventModifierFlags::command;
    if (modifiers & Qt::KeypadModifier)
        flags |= NSEventModifierFlags::numericPad;
    return flags;
}

/// Returns the virtual key code for the place of the key on the keyboard. An X key code is an evdev code plus
/// 8.
std::optional<std::uint16_t> virtualKeyCode(const QKeyEvent& event) {
    const auto scanCode = event.nativeScanCode();
    const auto code = scanCode >= 8 ? virtualFromEvdev(scanCode - 8) : std::nullopt;
    return code ? std::optional(static_cast<std::uint16_t>(*code)) : std::nullopt;
}

/// Returns true if the key is a modifier, by its place on the keyboard or by its meaning in the keyboard
/// layout.
bool isModifierKey(const QKeyEvent& event, std::uint16_t keyCode) {
    switch (event.key()) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_Hyper_L:
    case Qt::Key_Hyper_R:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
        return true;
    default:
        return keyCode >= 54 && keyCode <= 63;
    }
}

} // namespace

std::optional<NSEvent> keyDownEvent(const QKeyEvent& event) {
    const auto keyCode = virtualKeyCode(event);
    if (!keyCode || isModifierKey(event, *keyCode))
        return std::nullopt;
    NSEvent key;
    key.type = NSEventType::keyDown;
    key.modifierFlags = flagsOf(event.modifiers());
    key.keyCode = *keyCode;
    key.isARepeat = event.isAutoRepeat();
    return key;
}

} // namespace mirrolet::platform
