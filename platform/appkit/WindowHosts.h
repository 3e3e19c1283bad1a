#pragma once

#include <memory>

namespace mirrolet::platform {

class HostedWindow;
class WindowHost;

/// Makes the native window for an NSWindow. The kind of native window depends on the content: a tree of views
/// or a Qt widget. The native window is still hidden.
std::unique_ptr<WindowHost> makeWindowHost(HostedWindow& window);

} // namespace mirrolet::platform
