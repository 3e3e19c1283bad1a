#include "app/MirroletApp.h"
#include "platform/appkit/NSApplication.h"
#include "platform/desktop/Desktop.h"
#include "platform/desktop/x11/X11Desktop.h"
#include "platform/foundation/NSLog.h"

#include <cstdlib>
#include <string>

using namespace mirrolet;
using namespace mirrolet::platform;

namespace {

/// False, after one line that says why, if there is no X server to work on.
bool chooseDesktop() {
    std::string problem;
    auto x11 = desktop::x11::makeX11Desktop(problem, [] { NSApplication::serverLost(); });
    if (!x11) {
        NSLog("Mirrolet: " + problem);
        return false;
    }
    if (!x11->capture().permitted())
        NSLog("Mirrolet: this X server does not let windows be mirrored: it has no COMPOSITE or no RENDER "
              "extension");
    desktop::Desktop::setCurrent(std::move(x11));
    return true;
}

} // namespace

int main(int argc, char** argv) {
    if (!chooseDesktop())
        return EXIT_FAILURE;
    int status = EXIT_FAILURE;
    {
        NSApplication application(argc, argv);
        status = runApplication<MirroletApp>();
    }
    desktop::Desktop::setCurrent(nullptr);
    return status;
}
