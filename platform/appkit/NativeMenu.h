#pragma once

#include "platform/appkit/KeyEquivalents.h"

#include <QMenu>

namespace mirrolet::platform {

/// Two Qt menus with the same entries, for one NSMenu. The status bar gets the menu `attached` and may show
/// it in another process. From then on this process cannot open `attached`, so it opens `popup` instead.
struct NativeMenu {
    NativeMenu() {
        attached.installEventFilter(&keyEquivalents);
        popup.installEventFilter(&keyEquivalents);
    }

    KeyEquivalents keyEquivalents; ///< Declared first, so that it outlives the menus.
    QMenu attached;
    QMenu popup;
};

} // namespace mirrolet::platform
