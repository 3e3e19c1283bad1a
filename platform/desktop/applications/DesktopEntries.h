#pragma once

#include "platform/desktop/applications/DesktopEntry.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace mirrolet::platform::desktop {

/// The desktop entries of the system, found by what windows and processes tell. Filled once, then immutable.
/// Every list is in the order in which the entries were added; look-ups ignore case unless said otherwise.
class DesktopEntries {
  public:
    using List = std::vector<const DesktopEntry*>;

    void add(DesktopEntry entry);

    [[nodiscard]] const DesktopEntry* withId(const std::string& id) const; ///< Exact.
    /// The entry of the file; of a copy of it elsewhere (an autostart folder), the one of the same file ID.
    [[nodiscard]] const DesktopEntry* ofFile(const std::string& path) const;
    [[nodiscard]] const List& withIdIgnoringCase(const std::string& id) const;
    [[nodiscard]] const List& withLastIdPart(const std::string& part) const;
    [[nodiscard]] const List& withStartupWmClass(const std::string& startupWmClass) const;
    [[nodiscard]] const List& withProgram(const std::string& program) const;
    [[nodiscard]] const List& withWebApplicationId(const std::string& id) const;
    /// The entry of this ID and those whose IDs begin with it and a separator.
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
