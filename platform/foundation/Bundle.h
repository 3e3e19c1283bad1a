#pragma once

#include "platform/foundation/PropertyList.h"
#include "platform/foundation/URL.h"

#include <optional>
#include <string>

namespace mirrolet::platform {

/// An application as it is installed: a desktop entry that a menu would show. A plain value; any thread.
class Bundle {
  public:
    /// This program.
    static const Bundle& main();
    /// Opens an application of one of the application folders. None if there is none, if a menu would hide
    /// it, or if its entry is broken, cannot be read, is no regular file or is far too large.
    static std::optional<Bundle> open(const URL& application);

    /// The file ID of the desktop entry.
    [[nodiscard]] const std::optional<std::string>& bundleIdentifier() const { return identifier; }
    /// "CFBundleDisplayName" and "CFBundleName" are strings in the user's language; null if the entry has no
    /// name, and for any other key.
    [[nodiscard]] PropertyList object(const std::string& forInfoDictionaryKey) const;
    /// As the entry has it: a name in the icon theme, or an absolute path; empty if it has none.
    [[nodiscard]] const std::string& icon() const { return iconName; }

  private:
    Bundle() = default;

    std::optional<std::string> identifier;
    std::optional<std::string> name;
    std::string iconName;
};

} // namespace mirrolet::platform
