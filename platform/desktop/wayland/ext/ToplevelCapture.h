#pragma once

#include "platform/desktop/Desktop.h"
#include "platform/desktop/WindowCapture.h"
#include "platform/desktop/wayland/ext/ToplevelModel.h"
#include "platform/desktop/wayland/ext/ToplevelStreams.h"
#include "platform/foundation/Mutex.h"

#include <map>
#include <memory>

namespace mirrolet::platform::desktop::wayland {

class ToplevelCaptureSource;

/// Captures the windows of a session with the standard protocols. A window has a capture session from its
/// first image on until its last image is released. All images must be released before this object is
/// destroyed.
class ToplevelCapture final : public WindowCapture {
  public:
    /// The presenters of `shown` show the images.
    ToplevelCapture(ToplevelStreams& streams, const ToplevelModel& windows, Desktop& shown);
    ~ToplevelCapture() override;

    /// Always true, because the compositor offers the protocols only to programs that may capture windows.
    [[nodiscard]] bool permitted() const override { return true; }
    CaptureResult capture(WindowNumber window) override;
    /// Returns whether an image of this window exists, which is so while the window is mirrored. Returns
    /// false once the window is closed. Any thread.
    [[nodiscard]] bool isCaptured(WindowNumber window) const;

  private:
    ToplevelStreams& streams;
    const ToplevelModel& windows;
    Desktop& shown;
    mutable Mutex sourcesMutex;
    std::map<WindowNumber, std::weak_ptr<ToplevelCaptureSource>> sources MIRROLET_GUARDED_BY(sourcesMutex);
};

} // namespace mirrolet::platform::desktop::wayland
