#pragma once

#include "platform/appkit/NSMenuItem.h"

#include <memory>
#include <vector>

namespace mirrolet::platform {

/// A menu: built once; what changes later are its items. Main thread, with the application object there.
class NSMenu {
  public:
    NSMenu();
    ~NSMenu();
    NSMenu(const NSMenu&) = delete;
    NSMenu& operator=(const NSMenu&) = delete;

    void addItem(std::shared_ptr<NSMenuItem> item);
    [[nodiscard]] const std::vector<std::shared_ptr<NSMenuItem>>& items() const { return entries; }

    struct Native;
    [[nodiscard]] Native& native() { return *nativeMenu; }

  private:
    std::vector<std::shared_ptr<NSMenuItem>> entries;
    std::unique_ptr<Native> nativeMenu;
};

} // namespace mirrolet::platform
