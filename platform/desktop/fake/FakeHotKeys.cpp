#include "platform/desktop/fake/FakeHotKeys.h"

#include <algorithm>

namespace mirrolet::platform::desktop::fake {

bool FakeHotKeys::press(Combination combination) const {
    if (suspended)
        return false;
    const auto found = std::find_if(grabs.begin(), grabs.end(),
                                    [&combination](const auto& grab) { return grab.second == combination; });
    if (found == grabs.end())
        return false;
    pressed(found->first);
    return true;
}

std::vector<FakeHotKeys::Combination> FakeHotKeys::held() const {
    std::vector<Combination> combinations;
    for (const auto& [number, combination] : grabs)
        combinations.push_back(combination);
    return combinations;
}

void FakeHotKeys::setPressed(std::function<void(std::uint32_t)> handler) {
    if (pressed)
        misuses->add("HotKeys::setPressed twice");
    pressed = std::move(handler);
}

GrabResult FakeHotKeys::grab(std::uint32_t number, std::uint32_t evdevCode, std::uint32_t modifiers) {
    if (!pressed)
        misuses->add("HotKeys::grab before setPressed");
    if (grabs.contains(number))
        misuses->add("HotKeys::grab under a number in use");
    if (missingKeys.contains(evdevCode))
        return GrabResult::invalid;
    if (taken.contains({evdevCode, modifiers}))
        return GrabResult::taken;
    grabs[number] = {evdevCode, modifiers};
    ++grabCount;
    return GrabResult::held;
}

} // namespace mirrolet::platform::desktop::fake
