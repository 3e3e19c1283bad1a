#pragma once

#include "platform/appkit/NSMenu.h"
#include "platform/appkit/StatusNotifierHosts.h"
#include "platform/combine/AnyCancellable.h"

#include <QIcon>
#include <QString>
#include <QSystemTrayIcon>

#include <memory>
#include <optional>

namespace mirrolet::platform {

/// Qt's tray icon, made anew each time that a place for the icon appears.
///
/// Qt decides once for a process between the session bus and the X11 tray, when anything of its tray is first
/// used. So nothing of it is used before both have been asked and one is there. From then on only the one
/// that Qt chose matters.
class StatusTray : public std::enable_shared_from_this<StatusTray> {
  public:
    void watch();
    void setLook(QIcon icon, QString toolTip);
    void setMenu(const std::shared_ptr<NSMenu>& shown);

  private:
    enum class Kind { undecided, sessionBus, desktop };

    void update();
    bool placePresent();
    void show();
    void openMenu(QSystemTrayIcon::ActivationReason reason);

    QIcon icon;
    QString toolTip;
    std::weak_ptr<NSMenu> menu;
    bool desktopPresent = false;
    std::optional<bool> sessionBusPresent; ///< None until the bus has answered.
    Kind kind = Kind::undecided;
    std::unique_ptr<QSystemTrayIcon> shown;
    AnyCancellable desktopChanges;
    std::optional<StatusNotifierHosts> sessionBusHosts;
};

} // namespace mirrolet::platform
