#pragma once

#include <QAction>

#include <functional>

namespace mirrolet::platform {

/// The Qt action behind one NSMenuItem.
struct NativeMenuItem {
    QAction entry;
    std::function<void()> action;

    void perform() {
        // The action is copied, because it may replace itself or destroy the item.
        const auto running = action;
        if (running)
            running();
    }
};

} // namespace mirrolet::platform
