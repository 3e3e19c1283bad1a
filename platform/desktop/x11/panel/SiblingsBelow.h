#pragma once

#include "platform/desktop/WindowList.h"

#include <map>

namespace mirrolet::platform::desktop::x11 {

/// Remembers which window each top-level window was last reported to be right above. The server repeats that
/// sibling with every step of a move or resize, and such a report does not mean that the stacking has
/// changed.
class SiblingsBelow {
  public:
    /// Notes the sibling. Returns false if this sibling is known already.
    bool note(WindowNumber topLevel, WindowNumber sibling);
    void forget(WindowNumber topLevel) { siblings.erase(topLevel); }
    void clear() { siblings.clear(); }

  private:
    std::map<WindowNumber, WindowNumber> siblings;
};

} // namespace mirrolet::platform::desktop::x11
