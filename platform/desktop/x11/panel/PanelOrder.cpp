#include "platform/desktop/x11/panel/PanelOrder.h"

#include <algorithm>
#include <iterator>

namespace mirrolet::platform::desktop::x11 {

void PanelOrder::show(WindowNumber panel, int level) {
    hide(panel);
    panels.insert(std::ranges::upper_bound(panels, level, {}, &Panel::level), {panel, level});
}

bool PanelOrder::hide(WindowNumber panel) {
    return std::erase_if(panels, [panel](const Panel& other) { return other.window == panel; }) > 0;
}

bool PanelOrder::setLevel(WindowNumber panel, int level) {
    if (!isPanel(panel))
        return false;
    show(panel, level);
    return true;
}

void PanelOrder::setShadow(WindowNumber panel, WindowNumber shadow) {
    if (shadow == 0)
        shadows.erase(panel);
    else
        shadows[panel] = shadow;
}

bool PanelOrder::isPanel(WindowNumber window) const {
    return std::ranges::find(panels, window, &Panel::window) != panels.end();
}

PanelOrder::Windows PanelOrder::windowsAbove(const Windows& order) const {
    const auto lowest = std::ranges::find_if(order, [this](WindowNumber window) { return isPanel(window); });
    Windows above;
    std::copy_if(lowest, order.end(), std::back_inserter(above),
                 [this](WindowNumber window) { return !isPanel(window); });
    return above;
}

std::vector<PanelOrder::Move> PanelOrder::moves(Windows order, std::optional<WindowNumber> opponent) const {
    std::vector<Move> moves;
    auto below = opponent;
    for (const auto& panel : panels) {
        const auto place = std::ranges::find(order, panel.window);
        if (place == order.end())
            continue; // The native window is gone.
        const auto floor = below ? std::find(place, order.end(), *below) : order.end();
        below = panel.window;
        if (floor == order.end())
            continue;
        moves.push_back({panel.window, Place::above, *floor});
        std::rotate(place, place + 1, floor + 1);
    }
    addShadowMoves(order, moves);
    return moves;
}

void PanelOrder::addShadowMoves(const Windows& order, std::vector<Move>& moves) const {
    for (const auto& panel : panels) {
        const auto shadow = shadows.find(panel.window);
        const auto place = std::ranges::find(order, panel.window);
        if (shadow == shadows.end() || place == order.end())
            continue;
        if (place == order.begin() || *std::prev(place) != shadow->second)
            moves.push_back({shadow->second, Place::below, panel.window});
    }
}

} // namespace mirrolet::platform::desktop::x11
