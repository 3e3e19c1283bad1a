#pragma once

#include "platform/desktop/WindowList.h"

#include <map>

namespace mirrolet::platform::desktop::x11 {

/// Remembers for each top-level window which sibling is right below it, according to the server's last event.
/// The server repeats the sibling in every event of a move or resize. An event therefore tells of a new
/// stacking only if it names another sibling.
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
