#include "platform/desktop/x11/capture/WindowContent.h"

#include "platform/desktop/PixelRects.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace mirrolet::platform::desktop::x11 {

namespace {

/// The number of damages that are kept, which is enough for two seconds of ticks. A viewer that has not drawn
/// for longer draws everything again.
constexpr std::size_t damagesKept = 32;

PixelRect visiblePart(const NothingSeen& nothing) {
    return {0, 0, nothing.size.width, nothing.size.height};
}

PixelRect visiblePart(const RedirectedPixels& redirected) {
    auto part = redirected.stored.visible;
    part.x -= redirected.borderWidth;
    part.y -= redirected.borderWidth;
    return part;
}

PixelRect visiblePart(const std::unique_ptr<DirectPixels>& direct) {
    return direct->copy().visible;
}

} // namespace

WindowContent::WindowContent(Pixels contentPixels)
    : pixels(std::move(contentPixels)),
      visible(std::visit([](const auto& kind) { return visiblePart(kind); }, pixels)) {}

const StoredPixels* WindowContent::stored() const {
    if (const auto* redirected = std::get_if<RedirectedPixels>(&pixels))
        return &redirected->stored;
    if (const auto* direct = std::get_if<std::unique_ptr<DirectPixels>>(&pixels))
        return &(*direct)->copy();
    return nullptr;
}

const DirectPixels* WindowContent::direct() const {
    const auto* direct = std::get_if<std::unique_ptr<DirectPixels>>(&pixels);
    return direct && (*direct)->isReadable() ? direct->get() : nullptr;
}

void WindowContent::stopReading() {
    if (const auto* direct = std::get_if<std::unique_ptr<DirectPixels>>(&pixels))
        (*direct)->stopReading();
}

void WindowContent::noteDamage(PixelRect area) {
    const MutexLock lock(damageMutex);
    recent.push_back(area);
    ++noted;
    if (recent.size() > damagesKept)
        recent.pop_front();
}

std::uint64_t WindowContent::serial() const {
    const MutexLock lock(damageMutex);
    return noted;
}

PixelRect WindowContent::changedBetween(std::uint64_t earlier, std::uint64_t later) const {
    const MutexLock lock(damageMutex);
    if (earlier > later || later > noted || noted - earlier > recent.size())
        return {0, 0, visible.width, visible.height};
    PixelRect changed;
    for (std::uint64_t number = earlier; number < later; ++number)
        changed = united(changed, recent[recent.size() - (noted - number)]);
    changed = intersection(changed, visible);
    return isEmpty(changed)
               ? PixelRect{}
               : PixelRect{changed.x - visible.x, changed.y - visible.y, changed.width, changed.height};
}

void WindowContent::watch(ImageViewer& viewer) const {
    const MutexLock lock(viewersMutex);
    viewers.push_back(&viewer);
}

void WindowContent::unwatch(ImageViewer& viewer) const {
    const MutexLock lock(viewersMutex);
    std::erase(viewers, &viewer);
}

bool WindowContent::showToViewers(const std::shared_ptr<const X11WindowImage>& image) const {
    const MutexLock lock(viewersMutex);
    const auto shown =
        std::count_if(viewers.begin(), viewers.end(), [&](auto* viewer) { return viewer->show(image); });
    return shown > 0 && static_cast<std::size_t>(shown) == viewers.size();
}

} // namespace mirrolet::platform::desktop::x11
