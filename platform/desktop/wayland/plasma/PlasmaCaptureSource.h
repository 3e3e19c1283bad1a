#pragma once

#include "platform/desktop/FrameImporter.h"
#include "platform/desktop/WindowCapture.h"
#include "platform/desktop/wayland/pipewire/FrameStream.h"
#include "platform/desktop/wayland/pipewire/StreamPolicy.h"
#include "platform/desktop/wayland/plasma/ContentCrop.h"
#include "platform/desktop/wayland/plasma/PlasmaWindowModel.h"
#include "platform/desktop/wayland/plasma/Screencasts.h"
#include "platform/desktop/wayland/session/Signal.h"
#include "platform/foundation/Mutex.h"

#include <atomic>
#include <memory>
#include <string>

namespace mirrolet::platform::desktop::wayland {

/// Captures one window. A source lives as long as one of its images. Any thread.
class PlasmaCaptureSource : public std::enable_shared_from_this<PlasmaCaptureSource> {
  public:
    PlasmaCaptureSource(Screencasts& screencasts, const PlasmaWindowModel& windows, WindowNumber number,
                        std::unique_ptr<FrameImporter> importer);

    /// Returns the window's newest image. Waits for the first one, but not for later ones.
    CaptureResult image();
    /// Returns whether the window has been found to be closed.
    [[nodiscard]] bool isGone() const { return gone; }

  private:
    CaptureResult firstImage() MIRROLET_REQUIRES(captureMutex);
    /// Opens the stream if needed, and takes the newest frame. Returns the newest image, or nullptr before
    /// the first one.
    std::shared_ptr<const WindowImage> advance(const PlasmaWindow& window) MIRROLET_REQUIRES(captureMutex);
    void open(const PlasmaWindow& window) MIRROLET_REQUIRES(captureMutex);
    void close() MIRROLET_REQUIRES(captureMutex);
    /// Makes the stream of frames if the compositor has reported the PipeWire node already.
    void connect() MIRROLET_REQUIRES(captureMutex);
    /// Logs the problem, but only at the first call.
    void log(const std::string& problem) MIRROLET_REQUIRES(captureMutex);
    [[nodiscard]] StreamProgress progress() const MIRROLET_REQUIRES(captureMutex);

    Screencasts& screencasts;
    const PlasmaWindowModel& windows;
    const WindowNumber number;
    const std::shared_ptr<Signal> changed = std::make_shared<Signal>();
    std::atomic<bool> gone = false;

    /// A thread that locks several mutexes locks this one first.
    Mutex captureMutex;
    const std::unique_ptr<FrameImporter> importer MIRROLET_GUARDED_BY(captureMutex);
    StreamPolicy policy MIRROLET_GUARDED_BY(captureMutex);
    ContentCrop crop MIRROLET_GUARDED_BY(captureMutex);
    std::unique_ptr<Screencasts::Screencast> screencast MIRROLET_GUARDED_BY(captureMutex);
    std::unique_ptr<FrameStream> frames MIRROLET_GUARDED_BY(captureMutex);
    bool isUnconnected MIRROLET_GUARDED_BY(captureMutex) = false; ///< PipeWire could not be reached.
    bool hasLogged MIRROLET_GUARDED_BY(captureMutex) = false;
};

} // namespace mirrolet::platform::desktop::wayland
