#include "platform/desktop/fake/FakeWindowCapture.h"

#include <algorithm>

namespace mirrolet::platform::desktop::fake {

Bitmap FakeWindowImage::readBack() const {
    const auto count = static_cast<std::size_t>(extent.width) * static_cast<std::size_t>(extent.height);
    return {extent, std::vector<std::uint32_t>(count, 0xff000000 | fill)};
}

void FakeWindowCapture::setPermitted(bool permitted) {
    const MutexLock lock(captureMutex);
    mayCapture = permitted;
}

void FakeWindowCapture::setPicture(WindowNumber window, PixelSize size, std::uint32_t colour) {
    const MutexLock lock(captureMutex);
    pictures[window] = std::make_shared<FakeWindowImage>(size, colour, alive);
}

void FakeWindowCapture::destroyWindow(WindowNumber window) {
    failWindow(window, CaptureFailure::gone);
}

void FakeWindowCapture::failWindow(WindowNumber window, CaptureFailure failure) {
    const MutexLock lock(captureMutex);
    pictures.erase(window);
    failures[window] = failure;
}

int FakeWindowCapture::captures(WindowNumber window) const {
    const MutexLock lock(captureMutex);
    const auto found = captureCounts.find(window);
    return found == captureCounts.end() ? 0 : found->second;
}

long FakeWindowCapture::imagesHeld() const {
    const MutexLock lock(captureMutex);
    const auto ownOnly = std::count_if(pictures.begin(), pictures.end(),
                                       [](const auto& entry) { return entry.second.use_count() == 1; });
    return alive.use_count() - 1 - ownOnly;
}

bool FakeWindowCapture::permitted() const {
    const MutexLock lock(captureMutex);
    return mayCapture;
}

CaptureResult FakeWindowCapture::capture(WindowNumber window) {
    const MutexLock lock(captureMutex);
    ++captureCounts[window];
    if (!mayCapture)
        return CaptureFailure::notPermitted;
    if (const auto found = failures.find(window); found != failures.end())
        return found->second;
    const auto found = pictures.find(window);
    return found == pictures.end() ? CaptureResult(CaptureFailure::gone) : found->second;
}

} // namespace mirrolet::platform::desktop::fake
