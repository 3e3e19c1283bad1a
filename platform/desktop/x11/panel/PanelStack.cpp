#include "platform/desktop/x11/panel/PanelStack.h"

#include "platform/desktop/x11/panel/StackingQuery.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace mirrolet::platform::desktop::x11 {

namespace {

// More than anybody switches windows; a program that answers each raise with its own wins after as many.
constexpr int mostRaisesASecond = 8;

} // namespace

PanelStack::PanelStack(X11Connection& connection) : connection(connection) {
    const auto root = connection.root();
    const auto check = [this](const auto&) { requestCheck(); };
    subscriptions.push_back(connection.subscribe<xcb_configure_notify_event_t>(
        root, [this](const auto& event) { configured(event); }));
    subscriptions.push_back(connection.subscribe<xcb_map_notify_event_t>(root, check));
    // Into a frame that may be above us, or back when a window manager ends.
    subscriptions.push_back(connection.subscribe<xcb_reparent_notify_event_t>(root, check));
    subscriptions.push_back(connection.subscribe<xcb_circulate_notify_event_t>(root, check));
    subscriptions.push_back(connection.subscribe<xcb_destroy_notify_event_t>(
        root, [this](const auto& event) { forget(event.window); }));
    subscriptions.push_back(
        connection.subscribe<xcb_property_notify_event_t>(connection.ownWindow(), [this](const auto& event) {
            if (event.atom == this->connection.atoms()._MIRROLET_RESTACK)
                checkRequested();
        }));
}

PanelStack::~PanelStack() {
    subscriptions.clear();
    if (!panels.empty())
        connection.watchTopLevels(false);
}

void PanelStack::show(xcb_window_t panel, int level) {
    {
        const std::lock_guard guard(lock);
        if (panels.empty())
            connection.watchTopLevels(true);
        std::erase_if(panels, [panel](const Panel& other) { return other.window == panel; });
        insert({panel, level});
    }
    requestCheck();
}

void PanelStack::hide(xcb_window_t panel) {
    const std::lock_guard guard(lock);
    if (std::erase_if(panels, [panel](const Panel& other) { return other.window == panel; }) == 0)
        return;
    if (panels.empty())
        connection.watchTopLevels(false);
}

void PanelStack::setLevel(xcb_window_t panel, int level) {
    {
        const std::lock_guard guard(lock);
        if (std::erase_if(panels, [panel](const Panel& other) { return other.window == panel; }) == 0)
            return;
        insert({panel, level});
    }
    requestCheck();
}

void PanelStack::setShadow(xcb_window_t panel, xcb_window_t shadow) {
    const std::lock_guard guard(lock);
    if (shadow == XCB_WINDOW_NONE) {
        shadows.erase(panel);
        return;
    }
    shadows[panel] = shadow;
    placeBelow(shadow, panel);
}

void PanelStack::insert(Panel panel) {
    const auto place = std::ranges::upper_bound(panels, panel.level, {}, &Panel::level);
    panels.insert(place, panel);
}

/// A message to ourselves: it arrives after every event that is already under way, so that a burst of them (a
/// switched desktop) costs one check.
void PanelStack::requestCheck() {
    const std::lock_guard guard(lock);
    if (panels.empty() || std::exchange(checkPending, true))
        return;
    xcb_change_property(connection.xcb(), XCB_PROP_MODE_APPEND, connection.ownWindow(),
                        connection.atoms()._MIRROLET_RESTACK, XCB_ATOM_INTEGER, 32, 0, nullptr);
    connection.flush();
}

void PanelStack::configured(const xcb_configure_notify_event_t& event) {
    if (noteBelow(event.window, event.above_sibling))
        requestCheck();
}

