#pragma once

#include <xcb/xcb.h>

#include <map>
#include <string>
#include <string_view>

namespace mirrolet::platform::desktop::x11 {

/// Holds the atoms that the backend uses. The constructor interns all of them in one round trip.
struct Atoms {
    /// `Atoms{}` holds XCB_ATOM_NONE for every atom. Tests that run without a server use this.
    Atoms() = default;
    explicit Atoms(xcb_connection_t* connection, int screenNumber);

    xcb_atom_t UTF8_STRING, COMPOUND_TEXT, WM_STATE, WM_CLIENT_MACHINE, WM_PROTOCOLS, WM_TAKE_FOCUS;
    xcb_atom_t _NET_SUPPORTED, _NET_SUPPORTING_WM_CHECK, _NET_CLIENT_LIST, _NET_CLIENT_LIST_STACKING,
        _NET_ACTIVE_WINDOW, _NET_WM_STRUT, _NET_WM_STRUT_PARTIAL;
    xcb_atom_t _NET_WM_NAME, _NET_WM_PID, _NET_WM_STATE, _NET_WM_STATE_HIDDEN, _NET_WM_STATE_ABOVE,
        _NET_WM_STATE_BELOW, _NET_WM_STATE_STICKY, _NET_WM_STATE_SKIP_TASKBAR, _NET_WM_STATE_SKIP_PAGER,
        _NET_WM_STATE_FULLSCREEN, _NET_WM_DESKTOP, _NET_CURRENT_DESKTOP, _NET_WORKAREA, _NET_WM_USER_TIME,
        _NET_WM_USER_TIME_WINDOW, _NET_RESTACK_WINDOW;
    xcb_atom_t _NET_WM_WINDOW_TYPE, _NET_WM_WINDOW_TYPE_DOCK, _NET_WM_WINDOW_TYPE_DESKTOP,
        _NET_WM_WINDOW_TYPE_UTILITY, _NET_WM_WINDOW_TYPE_DIALOG, _NET_WM_WINDOW_TYPE_NORMAL,
        _NET_WM_WINDOW_TYPE_NOTIFICATION, _NET_WM_WINDOW_TYPE_SPLASH, _NET_WM_WINDOW_TYPE_TOOLBAR,
        _NET_WM_WINDOW_TYPE_MENU, _NET_WM_WINDOW_TYPE_POPUP_MENU, _NET_WM_WINDOW_TYPE_DROPDOWN_MENU,
        _NET_WM_WINDOW_TYPE_TOOLTIP, _NET_WM_WINDOW_TYPE_COMBO, _NET_WM_WINDOW_TYPE_DND;
    xcb_atom_t _GTK_FRAME_EXTENTS, _GTK_APPLICATION_ID, _MOTIF_WM_HINTS;
    xcb_atom_t _COMPTON_SHADOW;                   ///< The value 0 asks a compositing manager for no shadow.
    xcb_atom_t _MIRROLET_RESTACK, _MIRROLET_TIME; ///< Properties of X11Connection::ownWindow().
    xcb_atom_t compositingManager;                ///< The selection _NET_WM_CM_S<screen>.
    xcb_atom_t systemTray;                        ///< The selection _NET_SYSTEM_TRAY_S<screen>.
};

} // namespace mirrolet::platform::desktop::x11
