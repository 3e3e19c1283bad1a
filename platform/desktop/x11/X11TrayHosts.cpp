#include "platform/desktop/x11/X11TrayHosts.h"

#include <memory>
#include <utility>

namespace mirrolet::platform::desktop::x11 {

AnyCancellable X11TrayHosts::subscribe(std::function<void(bool)> changed) {
    auto subscription = std::make_shared<X11Connection::Subscription>(watcher.onChange(std::move(changed)));
    return AnyCancellable([subscription]() mutable { subscription.reset(); });
}

} // namespace mirrolet::platform::desktop::x11
