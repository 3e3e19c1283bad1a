#include "platform/appkit/NSEvent.h"

#include "platform/appkit/Coordinates.h"

#include <QCursor>

#include <optional>

namespace mirrolet::platform {

namespace {

/// The pointer's position at the last event, as reported by Qt. The position is kept here, because asking the
/// server would cost a round trip for each step of a drag.
std::optional<QPointF> pointerOfLastEvent;

} // namespace

NSPoint NSEvent::mouseLocation() {
    return fromQtScreen(pointerOfLastEvent.value_or(QPointF(QCursor::pos())));
}

void NSEvent::noteMouseLocation(const QPointF& onQtScreen) {
    pointerOfLastEvent = onQtScreen;
}

} // namespace mirrolet::platform
