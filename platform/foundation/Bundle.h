#pragma once

#include "platform/foundation/PropertyList.h"
#include "platform/foundation/URL.h"

#include <optional>
#include <string>

namespace mirrolet::platform {

/// An installed application: a desktop entry that a menu would show. A plain value; any thread.
class Bundle {
  public:
    /// Returns the bundle of this program.
    static const Bundle& main();
    /// Opens an application of one of the application folders. None if there is no such application or a menu
    /// would hide it. None also if its entry is broken, cannot be read, is no regular file or is far too
    /// large.
    static std::optional<Bundle> open(const URL& application);

    /// Returns the file ID of the desktop entry.
    [[nodiscard]] const std::optional<std::string>& bundleIdentifier() const { return identifier; }
    /// Returns the value of a key. "CFBundleDisplayName" and "CFBundleName" give strings in the user's
    /// language, or null if the entry has no name. Any other key gives null.
    [[nodiscard]] PropertyList object(const std::string& forInfoDictionaryKey) const;
    /// Returns the icon as the entry names it: a name in the icon theme, or an absolute path. Empty if the
    /// entry names none.
    [[nodiscard]] const std::string& icon() const { return iconName; }

  private:
    Bundle() = default;

    std::optional<std::string> identifier;
    std::optional<std::string> name;
    std::string iconName;
};

} // namespace mirrolet::platform
