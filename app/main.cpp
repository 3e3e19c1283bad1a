#include "app/MirroletApp.h"
#include "platform/appkit/NSApplication.h"
#include "platform/appkit/SingleInstance.h"
#include "platform/carbon/CarbonEvents.h"
#include "platform/desktop/Desktop.h"
#include "platform/desktop/x11/X11Desktop.h"
#include "platform/foundation/NSLog.h"

#include <cstdlib>
#include <optional>
#include <string>

using namespace mirrolet;
using namespace mirrolet::platform;

namespace {

/// Connects to the X server. Returns false if there is none, after logging one line that says why.
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
    if (const char* wayland = std::getenv("WAYLAND_DISPLAY"); wayland && *wayland)
        NSLog("Mirrolet: in a Wayland session, only windows of X11 applications can be seen and mirrored; "
              "native Wayland windows cannot");
    desktop::Desktop::setCurrent(std::move(x11));
    FollowDesktopHotKeys();
    return true;
}

/// Returns the exit status of this process if the program already runs, or none if this process is the first.
std::optional<int> handOver(SingleInstance& instance) {
    const char* display = std::getenv("DISPLAY");
    switch (instance.claim(display ? display : "")) {
    case SingleInstance::Start::first:
        return std::nullopt;
    case SingleInstance::Start::handedOver:
        return EXIT_SUCCESS;
    case SingleInstance::Start::noAnswer:
        break;
    }
    NSLog("Mirrolet: it is running already, but does not answer");
    return EXIT_FAILURE;
}

} // namespace

int main(int /*argc*/, char** argv) {
    SingleInstance instance;
    if (!chooseDesktop())
        return EXIT_FAILURE;
    if (const auto status = handOver(instance))
        return *status;
    int status = EXIT_FAILURE;
    {
        int arguments = 1; // Only the name, because the program takes no options, not even those of Qt.
        NSApplication application(arguments, argv);
        instance.setOnActivate([&application] { application.reopen(); });
        status = runApplication<MirroletApp>();
    }
    desktop::Desktop::setCurrent(nullptr);
    return status;
}
