#include "platform/desktop/Desktop.h"

#include <cstdlib>
#include <utility>

namespace mirrolet::platform::desktop {

namespace {
std::unique_ptr<Desktop> theDesktop;
}

Desktop& Desktop::current() {
    if (!theDesktop)
        std::abort(); // A part of the layer was used before the program chose its desktop.
    return *theDesktop;
}

void Desktop::setCurrent(std::unique_ptr<Desktop> desktop) {
    theDesktop = std::move(desktop);
}

} // namespace mirrolet::platform::desktop
