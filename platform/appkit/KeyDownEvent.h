#pragma once

#include "platform/appkit/NSEvent.h"

#include <optional>

class QKeyEvent;

namespace mirrolet::platform {

/// Converts Qt's event to a key-down event for a view. Returns none for a modifier key, because modifiers
/// appear only as flags in the events of other keys. Also returns none if the key has no virtual key code.
std::optional<NSEvent> keyDownEvent(const QKeyEvent& event);

} // namespace mirrolet::platform
