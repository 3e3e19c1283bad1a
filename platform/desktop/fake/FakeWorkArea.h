#pragma once

#include "platform/desktop/WorkArea.h"

namespace mirrolet::platform::desktop::fake {

/// Nothing is reserved anywhere.
class FakeWorkArea final : public WorkArea {
  public:
    [[nodiscard]] ReservedEdges reserved(PixelRect /*monitor*/) override { return {}; }
};

} // namespace mirrolet::platform::desktop::fake
