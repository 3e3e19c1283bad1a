#pragma once

#include "platform/desktop/wayland/ext/CaptureProtocols.h"
#include "platform/desktop/wayland/ext/ToplevelSizes.h"
#include "platform/desktop/wayland/ext/Toplevels.h"

#include <map>
#include <memory>
#include <vector>

namespace mirrolet::platform::desktop::wayland {

/// Measures windows. Opens a capture session for each, and closes the session as soon as the compositor has
/// told the size.
class SizeMeasurements {
  public:
    SizeMeasurements(WaylandConnection& connection, const Toplevels& windows,
                     const CaptureProtocols& protocols, ToplevelSizes& sizes);
    /// To be destroyed after the connection has ended.
    ~SizeMeasurements();
    SizeMeasurements(const SizeMeasurements&) = delete;
    SizeMeasurements& operator=(const SizeMeasurements&) = delete;

    /// Begins to measure these windows, and returns at once. The results go to the sizes. Any thread.
    void begin(std::vector<WindowNumber> numbers);

  private:
    class Session;

    void measure(WindowNumber number);
    void end(WindowNumber number, std::optional<PixelSize> size);

    WaylandConnection& connection;
    const Toplevels& windows;
    const CaptureProtocols& protocols;
    ToplevelSizes& sizes;
    std::map<WindowNumber, std::unique_ptr<Session>> sessions; ///< Used by the connection's thread only.
};

} // namespace mirrolet::platform::desktop::wayland
