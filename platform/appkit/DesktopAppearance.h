#pragma once

namespace mirrolet::platform {

/// Follows the user's choice of light or dark for the whole desktop. On some desktops Qt itself uses the
/// desktop's palette. Other desktops only announce the choice, through the desktop portal.
struct DesktopAppearance {
    /// Makes Qt's palette light or dark as the portal says, now and after each change. Call this after the
    /// QApplication was made. Does not wait for the session bus. Main thread.
    static void follow();
    /// With true, sets a dark palette, but keeps Qt's own palette if that is dark already. With false,
    /// restores Qt's own palette. Main thread.
    static void setDark(bool dark);
};

} // namespace mirrolet::platform
