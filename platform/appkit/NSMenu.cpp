#include "platform/appkit/NSMenu.h"

#include "platform/appkit/NativeMenu.h"

#include <QKeyEvent>

#include <utility>

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

NSMenu::Native::Native() {
    attached.installEventFilter(&keyEquivalents);
    popup.installEventFilter(&keyEquivalents);
}

NSMenu::NSMenu() : nativeMenu(std::make_unique<Native>()) {}

NSMenu::~NSMenu() = default;

void NSMenu::addItem(std::shared_ptr<NSMenuItem> item) {
    nativeMenu->attached.addAction(&item->native().entry);
    nativeMenu->popup.addAction(&item->native().entry);
    entries.push_back(std::move(item));
}

} // namespace mirrolet::platform
