#include "platform/desktop/x11/panel/SiblingsBelow.h"

namespace mirrolet::platform::desktop::x11 {

bool SiblingsBelow::note(WindowNumber topLevel, WindowNumber sibling) {
    const auto known = siblings.find(topLevel);
    if (known != siblings.end() && known->second == sibling)
        return false;
    // Windows that were right above `topLevel`, or are now separated from `sibling` by it, have another
    // sibling now. The server does not report that.
    std::erase_if(siblings,
                  [=](const auto& entry) { return entry.second == topLevel || entry.second == sibling; });
    siblings[topLevel] = sibling;
    return true;
}

} // namespace mirrolet::platform::desktop::x11
