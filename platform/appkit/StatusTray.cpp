#include "platform/appkit/StatusTray.h"

#include "platform/appkit/NativeMenu.h"
#include "platform/desktop/Desktop.h"
#include "platform/dispatch/DispatchQueue.h"

#include <QCursor>

#include <utility>

namespace mirrolet::platform {

void StatusTray::watch() {
    const auto weak = weak_from_this();
    auto& desktopTrays = desktop::Desktop::current().trayHosts();
    desktopChanges = desktopTrays.subscribe([weak](bool present) {
        DispatchQueue::main().async([weak, present] {
            const auto self = weak.lock();
            if (!self)
                return;
            self->desktopPresent = present;
            self->update();
        });
    });
    desktopPresent = desktopTrays.present();
    sessionBusHosts.emplace([weak](bool present) {
        const auto self = weak.lock();
        if (!self)
            return;
        self->sessionBusPresent = present;
        self->update();
    });
}

void StatusTray::setLook(QIcon newIcon, QString newToolTip) {
    icon = std::move(newIcon);
    toolTip = std::move(newToolTip);
    if (!shown)
        return;
    shown->setIcon(icon);
    shown->setToolTip(toolTip);
}

void StatusTray::setMenu(const std::shared_ptr<NSMenu>& newMenu) {
    menu = newMenu;
    if (shown)
        shown->setContextMenu(newMenu ? &newMenu->native().attached : nullptr);
}

bool StatusTray::placePresent() {
    if (kind == Kind::undecided && sessionBusPresent == true)
        kind = Kind::sessionBus;
    if (kind == Kind::undecided && sessionBusPresent == false && desktopPresent)
        kind = Kind::desktop;
    return (kind == Kind::sessionBus && sessionBusPresent == true) ||
           (kind == Kind::desktop && desktopPresent);
}

void StatusTray::update() {
    if (!placePresent())
        shown.reset();
    else if (!shown)
        show();
}

void StatusTray::show() {
    shown = std::make_unique<QSystemTrayIcon>(icon);
    shown->setToolTip(toolTip);
    if (const auto attached = menu.lock())
        shown->setContextMenu(&attached->native().attached);
    QObject::connect(shown.get(), &QSystemTrayIcon::activated, shown.get(),
                     [this](QSystemTrayIcon::ActivationReason reason) { openMenu(reason); });
    shown->show();
}

void StatusTray::openMenu(QSystemTrayIcon::ActivationReason reason) {
    const auto opened = menu.lock();
    if (reason == QSystemTrayIcon::Trigger && opened)
        opened->native().popup.popup(QCursor::pos());
}

} // namespace mirrolet::platform
