#include "platform/appkit/KeyEquivalents.h"

#include <QAction>
#include <QKeyEvent>
#include <QMenu>

namespace mirrolet::platform {

bool KeyEquivalents::eventFilter(QObject* object, QEvent* event) {
    auto* menu = qobject_cast<QMenu*>(object);
    if (!menu || event->type() != QEvent::KeyPress)
        return false;
    const QKeySequence pressed(static_cast<QKeyEvent*>(event)->keyCombination());
    for (auto* entry : menu->actions()) {
        if (!entry->isEnabled() || entry->shortcut().isEmpty() || entry->shortcut() != pressed)
            continue;
        menu->close();
        entry->trigger();
        return true;
    }
    return false;
}

} // namespace mirrolet::platform
