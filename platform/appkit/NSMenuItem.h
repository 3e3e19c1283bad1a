#pragma once

#include <functional>
#include <memory>
#include <string>

namespace mirrolet::platform {

/// One entry of a menu. Changes show at once wherever the menu is. Main thread, with the application object
/// there.
class NSMenuItem {
  public:
    /// An entry without an action cannot be chosen. The key equivalent is one lower-case character, or empty
    /// for none; it is taken with the desktop's own modifier for commands (Ctrl), while the menu is open.
    explicit NSMenuItem(const std::string& title, std::function<void()> action = nullptr,
                        const std::string& keyEquivalent = {});
    ~NSMenuItem();
    NSMenuItem(const NSMenuItem&) = delete;
    NSMenuItem& operator=(const NSMenuItem&) = delete;

    static std::shared_ptr<NSMenuItem> separator();

    [[nodiscard]] std::string title() const;
    void setTitle(const std::string& title);
    void setAction(std::function<void()> action);
    /// As if the user had chosen it; nothing if it has no action.
    void performAction();

    struct Native;
    [[nodiscard]] Native& native() { return *nativeItem; }

  private:
    std::unique_ptr<Native> nativeItem;
};

} // namespace mirrolet::platform
