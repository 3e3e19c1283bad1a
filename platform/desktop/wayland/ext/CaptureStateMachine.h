#pragma once

#include "platform/desktop/Pixels.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace mirrolet::platform::desktop::wayland {

/// Decides what to ask of one window's capture session, and keeps track of its two buffers. One buffer can be
/// filled by the compositor while the other is read. At most one frame is asked for at a time, and at most 15
/// a second. A frame of a window that stands still is answered only when the window changes. Makes no request
/// itself.
class CaptureStateMachine {
  public:
    using TimePoint = std::chrono::steady_clock::time_point;
    static constexpr std::size_t bufferCount = 2;

    enum class Failure {
        unknown,
        constraints, ///< The buffer does not have the size or the format that the session wants.
        stopped,     ///< The session has ended.
    };
    /// A frame to ask for.
    struct Request {
        std::size_t buffer = 0;   ///< The index of the buffer to fill.
        bool isNew = false;       ///< True if the buffer has to be made first, in place of an earlier one.
        PixelSize size;           ///< Of the buffer.
        std::uint32_t format = 0; ///< Of the buffer, a wl_shm.format.
        PixelRect damage;         ///< What has changed since the buffer was filled. Empty for nothing.
    };

    // The events of a session. A `done` ends each group of constraints.
    void opened();
    void bufferSize(PixelSize size);
    void shmFormat(std::uint32_t format);
    void constraintsDone();
    void stopped(TimePoint now);
    // The events of the frame that was asked for. After ready() or failed() there is no frame.
    void damaged(const PixelRect& area);
    void ready();
    void failed(Failure reason, TimePoint now);

    /// Returns whether a session has to be opened now. A session that ended is opened again after a while,
    /// because the window may still be there.
    [[nodiscard]] bool isSessionDue(TimePoint now) const;
    /// Returns whether nextRequest() would return a request now.
    [[nodiscard]] bool isRequestDue(TimePoint now) const;
    /// Returns the frame to ask for now, or none. The frame then counts as asked for.
    std::optional<Request> nextRequest(TimePoint now);

    /// Returns the index of the buffer with the newest frame, once for each frame. The buffer is not filled
    /// again until release().
    std::optional<std::size_t> take();
    void release() { taken.reset(); }

    /// Returns the size that the session gives to frames, or none if it is not known.
    [[nodiscard]] std::optional<PixelSize> frameSize() const;
    /// Returns whether the session's frames cannot be shown, because of their format or size.
    [[nodiscard]] bool isUnusable() const { return constraints && !isUsable(*constraints); }

  private:
    struct Constraints {
        PixelSize size;
        std::optional<std::uint32_t> format; ///< None if the session has no format that can be shown.
        friend bool operator==(const Constraints&, const Constraints&) = default;
    };
    struct Buffer {
        std::optional<Constraints> made; ///< What the buffer was made for. None if it has to be made anew.
        PixelRect damage;                ///< What has changed since the buffer was filled.
    };

    [[nodiscard]] static bool isUsable(const Constraints& wanted);
    [[nodiscard]] std::size_t freeBuffer() const;
    void end();
    void wait(TimePoint now);

    bool isOpen = false;
    Constraints announced;                  ///< The constraints before their `done`.
    bool isAnnouncing = false;              ///< True if a group of constraints has begun.
    std::optional<Constraints> constraints; ///< The constraints of the session.
    std::array<Buffer, bufferCount> buffers;
    std::optional<std::size_t> pending; ///< The buffer that the compositor fills.
    std::optional<std::size_t> filled;  ///< The buffer with a frame that was not taken.
    std::optional<std::size_t> taken;
    std::size_t last = 0; ///< The buffer that was filled last.
    PixelRect frameDamage;

    TimePoint nextFrame; ///< When the next frame would keep the rate exactly.
    TimePoint retryAt;   ///< No frame is asked for, and no session opened, before.
    std::chrono::milliseconds pause{0};
};

} // namespace mirrolet::platform::desktop::wayland
