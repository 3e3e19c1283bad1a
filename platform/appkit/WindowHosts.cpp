#include "platform/appkit/WindowHosts.h"

#include "platform/appkit/NSView.h"
#include "platform/appkit/ViewWindowHost.h"
#include "platform/appkit/WidgetWindowHost.h"

namespace mirrolet::platform {

std::unique_ptr<WindowHost> makeWindowHost(HostedWindow& window) {
    if (window.contentView() && window.contentView()->hostedWidget())
        return std::make_unique<WidgetWindowHost>(window);
    return std::make_unique<ViewWindowHost>(window);
}

} // namespace mirrolet::platform
