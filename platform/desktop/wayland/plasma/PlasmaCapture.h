#pragma once

#include "platform/desktop/Desktop.h"
#include "platform/desktop/WindowCapture.h"
#include "platform/desktop/wayland/plasma/PlasmaWindowModel.h"
#include "platform/desktop/wayland/plasma/Screencasts.h"
#include "platform/desktop/wayland/session/WaylandConnection.h"
#include "platform/foundation/Mutex.h"

#include <map>
#include <memory>

namespace mirrolet::platform::desktop::wayland {

class PlasmaCaptureSource;

/// Captures the windows of a Plasma session. A window is streamed from its first image on until its last
/// image is released. All images must be released before this object is destroyed.
class PlasmaCapture final : public WindowCapture {
  public:
    /// To be made before the connection starts, and destroyed after it has ended. The presenters of `shown`
    /// show the images.
    PlasmaCapture(WaylandConnection& connection, const PlasmaWindowModel& windows, Desktop& shown);
    ~PlasmaCapture() override;

    /// Always true, because the compositor offers windows only to programs that may capture them.
    [[nodiscard]] bool permitted() const override { return true; }
    CaptureResult capture(WindowNumber window) override;
    /// Returns whether an image of this window exists, which is so while the window is mirrored. Returns
    /// false once the window is closed. Any thread.
    [[nodiscard]] bool isCaptured(WindowNumber window) const;

  private:
    /// Returns nullptr if the frames cannot be shown.
    std::shared_ptr<PlasmaCaptureSource> findOrAdd(WindowNumber window);
    /// Returns nullptr if the window is not captured.
    [[nodiscard]] std::shared_ptr<PlasmaCaptureSource> find(WindowNumber window) const;

    const PlasmaWindowModel& windows;
    Desktop& shown;
    Screencasts screencasts;
    mutable Mutex sourcesMutex;
    std::map<WindowNumber, std::weak_ptr<PlasmaCaptureSource>> sources MIRROLET_GUARDED_BY(sourcesMutex);
};

} // namespace mirrolet::platform::desktop::wayland
