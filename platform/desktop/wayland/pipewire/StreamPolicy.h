#pragma once

#include <chrono>

namespace mirrolet::platform::desktop::wayland {

/// Counts what has happened since a stream was opened.
struct StreamProgress {
    unsigned formats = 0;        ///< The number of formats that were negotiated.
    unsigned framesOfFormat = 0; ///< The number of frames that came in the last format.
    unsigned repeated = 0;       ///< The number of frames since the last one that showed something new.
    bool ended = false;          ///< No frame will come any more.
};

/// Decides when a stream has to be replaced by a new one, because it has ended, sends no frames or only
/// repeats frames. Makes no calls to PipeWire.
class StreamPolicy {
  public:
    using TimePoint = std::chrono::steady_clock::time_point;

    /// Notes that a stream has been opened.
    void opened(TimePoint now);
    /// Returns whether the stream has to be replaced by a new one. To be called at each tick.
    [[nodiscard]] bool isGivenUp(const StreamProgress& progress, TimePoint now);

  private:
    [[nodiscard]] bool hasStalled(const StreamProgress& progress, TimePoint now);

    TimePoint openedAt;
    TimePoint waitingSince; ///< When the wait for the first frame of a later format began.
    bool isWaiting = false;
    std::chrono::milliseconds patience{0}; ///< How long this stream may take to send its first frame.
};

} // namespace mirrolet::platform::desktop::wayland
