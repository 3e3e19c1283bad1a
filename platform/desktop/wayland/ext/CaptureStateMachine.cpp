#include "platform/desktop/wayland/ext/CaptureStateMachine.h"

#include "platform/desktop/PixelRects.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <wayland-client-protocol.h>

namespace mirrolet::platform::desktop::wayland {

namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;

constexpr microseconds frameInterval{1'000'000 / 15};
/// A frame may be asked for this much earlier than the rate allows, because the ticks of a capture are not
/// exact. The average rate stays the same.
constexpr microseconds earliness = frameInterval / 2;
/// How long to wait after a failure. Each further failure without a frame in between doubles the wait.
constexpr milliseconds shortestRetry{250};
constexpr milliseconds longestRetry{16000};
constexpr std::int64_t bytesPerPixel = 4;

PixelRect whole(PixelSize size) {
    return {0, 0, size.width, size.height};
}

} // namespace

void CaptureStateMachine::opened() {
    end();
    isOpen = true;
}

void CaptureStateMachine::bufferSize(PixelSize size) {
    if (!std::exchange(isAnnouncing, true))
        announced = {};
    announced.size = size;
}

void CaptureStateMachine::shmFormat(std::uint32_t format) {
    if (!std::exchange(isAnnouncing, true))
        announced = {};
    // Both formats can be shown, because the highest byte is ignored.
    if (format == WL_SHM_FORMAT_XRGB8888 || (format == WL_SHM_FORMAT_ARGB8888 && !announced.format))
        announced.format = format;
}

void CaptureStateMachine::constraintsDone() {
    if (!std::exchange(isAnnouncing, false))
        return;
    constraints = announced;
    retryAt = {};
}

void CaptureStateMachine::stopped(TimePoint now) {
    if (!isOpen)
        return;
    end();
    wait(now);
}

void CaptureStateMachine::damaged(const PixelRect& area) {
    frameDamage = united(frameDamage, area);
}

void CaptureStateMachine::ready() {
    if (!pending)
        return;
    last = *std::exchange(pending, std::nullopt);
    filled = last;
    pause = milliseconds(0);
    for (std::size_t i = 0; i < bufferCount; ++i) {
        auto& [made, damage] = buffers[i];
        if (i == last)
            damage = {};
        else if (made)
            damage = isEmpty(frameDamage) ? whole(made->size) : united(damage, frameDamage);
    }
}

void CaptureStateMachine::failed(Failure reason, TimePoint now) {
    if (!pending)
        return;
    auto& buffer = buffers[*std::exchange(pending, std::nullopt)];
    if (reason == Failure::stopped) {
        stopped(now);
        return;
    }
    // After a resize, the new constraints can come before or after the failure. If they have come, the next
    // frame is asked for at once. If they come later, they end the wait.
    if (reason == Failure::unknown || buffer.made == constraints)
        wait(now);
    buffer.made.reset();
}

bool CaptureStateMachine::isSessionDue(TimePoint now) const {
    return !isOpen && now >= retryAt;
}

bool CaptureStateMachine::isRequestDue(TimePoint now) const {
    return isOpen && constraints && isUsable(*constraints) && !pending && !filled && now >= retryAt &&
           now + earliness >= nextFrame;
}

std::optional<CaptureStateMachine::Request> CaptureStateMachine::nextRequest(TimePoint now) {
    if (!isRequestDue(now))
        return std::nullopt;
    nextFrame = std::max(now, nextFrame) + frameInterval;
    const auto index = freeBuffer();
    auto& buffer = buffers[index];
    Request request{.buffer = index,
                    .isNew = buffer.made != constraints,
                    .size = constraints->size,
                    .format = *constraints->format,
                    .damage = {}};
    if (request.isNew)
        buffer = {constraints, whole(constraints->size)};
    request.damage = intersection(buffer.damage, whole(request.size));
    pending = index;
    frameDamage = {};
    return request;
}

std::optional<std::size_t> CaptureStateMachine::take() {
    if (filled)
        taken = std::exchange(filled, std::nullopt);
    else
        taken.reset();
    return taken;
}

std::optional<PixelSize> CaptureStateMachine::frameSize() const {
    return constraints ? std::optional(constraints->size) : std::nullopt;
}

bool CaptureStateMachine::isUsable(const Constraints& wanted) {
    const auto [width, height] = wanted.size;
    return wanted.format && width > 0 && height > 0 &&
           std::int64_t{width} * height <= std::numeric_limits<std::int32_t>::max() / bytesPerPixel;
}

/// Returns the buffer that was filled last, because least has changed since, or the other one while that is
/// being read.
std::size_t CaptureStateMachine::freeBuffer() const {
    return taken == last ? 1 - last : last;
}

/// Forgets the session. A frame that was not taken, and the buffers, stay.
void CaptureStateMachine::end() {
    isOpen = false;
    isAnnouncing = false;
    constraints.reset();
    pending.reset();
    // No session reports the changes until the next one begins.
    for (auto& [made, damage] : buffers)
        if (made)
            damage = whole(made->size);
}

void CaptureStateMachine::wait(TimePoint now) {
    pause = std::clamp(pause * 2, shortestRetry, longestRetry);
    retryAt = now + pause;
}

} // namespace mirrolet::platform::desktop::wayland
