#pragma once

#include "platform/desktop/applications/DesktopEntry.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace mirrolet::platform::desktop {

/// Holds the desktop entries of the machine, with a look-up for each fact that can be known about a window or
/// process. Filled once, then immutable. Each returned list keeps the order in which the entries were added.
/// Look-ups ignore case unless their comment says otherwise.
class DesktopEntries {
  public:
    using List = std::vector<const DesktopEntry*>;

    void add(DesktopEntry entry);

    [[nodiscard]] const DesktopEntry* withId(const std::string& id) const; ///< Case-sensitive.
    /// Returns the entry that was read from this file. For a copy of the file in another folder, such as the
    /// autostart folder, returns the entry with the same file ID.
    [[nodiscard]] const DesktopEntry* ofFile(const std::string& path) const;
    [[nodiscard]] const List& withIdIgnoringCase(const std::string& id) const;
    [[nodiscard]] const List& withLastIdPart(const std::string& part) const;
    [[nodiscard]] const List& withStartupWmClass(const std::string& startupWmClass) const;
    [[nodiscard]] const List& withProgram(const std::string& program) const;
    [[nodiscard]] const List& withWebApplicationId(const std::string& id) const;
    /// Returns the entry of this ID, and the entries whose IDs begin with this ID and the separator. This
    /// look-up is case-sensitive.
    [[nodiscard]] List family(const std::string& id, char separator) const;

  private:
    using Keyed = std::map<std::string, List>;
    static const List& find(const Keyed& keyed, const std::string& key);

    std::vector<std::unique_ptr<DesktopEntry>> entries;
    std::map<std::string, const DesktopEntry*> byId;
    std::map<std::string, const DesktopEntry*> byPath;
    Keyed byLowercaseId, byLastIdPart, byStartupWmClass, byProgram, byWebApplicationId;
};

} // namespace mirrolet::platform::desktop
