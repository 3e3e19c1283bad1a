#pragma once

#include "platform/desktop/FrameImporter.h"
#include "platform/desktop/wayland/ext/CaptureProtocols.h"
#include "platform/desktop/wayland/ext/ToplevelSizes.h"
#include "platform/desktop/wayland/ext/Toplevels.h"

#include <functional>
#include <map>
#include <memory>

namespace mirrolet::platform::desktop::wayland {

/// Captures the frames of windows, with one capture session for each mirrored window.
class ToplevelStreams {
  public:
    class Stream;

    /// To be made before the connection starts. The sizes are told of each size that a session reports.
    ToplevelStreams(WaylandConnection& connection, const Toplevels& windows,
                    const CaptureProtocols& protocols, ToplevelSizes& sizes);
    /// To be destroyed after the connection has ended, and after all streams.
    ~ToplevelStreams();
    ToplevelStreams(const ToplevelStreams&) = delete;
    ToplevelStreams& operator=(const ToplevelStreams&) = delete;

    /// Begins to capture a window. Calls `changed` on the connection's thread when a frame has come. Any
    /// thread.
    std::unique_ptr<Stream> open(WindowNumber number, std::function<void()> changed);

  private:
    class Shared;
    class Session;

    void advance(const std::shared_ptr<Shared>& shared);

    WaylandConnection& connection;
    const Toplevels& windows;
    const CaptureProtocols& protocols;
    ToplevelSizes& sizes;
    std::map<const Shared*, std::unique_ptr<Session>> sessions; ///< Used by the connection's thread only.
};

/// The frames of one window. The capture ends with this object. For one thread at a time.
class ToplevelStreams::Stream {
  public:
    Stream(ToplevelStreams& owner, std::shared_ptr<Shared> shared);
    ~Stream();
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    /// Calls `use` with the newest frame, unless that frame was taken before. Also asks for the next frame if
    /// it is time. To be called at each tick, because no frame is asked for without it. Makes no request
    /// while the window stands still.
    void takeFrame(const std::function<void(const SharedFrame&)>& use);
    /// Returns whether the compositor offers frames that cannot be shown.
    [[nodiscard]] bool isUnusable() const;

  private:
    ToplevelStreams& owner;
    const std::shared_ptr<Shared> shared;
};

} // namespace mirrolet::platform::desktop::wayland
