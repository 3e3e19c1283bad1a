#pragma once

#include <functional>
#include <memory>
#include <string>

namespace mirrolet::platform {

struct NativeMenuItem;

/// One entry of a menu. Changes show at once wherever the menu is. Main thread, while the application object
/// exists.
class NSMenuItem {
  public:
    /// Makes an entry. An entry without an action cannot be chosen. The key equivalent is one lower-case
    /// character, or empty for none. While the menu is open, the user presses that key with the desktop's
    /// modifier for commands (Ctrl).
    explicit NSMenuItem(const std::string& title, std::function<void()> action = nullptr,
                        const std::string& keyEquivalent = {});
    ~NSMenuItem();
    NSMenuItem(const NSMenuItem&) = delete;
    NSMenuItem& operator=(const NSMenuItem&) = delete;

    static std::shared_ptr<NSMenuItem> separator();

    [[nodiscard]] std::string title() const;
    void setTitle(const std::string& title);
    void setAction(std::function<void()> action);

    [[nodiscard]] NativeMenuItem& native() { return *nativeItem; }

  private:
    std::unique_ptr<NativeMenuItem> nativeItem;
};

} // namespace mirrolet::platform
