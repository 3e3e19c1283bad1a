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
/// Qt chooses between the session bus and the X11 tray once for a process, when any part of Qt's tray is
/// first used. So no part of Qt's tray is used before the session bus and the X11 tray have both been asked
/// and one of the two has a place. From then on only the one that Qt chose matters.
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
    std::optional<bool> sessionBusPresent; ///< Empty until the bus has answered.
    Kind kind = Kind::undecided;
    std::unique_ptr<QSystemTrayIcon> shown;
    AnyCancellable desktopChanges;
    std::optional<StatusNotifierHosts> sessionBusHosts;
};

} // namespace mirrolet::platform
