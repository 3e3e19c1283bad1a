#include "platform/desktop/wayland/plasma/PlasmaCaptureSource.h"

#include "platform/foundation/NSLog.h"

#include <chrono>
#include <utility>

namespace mirrolet::platform::desktop::wayland {

using Clock = std::chrono::steady_clock;

namespace {

/// How long a capture waits for a window's first frame. It usually comes within 100 ms.
constexpr std::chrono::milliseconds longestWait{2000};
/// During this wait, how often to check whether the window has been closed.
constexpr std::chrono::milliseconds checkEvery{50};

} // namespace

PlasmaCaptureSource::PlasmaCaptureSource(Screencasts& screencasts, const PlasmaWindowModel& windows,
                                         WindowNumber number, std::unique_ptr<FrameImporter> importer)
    : screencasts(screencasts), windows(windows), number(number), importer(std::move(importer)) {}

CaptureResult PlasmaCaptureSource::image() {
    const MutexLock lock(captureMutex);
    const auto window = windows.find(number);
    if (!window) {
        gone = true;
        close();
        return CaptureFailure::gone;
    }
    if (auto image = advance(*window))
        return image;
    return firstImage();
}

CaptureResult PlasmaCaptureSource::firstImage() {
    const auto deadline = Clock::now() + longestWait;
    while (Clock::now() < deadline) {
        changed->waitFor(checkEvery);
        const auto window = windows.find(number);
        if (!window)
            return CaptureFailure::gone;
        if (auto image = advance(*window))
            return image;
    }
    if (progress().framesOfFormat == 0) // Otherwise the importer has logged why a frame cannot be shown.
        log("no frames come from PipeWire; is WirePlumber running?");
    return hasLogged ? CaptureFailure::reported : CaptureFailure::nothingToSee;
}

std::shared_ptr<const WindowImage> PlasmaCaptureSource::advance(const PlasmaWindow& window) {
    if (!screencast || policy.isGivenUp(progress(), Clock::now()))
        open(window);
    if (!frames)
        connect();
    std::shared_ptr<const WindowImage> imported;
    if (frames)
        frames->takeFrame([&](SharedFrame frame) MIRROLET_REQUIRES(captureMutex) {
            frame.visible = crop.partOf(frame.visible, window);
            imported = importer->import(frame, shared_from_this());
        });
    return imported ? imported : importer->lastImage(shared_from_this());
}

void PlasmaCaptureSource::connect() {
    const auto state = screencast->state();
    if (!state.problem.empty())
        return log("the compositor says: " + state.problem);
    if (!state.node || isUnconnected)
        return;
    frames = FrameStream::open(*state.node, [changed = changed] { changed->notify(); });
    isUnconnected = !frames;
    if (isUnconnected)
        log("PipeWire does not run");
}

void PlasmaCaptureSource::log(const std::string& problem) {
    if (!std::exchange(hasLogged, true))
        NSLog("Mirrolet: a window cannot be mirrored now: " + problem);
}

void PlasmaCaptureSource::open(const PlasmaWindow& window) {
    close();
    isUnconnected = false;
    screencast = screencasts.open(window.uuid, [changed = changed] { changed->notify(); });
    policy.opened(Clock::now());
}

void PlasmaCaptureSource::close() {
    frames.reset();
    screencast.reset();
}

StreamProgress PlasmaCaptureSource::progress() const {
    auto known = frames ? frames->progress() : StreamProgress{};
    known.ended = known.ended || isUnconnected || screencast->state().ended;
    return known;
}

} // namespace mirrolet::platform::desktop::wayland
