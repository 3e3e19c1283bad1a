#include "app/MirroletApp.h"
#include "platform/appkit/NSApplication.h"
#include "platform/appkit/Restart.h"
#include "platform/appkit/SingleInstance.h"
#include "platform/carbon/CarbonEvents.h"
#include "platform/desktop/Desktop.h"
#include "platform/desktop/WaylandModule.h"
#include "platform/desktop/x11/X11Desktop.h"
#include "platform/foundation/NSLog.h"

#include <chrono>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>

using namespace mirrolet;
using namespace mirrolet::platform;

namespace {

bool isWaylandSession() {
    const char* display = std::getenv("WAYLAND_DISPLAY");
    return display && *display;
}

/// Loads the Wayland backend, which replaces those parts of the X11 backend that see too little in a Wayland
/// session.
std::unique_ptr<desktop::Desktop> chooseParts(std::unique_ptr<desktop::Desktop> x11) {
    auto parts = desktop::loadWaylandModule(MIRROLET_MODULE_FOLDER, std::move(x11));
    NSLog("Mirrolet: " + parts.report);
    return std::move(parts.desktop);
}

/// Connects to the X server. A process that replaces one that has lost XWayland waits for the new XWayland.
std::unique_ptr<desktop::Desktop> connectToX11(std::string& problem) {
    constexpr std::chrono::seconds longest{10};
    constexpr std::chrono::milliseconds pause{100};
    const auto wait = takeRestarted() ? longest : std::chrono::seconds{0};
    const auto deadline = std::chrono::steady_clock::now() + wait;
    for (;;) {
        auto x11 = desktop::x11::makeX11Desktop(problem, [] { NSApplication::serverLost(); });
        if (x11 || std::chrono::steady_clock::now() >= deadline)
            return x11;
        std::this_thread::sleep_for(pause);
    }
}

/// Connects to the X server. If that fails, logs one line that says why and returns false.
bool chooseDesktop() {
    std::string problem;
    auto x11 = connectToX11(problem);
    if (!x11) {
        NSLog("Mirrolet: " + problem);
        return false;
    }
    if (!x11->capture().permitted())
        NSLog("Mirrolet: this X server does not let windows be mirrored: it has no COMPOSITE or no RENDER "
              "extension");
    desktop::Desktop::setCurrent(isWaylandSession() ? chooseParts(std::move(x11)) : std::move(x11));
    FollowDesktopHotKeys();
    return true;
}

/// Returns none if no other process of this program runs. If one runs, asks it to show itself, and returns
/// the status with which this process has to exit.
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
        // Qt gets only the program's name, because the program accepts no options, not even Qt's.
        int arguments = 1;
        NSApplication application(arguments, argv);
        instance.setOnActivate([&application] { application.reopen(); });
        status = runApplication<MirroletApp>();
    }
    desktop::Desktop::setCurrent(nullptr);
    return status;
}
