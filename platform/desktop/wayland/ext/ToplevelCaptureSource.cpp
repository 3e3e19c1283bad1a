#include "platform/desktop/wayland/ext/ToplevelCaptureSource.h"

#include "platform/foundation/NSLog.h"

#include <chrono>
#include <utility>

namespace mirrolet::platform::desktop::wayland {

namespace {

using Clock = std::chrono::steady_clock;

/// How long a capture waits for a window's first frame. It usually comes within 50 ms.
constexpr std::chrono::milliseconds longestFirstWait{2000};
/// During this wait, how often to check whether the window has been closed.
constexpr std::chrono::milliseconds closedCheck{50};

} // namespace

ToplevelCaptureSource::ToplevelCaptureSource(ToplevelStreams& streams, const ToplevelModel& windows,
                                             WindowNumber number, std::unique_ptr<FrameImporter> importer)
    : streams(streams), windows(windows), number(number), importer(std::move(importer)) {}

CaptureResult ToplevelCaptureSource::image() {
    const MutexLock lock(captureMutex);
    for (const auto deadline = Clock::now() + longestFirstWait;; changed->waitFor(closedCheck)) {
        if (!windows.find(number)) {
            stream.reset();
            return CaptureFailure::gone;
        }
        if (auto image = advance())
            return image;
        if (stream->isUnusable() && !std::exchange(hasLogged, true))
            NSLog("Mirrolet: a window cannot be mirrored, because the compositor offers no pixel format "
                  "that can be shown");
        if (hasLogged)
            return CaptureFailure::reported;
        if (Clock::now() >= deadline)
            return CaptureFailure::nothingToSee;
    }
}

std::shared_ptr<const WindowImage> ToplevelCaptureSource::advance() {
    if (!stream)
        stream = streams.open(number, [changed = changed] { changed->notify(); });
    std::shared_ptr<const WindowImage> imported;
    stream->takeFrame([&](const SharedFrame& frame) MIRROLET_REQUIRES(captureMutex) {
        imported = importer->import(frame, shared_from_this());
    });
    return imported ? imported : importer->lastImage(shared_from_this());
}

} // namespace mirrolet::platform::desktop::wayland
