#include "platform/desktop/x11/server/Atoms.h"

#include "platform/desktop/x11/server/XcbReply.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace mirrolet::platform::desktop::x11 {

// NOLINTNEXTLINE(readability-function-size): a table with an entry for each atom.
Atoms::Atoms(xcb_connection_t* connection, int screenNumber) {
    const std::string screen = std::to_string(screenNumber);
#define ATOM(name)                                                                                           \
    std::pair<xcb_atom_t*, std::string> {                                                                    \
        &(name), #name                                                                                       \
    }
    const std::array wanted = {
        ATOM(UTF8_STRING),
        ATOM(COMPOUND_TEXT),
        ATOM(WM_STATE),
        ATOM(WM_CLIENT_MACHINE),
        ATOM(WM_PROTOCOLS),
        ATOM(WM_TAKE_FOCUS),
        ATOM(_NET_SUPPORTED),
        ATOM(_NET_SUPPORTING_WM_CHECK),
        ATOM(_NET_CLIENT_LIST),
        ATOM(_NET_CLIENT_LIST_STACKING),
        ATOM(_NET_ACTIVE_WINDOW),
        ATOM(_NET_WM_STRUT),
        ATOM(_NET_WM_STRUT_PARTIAL),
        ATOM(_NET_WM_NAME),
        ATOM(_NET_WM_PID),
        ATOM(_NET_WM_STATE),
        ATOM(_NET_WM_STATE_HIDDEN),
        ATOM(_NET_WM_STATE_ABOVE),
        ATOM(_NET_WM_STATE_BELOW),
        ATOM(_NET_WM_STATE_STICKY),
        ATOM(_NET_WM_STATE_SKIP_TASKBAR),
        ATOM(_NET_WM_STATE_SKIP_PAGER),
        ATOM(_NET_WM_STATE_FULLSCREEN),
        ATOM(_NET_WM_DESKTOP),
        ATOM(_NET_CURRENT_DESKTOP),
        ATOM(_NET_WORKAREA),
        ATOM(_NET_WM_USER_TIME),
        ATOM(_NET_WM_USER_TIME_WINDOW),
        ATOM(_NET_RESTACK_WINDOW),
        ATOM(_NET_WM_WINDOW_TYPE),
        ATOM(_NET_WM_WINDOW_TYPE_DOCK),
        ATOM(_NET_WM_WINDOW_TYPE_DESKTOP),
        ATOM(_NET_WM_WINDOW_TYPE_UTILITY),
        ATOM(_NET_WM_WINDOW_TYPE_DIALOG),
        ATOM(_NET_WM_WINDOW_TYPE_NORMAL),
        ATOM(_NET_WM_WINDOW_TYPE_NOTIFICATION),
        ATOM(_NET_WM_WINDOW_TYPE_SPLASH),
        ATOM(_NET_WM_WINDOW_TYPE_TOOLBAR),
        ATOM(_NET_WM_WINDOW_TYPE_MENU),
        ATOM(_NET_WM_WINDOW_TYPE_POPUP_MENU),
        ATOM(_NET_WM_WINDOW_TYPE_DROPDOWN_MENU),
        ATOM(_NET_WM_WINDOW_TYPE_TOOLTIP),
        ATOM(_NET_WM_WINDOW_TYPE_COMBO),
        ATOM(_NET_WM_WINDOW_TYPE_DND),
        ATOM(_GTK_FRAME_EXTENTS),
        ATOM(_GTK_APPLICATION_ID),
        ATOM(_MOTIF_WM_HINTS),
        ATOM(_COMPTON_SHADOW),
        ATOM(_MIRROLET_RESTACK),
        ATOM(_MIRROLET_TIME),
        std::pair<xcb_atom_t*, std::string>{&compositingManager, "_NET_WM_CM_S" + screen},
        std::pair<xcb_atom_t*, std::string>{&systemTray, "_NET_SYSTEM_TRAY_S" + screen},
    };
#undef ATOM
    std::array<xcb_intern_atom_cookie_t, wanted.size()> cookies;
    for (std::size_t i = 0; i < wanted.size(); ++i)
        cookies[i] = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(wanted[i].second.size()),
                                     wanted[i].second.c_str());
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookies[i], nullptr));
        *wanted[i].first = reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    }
}

} // namespace mirrolet::platform::desktop::x11
