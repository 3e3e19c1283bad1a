#include "platform/desktop/wayland/pipewire/StreamPolicy.h"

#include <algorithm>
#include <utility>

namespace mirrolet::platform::desktop::wayland {

namespace {

using std::chrono::milliseconds;

/// How long a new stream may take to send its first frame before it is replaced. The first frame usually
/// comes within 100 ms. KWin 5.27 sends the first frame of a still window only once, and that frame is lost
/// if PipeWire is not ready yet, so a new stream is needed. After each stream that sent no frame, the time is
/// doubled, up to the longest. In a session without PipeWire, new streams are therefore opened only rarely.
constexpr milliseconds shortestPatience{500};
constexpr milliseconds longestPatience{16000};
/// How long the first frame may take after a window has changed its size. KWin 5.27 sends no frame until the
/// window draws again, and a still window does not draw. Later versions send a frame within 20 ms.
constexpr milliseconds patienceWithFormat{100};

/// A stream is replaced after this many repeated frames in a row. If frames come too fast, KWin 5.27 holds
/// one back, and from then on it sends frames for ever, even while the window does not change. A new stream
/// does not do that.
constexpr unsigned mostRepeated = 8;
constexpr milliseconds shortestLife{2000};

} // namespace

void StreamPolicy::opened(TimePoint now) {
    openedAt = now;
    isWaiting = false;
    patience = std::clamp(patience * 2, shortestPatience, longestPatience);
}

bool StreamPolicy::isGivenUp(const StreamProgress& progress, TimePoint now) {
    if (progress.framesOfFormat > 0)
        patience = milliseconds(0);
    if (progress.ended)
        return now - openedAt >= std::max(patience, shortestPatience);
    if (progress.repeated >= mostRepeated)
        return now - openedAt >= shortestLife;
    return hasStalled(progress, now);
}

bool StreamPolicy::hasStalled(const StreamProgress& progress, TimePoint now) {
    if (progress.framesOfFormat > 0) {
        isWaiting = false;
        return false;
    }
    if (progress.formats < 2)
        return now - openedAt >= patience;
    if (!std::exchange(isWaiting, true))
        waitingSince = now;
    return now - waitingSince >= patienceWithFormat;
}

} // namespace mirrolet::platform::desktop::wayland
