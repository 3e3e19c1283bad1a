#include "tests/desktop/harness/StatusIcon.h"

#include <algorithm>

namespace mirrolet::harness {

namespace {

constexpr std::uint32_t body = 0x23272e;
constexpr std::uint32_t picture = 0xf5f6f8;

bool isIcon(const WindowFacts& facts, xcb_window_t window, pid_t program) {
    const auto box = facts.box(window);
    return box.width >= 16 && box.width <= 32 && facts.process(window) == program && facts.viewable(window) &&
           facts.topLevel(window) != window;
}

} // namespace

std::optional<Box> statusIcon(const WindowFacts& facts, pid_t program) {
    std::vector<xcb_window_t> inside = facts.children(facts.connection().root());
    while (!inside.empty()) {
        const auto window = inside.back();
        inside.pop_back();
        if (isIcon(facts, window, program))
            return facts.box(window);
        const auto children = facts.children(window);
        inside.insert(inside.end(), children.begin(), children.end());
    }
    return std::nullopt;
}

bool isStatusIconDrawn(const WindowFacts& facts, const Box& icon) {
    const auto shot = facts.screenshot(icon);
    const auto count = [&](std::uint32_t colour) {
        return std::count_if(shot.pixels.begin(), shot.pixels.end(),
                             [&](std::uint32_t pixel) { return isNear(pixel, colour); });
    };
    return count(body) > 60 && count(picture) > 30;
}

} // namespace mirrolet::harness
