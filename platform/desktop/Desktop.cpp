#include "platform/desktop/Desktop.h"

#include <cstdlib>
#include <utility>

namespace mirrolet::platform::desktop {

namespace {
std::unique_ptr<Desktop> theDesktop;

class NoTrayHosts final : public TrayHosts {
  public:
    bool present() override { return false; }
    AnyCancellable subscribe(std::function<void(bool)>) override { return {}; }
};

class NothingReserved final : public WorkArea {
  public:
    ReservedEdges reserved(PixelRect) override { return {}; }
};

} // namespace

TrayHosts& Desktop::trayHosts() {
    static NoTrayHosts none;
    return none;
}

WorkArea& Desktop::workArea() {
    static NothingReserved nothing;
    return nothing;
}

std::unique_ptr<FrameImporter> Desktop::makeFrameImporter() {
    return nullptr;
}

Desktop& Desktop::current() {
    if (!theDesktop)
        std::abort(); // The program has to choose its desktop before it uses the platform layer.
    return *theDesktop;
}

void Desktop::setCurrent(std::unique_ptr<Desktop> desktop) {
    theDesktop = std::move(desktop);
}

} // namespace mirrolet::platform::desktop
