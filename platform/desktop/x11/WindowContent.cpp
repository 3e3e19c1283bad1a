#include "platform/desktop/x11/WindowContent.h"

#include "platform/desktop/x11/PixelBox.h"

#include <cstddef>

namespace mirrolet::platform::desktop::x11 {

namespace {
constexpr std::size_t damagesKept = 32; // Two seconds of ticks: who drew longer ago draws all anew.
}

void WindowContent::noteDamage(PixelRect area) {
    const std::lock_guard guard(lock);
    recent.push_back(area);
    ++noted;
    if (recent.size() > damagesKept)
        recent.pop_front();
}

std::uint64_t WindowContent::age() const {
    const std::lock_guard guard(lock);
    return noted;
}

PixelRect WindowContent::changedBetween(std::uint64_t older, std::uint64_t newer) const {
    const std::lock_guard guard(lock);
    const PixelRect all{0, 0, picture.width, picture.height};
    if (older > newer || newer > noted || noted - older > recent.size())
        return all;
    PixelRect changed;
    for (std::uint64_t number = older; number < newer; ++number)
        changed = united(changed, recent[recent.size() - (noted - number)]);
    return intersection(changed, all);
}

} // namespace mirrolet::platform::desktop::x11
