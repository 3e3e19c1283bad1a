#pragma once

#include <QAction>

#include <functional>

namespace mirrolet::platform {

/// The Qt action behind one NSMenuItem.
struct NativeMenuItem {
    QAction entry;
    std::function<void()> action;

    void perform() {
        const auto running = action; // The call may replace the action or destroy the item.
        if (running)
            running();
    }
};

} // namespace mirrolet::platform
