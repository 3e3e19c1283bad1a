#pragma once

#include <functional>
#include <memory>
#include <string>

namespace mirrolet::platform {

struct NativeMenuItem;

/// One entry of a menu. A change of the entry is visible at once. Main thread. Exists only while the
/// NSApplication exists.
class NSMenuItem {
  public:
    /// Makes an entry. An entry without an action cannot be chosen. `keyEquivalent` is one lower-case
    /// character, or empty. While the menu is open, Ctrl and this key choose the entry.
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
