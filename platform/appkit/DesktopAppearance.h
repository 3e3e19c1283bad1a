#pragma once

namespace mirrolet::platform {

/// The user's choice of light or dark for the whole desktop. Qt takes over the palette of some desktops.
/// Other desktops only announce a preference, through the desktop portal.
struct DesktopAppearance {
    /// Keeps Qt's palette light or dark as the portal says, from now on. Needs the application object. Does
    /// not wait for the session bus. Main thread.
    static void follow();
    /// Sets a dark palette if `dark`, unless Qt's own palette is dark already. Otherwise sets Qt's own
    /// palette. Main thread.
    static void setDark(bool dark);
};

} // namespace mirrolet::platform
