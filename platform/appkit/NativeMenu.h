#pragma once

#include "platform/appkit/KeyEquivalents.h"

#include <QMenu>

namespace mirrolet::platform {

/// The two Qt menus behind one NSMenu. Both have the same entries. Qt hands the attached menu over to the
/// status bar, which may show the menu in another process. This process can then no longer open the attached
/// menu itself.
struct NativeMenu {
    NativeMenu() {
        attached.installEventFilter(&keyEquivalents);
        popup.installEventFilter(&keyEquivalents);
    }

    KeyEquivalents keyEquivalents; ///< Outlives the two menus whose keys it takes.
    QMenu attached;
    QMenu popup;
};

} // namespace mirrolet::platform
