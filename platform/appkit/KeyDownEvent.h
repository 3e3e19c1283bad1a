#pragma once

#include "platform/appkit/NSEvent.h"

#include <optional>

class QKeyEvent;

namespace mirrolet::platform {

/// Returns the event that a view gets for a key. Returns nothing for a modifier key, because a modifier only
/// changes the flags of other keys' events. Returns nothing for an event that no key made.
std::optional<NSEvent> keyDownEvent(const QKeyEvent& event);

} // namespace mirrolet::platform
