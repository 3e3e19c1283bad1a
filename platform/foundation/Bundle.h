#pragma once

#include "platform/foundation/PropertyList.h"
#include "platform/foundation/URL.h"

#include <optional>
#include <string>

namespace mirrolet::platform {

/// An installed application that has a desktop entry and is shown in menus. A plain value; any thread.
class Bundle {
  public:
    /// Returns the bundle of this program.
    static const Bundle& main();
    /// Reads the application at a path in one of the folders of ApplicationFolders. Returns none if there is
    /// no such application or if menus hide it. Also returns none if the desktop entry is broken, unreadable,
    /// larger than 1 MiB or not a regular file.
    static std::optional<Bundle> open(const URL& application);

    /// Returns the file ID of the desktop entry.
    [[nodiscard]] const std::optional<std::string>& bundleIdentifier() const { return identifier; }
    /// Returns the value of a key. "CFBundleDisplayName" and "CFBundleName" give strings in the user's
    /// language, or null if the entry has no name. Any other key gives null.
    [[nodiscard]] PropertyList object(const std::string& forInfoDictionaryKey) const;
    /// Returns the icon that the desktop entry names: a name in the icon theme, or an absolute path. Returns
    /// an empty string if the entry names no icon.
    [[nodiscard]] const std::string& icon() const { return iconName; }

  private:
    Bundle() = default;

    std::optional<std::string> identifier;
    std::optional<std::string> name;
    std::string iconName;
};

} // namespace mirrolet::platform
