#pragma once

namespace mirrolet::platform {

/// Light or dark, as the user has it for the whole desktop. The toolkit takes the palette of some desktops;
/// others only say what they prefer, through the desktop portal.
struct DesktopAppearance {
    /// From now on keeps the toolkit's palette as the portal says. Needs the application object; does not
    /// wait for the session bus. Main thread.
    static void follow();
    /// A dark palette, unless the toolkit's own is dark already; or the toolkit's own. Main thread.
    static void setDark(bool dark);
};

} // namespace mirrolet::platform
