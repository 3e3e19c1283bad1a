#pragma once

#include "platform/appkit/NSEvent.h"

#include <optional>

class QKeyEvent;

namespace mirrolet::platform {

/// Returns the key-down event for a view. Returns none for a modifier key, because a modifier only changes
/// the flags of other keys' events. Returns none for an event whose scan code has no virtual key code.
std::optional<NSEvent> keyDownEvent(const QKeyEvent& event);

} // namespace mirrolet::platform
