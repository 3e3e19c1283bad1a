#pragma once

#include "platform/desktop/x11/server/Extensions.h"
#include "platform/desktop/x11/server/XcbXkb.h"

#include <xcb/damage.h>
#include <xcb/xcb.h>
#include <xcb/xfixes.h>
#include <xcb/xinput.h>

#include <cstdint>

namespace mirrolet::platform::desktop::x11 {

// XCB has one struct for KeyPress and KeyRelease, and one for FocusIn and FocusOut. These separate types let
// X11Connection::subscribe() know which of the two events is meant.
struct KeyPress : xcb_key_press_event_t {};
struct KeyRelease : xcb_key_release_event_t {};
struct FocusOut : xcb_focus_out_event_t {};

/// Tells how to recognise an event of the type `Event`. number() returns the number that the server gives to
/// such an event. Some types of event share a number, and matches() tells them apart by a field.
template <typename Event> struct EventType;

template <std::uint8_t Number> struct CoreEventType {
    /// Returns the `response_type` of these events. The bit that marks events from clients is not set in it.
    static std::uint8_t number(const Extensions&) { return Number; }
    static bool matches(const auto&) { return true; }
};

template <Extension Extensions::*Of, std::uint8_t Number> struct ExtensionEventType {
    /// Returns 0 if the server lacks the extension.
    static std::uint8_t number(const Extensions& extensions) {
        const auto& extension = extensions.*Of;
        return extension ? static_cast<std::uint8_t>(extension.firstEvent + Number) : std::uint8_t{0};
    }
    static bool matches(const auto&) { return true; }
};

/// All XKB events share one number and differ in the field `xkbType`.
template <std::uint8_t Kind> struct XkbEventType : ExtensionEventType<&Extensions::xkb, 0> {
    static bool matches(const auto& event) { return event.xkbType == Kind; }
};

/// All events of XInput 2 have the number of generic events, which other extensions use too. The extension
/// need not be checked, because this program selects no generic events of other extensions.
template <std::uint16_t Kind> struct XInputEventType {
    static std::uint8_t number(const Extensions& extensions) {
        return extensions.xinput ? XCB_GE_GENERIC : std::uint8_t{0};
    }
    static bool matches(const auto& event) { return event.event_type == Kind; }
};

template <> struct EventType<KeyPress> : CoreEventType<XCB_KEY_PRESS> {};
template <> struct EventType<KeyRelease> : CoreEventType<XCB_KEY_RELEASE> {};
template <> struct EventType<FocusOut> : CoreEventType<XCB_FOCUS_OUT> {};
template <> struct EventType<xcb_visibility_notify_event_t> : CoreEventType<XCB_VISIBILITY_NOTIFY> {};
template <> struct EventType<xcb_destroy_notify_event_t> : CoreEventType<XCB_DESTROY_NOTIFY> {};
template <> struct EventType<xcb_map_notify_event_t> : CoreEventType<XCB_MAP_NOTIFY> {};
template <> struct EventType<xcb_unmap_notify_event_t> : CoreEventType<XCB_UNMAP_NOTIFY> {};
template <> struct EventType<xcb_reparent_notify_event_t> : CoreEventType<XCB_REPARENT_NOTIFY> {};
template <> struct EventType<xcb_configure_notify_event_t> : CoreEventType<XCB_CONFIGURE_NOTIFY> {};
template <> struct EventType<xcb_circulate_notify_event_t> : CoreEventType<XCB_CIRCULATE_NOTIFY> {};
template <> struct EventType<xcb_property_notify_event_t> : CoreEventType<XCB_PROPERTY_NOTIFY> {};
template <> struct EventType<xcb_mapping_notify_event_t> : CoreEventType<XCB_MAPPING_NOTIFY> {};
template <>
struct EventType<xcb_damage_notify_event_t> : ExtensionEventType<&Extensions::damage, XCB_DAMAGE_NOTIFY> {};
template <>
struct EventType<xcb_xfixes_selection_notify_event_t>
    : ExtensionEventType<&Extensions::xfixes, XCB_XFIXES_SELECTION_NOTIFY> {};
template <> struct EventType<xcb_xkb_map_notify_event_t> : XkbEventType<XCB_XKB_MAP_NOTIFY> {};
template <>
struct EventType<xcb_xkb_new_keyboard_notify_event_t> : XkbEventType<XCB_XKB_NEW_KEYBOARD_NOTIFY> {};

template <>
struct EventType<xcb_input_raw_key_release_event_t> : XInputEventType<XCB_INPUT_RAW_KEY_RELEASE> {};

/// Returns the window on which the event was selected. A structure event that is selected on a window and
/// also on the window's parent arrives once for each of the two windows.
template <typename Event> xcb_window_t selectedOn(const Event& event) {
    if constexpr (requires { event.event; })
        return event.event;
    else
        return event.window;
}

} // namespace mirrolet::platform::desktop::x11
