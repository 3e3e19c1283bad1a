#pragma once

#include "platform/appkit/NSMenu.h"
#include "platform/appkit/NSStatusBarButton.h"

#include <memory>

namespace mirrolet::platform {

class StatusTray;

/// An icon in the desktop's status bar, with a menu that either mouse button opens. A desktop may offer a
/// place for icons only later, and may remove the place and offer it again. Until the item is destroyed, the
/// icon is shown whenever there is a place. Main thread.
class NSStatusItem {
  public:
    NSStatusItem();
    ~NSStatusItem();
    NSStatusItem(const NSStatusItem&) = delete;
    NSStatusItem& operator=(const NSStatusItem&) = delete;

    /// Returns the button, which lives as long as the item. Never returns nullptr.
    [[nodiscard]] NSStatusBarButton* button() { return &theButton; }
    [[nodiscard]] const std::shared_ptr<NSMenu>& menu() const { return attachedMenu; }
    void setMenu(std::shared_ptr<NSMenu> menu);

  private:
    NSStatusBarButton theButton;
    std::shared_ptr<NSMenu> attachedMenu;
    std::shared_ptr<StatusTray> tray; ///< Declared last, so that it is destroyed before the menu.
};

} // namespace mirrolet::platform
