#pragma once

#include "platform/desktop/wayland/session/WaylandConnection.h"
#include "platform/foundation/Mutex.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

struct zkde_screencast_unstable_v1;

namespace mirrolet::platform::desktop::wayland {

/// Makes the compositor send the frames of windows to PipeWire (zkde_screencast_unstable_v1).
class Screencasts {
  public:
    /// Holds the compositor's reports about one screencast.
    struct State {
        std::optional<std::uint32_t> node; ///< The PipeWire node that sends the frames.
        bool ended = false;                ///< True if the window or the node is gone or never existed.
        std::string problem;               ///< Why the compositor sends no frames, if it gave a reason.
    };
    class Screencast;

    /// To be made before the connection starts.
    explicit Screencasts(WaylandConnection& connection);
    /// To be destroyed after the connection has ended, and after all screencasts.
    ~Screencasts();
    Screencasts(const Screencasts&) = delete;
    Screencasts& operator=(const Screencasts&) = delete;

    /// Begins to send a window's frames, without the pointer. Calls `changed` on the connection's thread
    /// after each change of the state. Any thread.
    std::unique_ptr<Screencast> open(std::string uuid, std::function<void()> changed);

  private:
    class Shared;
    class Stream;

    WaylandConnection& connection;
    zkde_screencast_unstable_v1* const manager;
    std::map<const Shared*, std::unique_ptr<Stream>> streams; ///< Used by the connection's thread only.
};

/// One screencast, which ends with this object. Any thread.
class Screencasts::Screencast {
  public:
    Screencast(Screencasts& owner, std::shared_ptr<Shared> shared);
    ~Screencast();
    Screencast(const Screencast&) = delete;
    Screencast& operator=(const Screencast&) = delete;

    [[nodiscard]] State state() const;

  private:
    Screencasts& owner;
    const std::shared_ptr<Shared> shared;
};

} // namespace mirrolet::platform::desktop::wayland
