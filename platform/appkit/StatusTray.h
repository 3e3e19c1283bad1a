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

/// Shows Qt's tray icon whenever the desktop has a place for the icon.
///
/// Qt uses either the session bus or the X11 tray for the whole process, and decides which one when any part
/// of Qt's tray is first used. Therefore no part of Qt's tray is used until the session bus or the X11 tray
/// is known to have a place. From then on the other one is ignored, because Qt has made its choice.
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
    std::optional<bool> sessionBusPresent; ///< Has no value until the bus has answered.
    Kind kind = Kind::undecided;
    std::unique_ptr<QSystemTrayIcon> shown;
    AnyCancellable desktopChanges;
    std::optional<StatusNotifierHosts> sessionBusHosts;
};

} // namespace mirrolet::platform
