#pragma once

#include "platform/appkit/NSMenu.h"
#include "platform/appkit/NSStatusBarButton.h"

#include <memory>

namespace mirrolet::platform {

class StatusTray;

/// An icon in the desktop's status bar with a menu that either mouse button opens. The icon is there whenever
/// the desktop has a place for icons, also one that comes later, goes, or comes back, until the item is
/// destroyed. Main thread.
class NSStatusItem {
  public:
    NSStatusItem();
    ~NSStatusItem();
    NSStatusItem(const NSStatusItem&) = delete;
    NSStatusItem& operator=(const NSStatusItem&) = delete;

    /// Lives as long as the item; nullptr would mean that the status bar lets items show nothing.
    [[nodiscard]] NSStatusBarButton* button() { return &theButton; }
    [[nodiscard]] const std::shared_ptr<NSMenu>& menu() const { return attachedMenu; }
    void setMenu(std::shared_ptr<NSMenu> menu);

  private:
    NSStatusBarButton theButton;
    std::shared_ptr<NSMenu> attachedMenu;
    std::shared_ptr<StatusTray> tray; ///< Goes before the menu that it shows.
};

} // namespace mirrolet::platform
