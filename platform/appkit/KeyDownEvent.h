#pragma once

#include "platform/appkit/NSEvent.h"

#include <optional>

class QKeyEvent;

namespace mirrolet::platform {

/// The event that a view gets for a key. None for a modifier key, which only changes the flags of other keys'
/// events, and for an event that no key made.
std::optional<NSEvent> keyDownEvent(const QKeyEvent& event);

} // namespace mirrolet::platform
