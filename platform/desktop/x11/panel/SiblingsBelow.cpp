#include "platform/desktop/x11/panel/SiblingsBelow.h"

namespace mirrolet::platform::desktop::x11 {

bool SiblingsBelow::note(WindowNumber topLevel, WindowNumber sibling) {
    const auto known = siblings.find(topLevel);
    if (known != siblings.end() && known->second == sibling)
        return false;
    // A window that was right above `topLevel` or right above `sibling` has another window right below it
    // after this move. The server sends no event about that.
    std::erase_if(siblings,
                  [=](const auto& entry) { return entry.second == topLevel || entry.second == sibling; });
    siblings[topLevel] = sibling;
    return true;
}

} // namespace mirrolet::platform::desktop::x11
