#pragma once

#include "platform/appkit/NSImage.h"
#include "platform/appkit/NSMenu.h"

#include <functional>
#include <memory>
#include <string>

namespace mirrolet::platform {

/// What a status item shows in the bar: its image, or its title where it has no image.
class NSStatusBarButton {
  public:
    void setImage(std::shared_ptr<NSImage> image);
    void setTitle(std::string title);
    [[nodiscard]] const std::shared_ptr<NSImage>& image() const { return shown; }
    [[nodiscard]] const std::string& title() const { return text; }

  private:
    friend class NSStatusItem;
    std::shared_ptr<NSImage> shown;
    std::string text;
    std::function<void()> changed;
};

/// An icon in the desktop's status bar with a menu that either mouse button opens. It is there whenever the
/// desktop has a place for it, also one that comes later, goes, or comes back, until the item is destroyed.
/// Main thread.
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
    class Tray;
    NSStatusBarButton theButton;
    std::shared_ptr<NSMenu> attachedMenu;
    std::shared_ptr<Tray> tray; ///< Goes before the menu that it shows.
};

} // namespace mirrolet::platform
