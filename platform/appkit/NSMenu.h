#pragma once

#include "platform/appkit/NSMenuItem.h"

#include <memory>
#include <vector>

namespace mirrolet::platform {

struct NativeMenu;

/// A menu of entries. Main thread. Exists only while the NSApplication exists.
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
