#pragma once

#include "platform/appkit/NSMenuItem.h"

#include <memory>
#include <vector>

namespace mirrolet::platform {

struct NativeMenu;

/// A menu that is built once. Later only the menu's items change. Main thread, while the application object
/// exists.
class NSMenu {
  public:
    NSMenu();
    ~NSMenu();
    NSMenu(const NSMenu&) = delete;
    NSMenu& operator=(const NSMenu&) = delete;

    void addItem(std::shared_ptr<NSMenuItem> item);
    [[nodiscard]] const std::vector<std::shared_ptr<NSMenuItem>>& items() const { return entries; }

    [[nodiscard]] NativeMenu& native() { return *nativeMenu; }

  private:
    std::vector<std::shared_ptr<NSMenuItem>> entries;
    std::unique_ptr<NativeMenu> nativeMenu;
};

} // namespace mirrolet::platform
