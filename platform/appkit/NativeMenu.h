#pragma once

#include "platform/appkit/KeyEquivalents.h"

#include <QMenu>

namespace mirrolet::platform {

/// The Qt menus behind one NSMenu. The same entries stand in two menus, because Qt hands the attached one
/// over to the status bar, which may show it in another process: this process can no longer open it itself.
struct NativeMenu {
    NativeMenu() {
        attached.installEventFilter(&keyEquivalents);
        popup.installEventFilter(&keyEquivalents);
    }

    KeyEquivalents keyEquivalents; ///< Outlives the menus that it listens to.
    QMenu attached;
    QMenu popup;
};

} // namespace mirrolet::platform
