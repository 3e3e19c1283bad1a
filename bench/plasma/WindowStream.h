#pragma once

#include "platform/desktop/wayland/plasma/PlasmaWindows.h"
#include "platform/desktop/wayland/plasma/Screencasts.h"
#include "platform/desktop/wayland/session/WaylandConnection.h"

#include <cstdint>
#include <memory>
#include <string>

namespace mirrolet::bench {

/// Asks KWin to stream the front window through PipeWire. Another program can show the stream by the number
/// that node() returns.
class WindowStream {
  public:
    /// `socket` is the absolute path of the compositor's socket. Throws HarnessError if KWin makes no stream.
    explicit WindowStream(const std::string& socket);
    ~WindowStream();
    WindowStream(const WindowStream&) = delete;
    WindowStream& operator=(const WindowStream&) = delete;

    [[nodiscard]] std::uint32_t node() const;

  private:
    std::unique_ptr<platform::desktop::wayland::WaylandConnection> connection;
    std::unique_ptr<platform::desktop::wayland::PlasmaWindows> windows;
    std::unique_ptr<platform::desktop::wayland::Screencasts> screencasts;
    std::unique_ptr<platform::desktop::wayland::Screencasts::Screencast> screencast;
};

} // namespace mirrolet::bench
