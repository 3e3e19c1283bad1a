#include "platform/desktop/x11/windows/WindowDescription.h"

#include "platform/desktop/x11/windows/FrameExtents.h"
#include "platform/desktop/x11/windows/WindowText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

namespace mirrolet::platform::desktop::x11 {

namespace {

enum class Role { ordinary, above, notAWindow };

constexpr std::uint32_t iconicState = 3; // IconicState of the ICCCM, in the first item of WM_STATE.

std::optional<Role> roleOfType(xcb_atom_t type, const Atoms& atoms) {
    const std::array ordinary = {atoms._NET_WM_WINDOW_TYPE_NORMAL, atoms._NET_WM_WINDOW_TYPE_DIALOG,
                                 atoms._NET_WM_WINDOW_TYPE_UTILITY, atoms._NET_WM_WINDOW_TYPE_TOOLBAR};
    const std::array above = {atoms._NET_WM_WINDOW_TYPE_NOTIFICATION, atoms._NET_WM_WINDOW_TYPE_SPLASH,
                              atoms._NET_WM_WINDOW_TYPE_MENU,         atoms._NET_WM_WINDOW_TYPE_POPUP_MENU,
                              atoms._NET_WM_WINDOW_TYPE_TOOLTIP,      atoms._NET_WM_WINDOW_TYPE_DROPDOWN_MENU,
                              atoms._NET_WM_WINDOW_TYPE_COMBO,        atoms._NET_WM_WINDOW_TYPE_DND};
    const auto holds = [type](const auto& list) {
        return std::find(list.begin(), list.end(), type) != list.end();
    };
    if (type == XCB_ATOM_NONE)
        return std::nullopt;
    if (type == atoms._NET_WM_WINDOW_TYPE_DOCK || type == atoms._NET_WM_WINDOW_TYPE_DESKTOP)
        return Role::notAWindow;
    if (holds(above))
        return Role::above;
    return holds(ordinary) ? std::optional(Role::ordinary) : std::nullopt;
}

/// Returns the role of the first known type in the property. A client names the types in the order of its
/// preference.
Role roleOf(const Property& types, const Atoms& atoms) {
    for (const auto type : types.items(XCB_ATOM_ATOM)) {
        if (const auto role = roleOfType(type, atoms))
            return *role;
    }
    return Role::ordinary;
}

PixelRect withoutShadow(const PixelRect& bounds, const Property& frameExtents) {
    const auto visible = FrameExtents::from(frameExtents).visiblePart({bounds.width, bounds.height});
    return {bounds.x + visible.x, bounds.y + visible.y, visible.width, visible.height};
}

std::string utf8Title(const Property& name) {
    const auto bytes = untilNul(name.bytes);
    return repairedUtf8(name.cut ? withoutCutCharacter(bytes) : bytes);
}

std::string titleIn(const Property& name, const Atoms& atoms) {
    if (name.isText(atoms.UTF8_STRING))
        return utf8Title(name);
    if (name.isText(XCB_ATOM_STRING))
        return latin1ToUtf8(untilNul(name.bytes));
    return name.isText(atoms.COMPOUND_TEXT) ? compoundTextToUtf8(untilNul(name.bytes)) : std::string();
}

std::optional<std::string> titleOf(const WindowProperties& properties, const Atoms& atoms) {
    std::string title;
    if (properties.netName.isText(atoms.UTF8_STRING))
        title = utf8Title(properties.netName);
    if (title.empty())
        title = titleIn(properties.name, atoms);
    return title.empty() ? std::nullopt : std::optional(std::move(title));
}

/// Returns a class name in UTF-8. Class names should be ASCII. In practice some are UTF-8 and a few are
/// Latin-1.
std::string className(std::string_view bytes) {
    auto text = repairedUtf8(bytes);
    return text == bytes ? text : latin1ToUtf8(bytes);
}

} // namespace

std::optional<WindowDescription> describe(const PixelRect& bounds, const WindowProperties& properties,
                                          const Atoms& atoms) {
    const auto states = properties.state.items(XCB_ATOM_ATOM);
    const auto hasState = [&](xcb_atom_t state) {
        return state != XCB_ATOM_NONE && std::find(states.begin(), states.end(), state) != states.end();
    };
    const auto role = roleOf(properties.types, atoms);
    if (role == Role::notAWindow)
        return std::nullopt;
    const bool above = role == Role::above || hasState(atoms._NET_WM_STATE_ABOVE);
    const bool below = hasState(atoms._NET_WM_STATE_BELOW);
    const auto wmState = properties.wmState.items(atoms.WM_STATE);
    WindowPlacement placement;
    placement.minimized = hasState(atoms._NET_WM_STATE_HIDDEN);
    placement.iconic = !wmState.empty() && wmState[0] == iconicState;
    placement.workspace = firstCardinal(properties.workspace);
    return WindowDescription{withoutShadow(bounds, properties.frameExtents), above ? 1 : (below ? -1 : 0),
                             titleOf(properties, atoms), placement};
}

WindowClass windowClass(const Property& wmClass, const Property& gtkApplicationId, const Atoms& atoms) {
    WindowClass result;
    result.gtkApplicationId = plainText(gtkApplicationId, atoms);
    if (!wmClass.isText(XCB_ATOM_STRING) && !wmClass.isText(atoms.UTF8_STRING))
        return result;
    const auto instance = untilNul(wmClass.bytes);
    result.instance = className(instance);
    if (instance.size() < wmClass.bytes.size())
        result.name = className(untilNul(wmClass.bytes.substr(instance.size() + 1)));
    return result;
}

std::optional<std::uint32_t> firstCardinal(const Property& property) {
    const auto items = property.items(XCB_ATOM_CARDINAL);
    return items.empty() ? std::nullopt : std::optional(items[0]);
}

std::int32_t claimedPid(const Property& pid) {
    const auto items = pid.items(XCB_ATOM_CARDINAL);
    const bool credible =
        items.size() == 1 && items[0] <= static_cast<std::uint32_t>(std::numeric_limits<std::int32_t>::max());
    return credible ? static_cast<std::int32_t>(items[0]) : 0;
}

std::string plainText(const Property& text, const Atoms& atoms) {
    const bool isText = text.isText(XCB_ATOM_STRING) || text.isText(atoms.UTF8_STRING);
    return isText ? className(untilNul(text.bytes)) : std::string();
}

} // namespace mirrolet::platform::desktop::x11
