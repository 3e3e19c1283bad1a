#pragma once

#include "platform/desktop/WorkArea.h"

namespace mirrolet::platform::desktop::fake {

/// The same edges for whatever monitor.
class FakeWorkArea final : public WorkArea {
  public:
    void setReserved(ReservedEdges newEdges) { edges = newEdges; }
    [[nodiscard]] ReservedEdges reserved(PixelRect /*monitor*/) override { return edges; }

  private:
    ReservedEdges edges;
};

} // namespace mirrolet::platform::desktop::fake
