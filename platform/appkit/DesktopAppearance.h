#pragma once

namespace mirrolet::platform {

/// Light or dark, as the user has chosen it for the whole desktop. Qt takes over the palette of some
/// desktops. Others only say what they prefer, through the desktop portal.
struct DesktopAppearance {
    /// From now on keeps Qt's palette as the portal says. Needs the application object; does not wait for the
    /// session bus. Main thread.
    static void follow();
    /// Dark sets a dark palette, unless Qt's own is dark already; light sets Qt's own. Main thread.
    static void setDark(bool dark);
};

} // namespace mirrolet::platform
