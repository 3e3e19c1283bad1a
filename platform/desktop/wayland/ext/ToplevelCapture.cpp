#include "platform/desktop/wayland/ext/ToplevelCapture.h"

#include "platform/desktop/wayland/ext/ToplevelCaptureSource.h"

#include <utility>

namespace mirrolet::platform::desktop::wayland {

ToplevelCapture::ToplevelCapture(ToplevelStreams& streams, const ToplevelModel& windows, Desktop& shown)
    : streams(streams), windows(windows), shown(shown) {}

ToplevelCapture::~ToplevelCapture() = default;

CaptureResult ToplevelCapture::capture(WindowNumber window) {
    if (!windows.find(window))
        return CaptureFailure::gone;
    std::shared_ptr<ToplevelCaptureSource> source;
    {
        const MutexLock lock(sourcesMutex);
        std::erase_if(sources, [](const auto& entry) { return entry.second.expired(); });
        auto& kept = sources[window];
        source = kept.lock();
        auto importer = source ? nullptr : shown.makeFrameImporter();
        if (importer)
            kept = source =
                std::make_shared<ToplevelCaptureSource>(streams, windows, window, std::move(importer));
    }
    return source ? source->image() : CaptureFailure::notPermitted;
}

bool ToplevelCapture::isCaptured(WindowNumber window) const {
    const MutexLock lock(sourcesMutex);
    const auto found = sources.find(window);
    return found != sources.end() && !found->second.expired() && windows.find(window);
}

} // namespace mirrolet::platform::desktop::wayland
