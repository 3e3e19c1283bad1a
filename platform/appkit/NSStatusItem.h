#pragma once

#include "platform/appkit/NSMenu.h"
#include "platform/appkit/NSStatusBarButton.h"

#include <memory>

namespace mirrolet::platform {

class StatusTray;

/// An icon in the desktop's status bar with a menu that either mouse button opens. Until the item is
/// destroyed, the icon is shown whenever the desktop has a place for icons. That place may come later, go,
/// and come back. Main thread.
class NSStatusItem {
  public:
    NSStatusItem();
    ~NSStatusItem();
    NSStatusItem(const NSStatusItem&) = delete;
    NSStatusItem& operator=(const NSStatusItem&) = delete;

    /// Returns the button, which lives as long as the item. Never returns nullptr, which would mean that the
    /// status bar lets items show nothing.
    [[nodiscard]] NSStatusBarButton* button() { return &theButton; }
    [[nodiscard]] const std::shared_ptr<NSMenu>& menu() const { return attachedMenu; }
    void setMenu(std::shared_ptr<NSMenu> menu);

  private:
    NSStatusBarButton theButton;
    std::shared_ptr<NSMenu> attachedMenu;
    std::shared_ptr<StatusTray> tray; ///< Destroyed before the menu that the tray shows.
};

} // namespace mirrolet::platform
