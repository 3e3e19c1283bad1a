#pragma once

#include <memory>

namespace mirrolet::platform {

class HostedWindow;
class WindowHost;

/// The native window for what the window shows: a tree of views that is painted here, or a Qt widget. Not
/// shown yet.
std::unique_ptr<WindowHost> makeWindowHost(HostedWindow& window);

} // namespace mirrolet::platform
