#pragma once

#include <memory>

namespace mirrolet::platform {

class HostedWindow;
class WindowHost;

/// Makes the native window for a window's content, which is a tree of views or a Qt widget. The native window
/// is not shown yet.
std::unique_ptr<WindowHost> makeWindowHost(HostedWindow& window);

} // namespace mirrolet::platform
