#include "platform/appkit/NSMenu.h"

#include "platform/appkit/NativeMenu.h"
#include "platform/appkit/NativeMenuItem.h"

#include <utility>

namespace mirrolet::platform {

NSMenu::NSMenu() : nativeMenu(std::make_unique<NativeMenu>()) {}

NSMenu::~NSMenu() = default;

void NSMenu::addItem(std::shared_ptr<NSMenuItem> item) {
    nativeMenu->attached.addAction(&item->native().entry);
    nativeMenu->popup.addAction(&item->native().entry);
    entries.push_back(std::move(item));
}

} // namespace mirrolet::platform