/// False if that was known: a window that is moved or resized tells the same sibling with every step.
bool PanelStack::noteBelow(xcb_window_t topLevel, xcb_window_t sibling) {
    const auto known = siblingBelow.find(topLevel);
    if (known != siblingBelow.end() && known->second == sibling)
        return false;
    // The windows that were above it, or above its new sibling, stand above another one now and are not told.
    std::erase_if(siblingBelow,
                  [=](const auto& entry) { return entry.second == topLevel || entry.second == sibling; });
    siblingBelow[topLevel] = sibling;
    return true;
}

void PanelStack::forget(xcb_window_t topLevel) {
    siblingBelow.erase(topLevel);
    contests.erase(topLevel);
}

void PanelStack::checkRequested() {
    std::vector<Panel> shown;
    {
        const std::lock_guard guard(lock);
        checkPending = false;
        shown = panels;
    }
    if (!shown.empty())
        return check(shown);
    siblingBelow.clear();
    contests.clear();
}

void PanelStack::check(const std::vector<Panel>& shown) {
    const auto order = stackingOrder(connection);
    const auto lowest = std::ranges::find_if(order, [&shown](xcb_window_t window) {
        return std::ranges::find(shown, window, &Panel::window) != shown.end();
    });
    if (lowest == order.end())
        return;
    std::vector<xcb_window_t> above;
    std::copy_if(lowest, order.end(), std::back_inserter(above), [&shown](xcb_window_t window) {
        return std::ranges::find(shown, window, &Panel::window) == shown.end();
    });
    arrange(shown, order, topmostOpponent(above));
}

std::optional<xcb_window_t> PanelStack::topmostOpponent(const std::vector<xcb_window_t>& above) {
    const auto opponents = applicationWindows(connection, above);
    const auto found = std::find_if(opponents.rbegin(), opponents.rend(),
                                    [this](xcb_window_t opponent) { return mayRaiseAbove(opponent); });
    return found == opponents.rend() ? std::nullopt : std::optional(*found);
}

bool PanelStack::mayRaiseAbove(xcb_window_t opponent) {
    const auto now = Clock::now();
    auto& contest = contests[opponent];
    if (now - contest.began > std::chrono::seconds(1))
        contest = {now, 0};
    return ++contest.raises <= mostRaisesASecond;
}

void PanelStack::arrange(const std::vector<Panel>& shown, std::vector<xcb_window_t> order,
                         std::optional<xcb_window_t> opponent) {
    auto below = opponent;
    for (const auto& panel : shown) {
        const auto place = std::ranges::find(order, panel.window);
        if (place == order.end())
            continue; // Gone already.
        const auto floor = below ? std::ranges::find(place, order.end(), *below) : order.end();
        below = panel.window;
        if (floor == order.end())
            continue;
        if (!placeAbove(panel.window, *floor))
            return requestCheck(); // The window below went away in the meantime.
        std::rotate(place, place + 1, floor + 1);
    }
    arrangeShadows(shown, order);
    connection.flush();
}

void PanelStack::arrangeShadows(const std::vector<Panel>& shown, const std::vector<xcb_window_t>& order) {
    const std::lock_guard guard(lock);
    for (const auto& panel : shown) {
        const auto shadow = shadows.find(panel.window);
        const auto place = std::ranges::find(order, panel.window);
        if (shadow == shadows.end() || place == order.end())
            continue;
        if (place == order.begin() || *std::prev(place) != shadow->second)
            placeBelow(shadow->second, panel.window);
    }
}

/// Not checked: one that has died has no place.
void PanelStack::placeBelow(xcb_window_t shadow, xcb_window_t panel) const {
    const std::uint32_t values[] = {panel, XCB_STACK_MODE_BELOW};
    xcb_configure_window(connection.xcb(), shadow, XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE,
                         values);
}

bool PanelStack::placeAbove(xcb_window_t panel, xcb_window_t sibling) {
    const std::uint32_t values[] = {sibling, XCB_STACK_MODE_ABOVE};
    noteBelow(panel, sibling); // So that the report of it is no news.
    return connection.succeeds(xcb_configure_window_checked(
        connection.xcb(), panel, XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE, values));
}

} // namespace mirrolet::platform::desktop::x11
