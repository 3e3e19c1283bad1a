#pragma once

#include "platform/desktop/FrameImporter.h"
#include "platform/desktop/WindowCapture.h"
#include "platform/desktop/wayland/ext/ToplevelModel.h"
#include "platform/desktop/wayland/ext/ToplevelStreams.h"
#include "platform/desktop/wayland/session/Signal.h"
#include "platform/foundation/Mutex.h"

#include <memory>

namespace mirrolet::platform::desktop::wayland {

/// Captures one window. A source lives as long as one of its images. Any thread.
class ToplevelCaptureSource : public std::enable_shared_from_this<ToplevelCaptureSource> {
  public:
    ToplevelCaptureSource(ToplevelStreams& streams, const ToplevelModel& windows, WindowNumber number,
                          std::unique_ptr<FrameImporter> importer);

    /// Returns the window's newest image. Waits for the first one, but not for later ones.
    CaptureResult image();

  private:
    /// Takes the newest frame. Returns the newest image, or nullptr before the first one.
    std::shared_ptr<const WindowImage> advance() MIRROLET_REQUIRES(captureMutex);

    ToplevelStreams& streams;
    const ToplevelModel& windows;
    const WindowNumber number;
    const std::shared_ptr<Signal> changed = std::make_shared<Signal>();

    Mutex captureMutex;
    const std::unique_ptr<FrameImporter> importer MIRROLET_GUARDED_BY(captureMutex);
    std::unique_ptr<ToplevelStreams::Stream> stream MIRROLET_GUARDED_BY(captureMutex);
    bool hasLogged MIRROLET_GUARDED_BY(captureMutex) = false;
};

} // namespace mirrolet::platform::desktop::wayland
