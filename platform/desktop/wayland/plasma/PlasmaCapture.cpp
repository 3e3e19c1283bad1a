#include "platform/desktop/wayland/plasma/PlasmaCapture.h"

#include "platform/desktop/wayland/plasma/PlasmaCaptureSource.h"

#include <utility>

namespace mirrolet::platform::desktop::wayland {

PlasmaCapture::PlasmaCapture(WaylandConnection& connection, const PlasmaWindowModel& windows, Desktop& shown)
    : windows(windows), shown(shown), screencasts(connection) {}

PlasmaCapture::~PlasmaCapture() = default;

CaptureResult PlasmaCapture::capture(WindowNumber window) {
    if (!windows.find(window))
        return CaptureFailure::gone;
    const auto source = findOrAdd(window);
    if (!source)
        return CaptureFailure::notPermitted;
    return source->image();
}

std::shared_ptr<PlasmaCaptureSource> PlasmaCapture::findOrAdd(WindowNumber window) {
    const MutexLock lock(sourcesMutex);
    std::erase_if(sources, [](const auto& entry) { return entry.second.expired(); });
    if (const auto found = sources.find(window); found != sources.end())
        if (auto source = found->second.lock())
            return source;
    auto importer = shown.makeFrameImporter();
    if (!importer)
        return nullptr;
    auto source = std::make_shared<PlasmaCaptureSource>(screencasts, windows, window, std::move(importer));
    sources[window] = source;
    return source;
}

std::shared_ptr<PlasmaCaptureSource> PlasmaCapture::find(WindowNumber window) const {
    const MutexLock lock(sourcesMutex);
    const auto found = sources.find(window);
    return found == sources.end() ? nullptr : found->second.lock();
}

bool PlasmaCapture::isCaptured(WindowNumber window) const {
    const auto source = find(window);
    return source && !source->isGone();
}

} // namespace mirrolet::platform::desktop::wayland
