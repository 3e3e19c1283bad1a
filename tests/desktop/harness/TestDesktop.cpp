#include "tests/desktop/harness/TestDesktop.h"

#include "tests/desktop/harness/X11TestDesktop.h"
#include "tests/desktop/harness/plasma/PlasmaTestDesktop.h"

namespace mirrolet::harness {

std::unique_ptr<TestDesktop> TestDesktop::make(Kind kind) {
    if (kind == Kind::plasma)
        return std::make_unique<PlasmaTestDesktop>();
    return std::make_unique<X11TestDesktop>();
}

std::string nameOf(TestDesktop::Kind kind) {
    return kind == TestDesktop::Kind::plasma ? "plasma" : "openbox";
}

} // namespace mirrolet::harness
