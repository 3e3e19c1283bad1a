#pragma once

#include "platform/appkit/NSStatusItem.h"
#include "platform/appkit/StatusNotifierHosts.h"
#include "platform/combine/AnyCancellable.h"

#include <QIcon>
#include <QString>
#include <QSystemTrayIcon>

#include <memory>
#include <optional>

namespace mirrolet::platform {

/// The toolkit's tray icon, made anew each time that a place for it appears.
///
/// The toolkit decides once for a process between the session bus and the X11 tray, at the first touch of
/// anything of its tray. So it is not touched before both have been asked and one is there; from then on the
/// one that it chose counts.
class NSStatusItem::Tray : public std::enable_shared_from_this<Tray> {
  public:
    void watch();
    void setLook(QIcon icon, QString toolTip);
    void setMenu(const std::shared_ptr<NSMenu>& shown);

  private:
    enum class Road { undecided, sessionBus, desktop };

    void update();
    [[nodiscard]] bool placePresent();
    void show();
    void openMenu(QSystemTrayIcon::ActivationReason reason);

    QIcon icon;
    QString toolTip;
    std::weak_ptr<NSMenu> menu;
    bool desktopPresent = false;
    std::optional<bool> sessionBusPresent; ///< None until the bus has answered.
    Road road = Road::undecided;
    std::unique_ptr<QSystemTrayIcon> shown;
    AnyCancellable desktopChanges;
    std::optional<StatusNotifierHosts> sessionBusHosts;
};

} // namespace mirrolet::platform
