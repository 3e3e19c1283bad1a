#include "tests/desktop/harness/XDisplay.h"

namespace mirrolet::harness {

Environment XDisplay::with(Environment environment) const {
    environment["DISPLAY"] = name;
    return environment;
}

} // namespace mirrolet::harness
