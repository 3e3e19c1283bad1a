#include "platform/desktop/applications/DesktopEntries.h"

#include "platform/foundation/AsciiLowercase.h"
#include "platform/foundation/DesktopEntryFiles.h"

#include <utility>

namespace mirrolet::platform::desktop {

void DesktopEntries::add(DesktopEntry added) {
    entries.push_back(std::make_unique<DesktopEntry>(std::move(added)));
    const auto* entry = entries.back().get();
    const auto id = asciiLowercase(entry->id);
    byId.try_emplace(entry->id, entry);
    byPath.try_emplace(entry->path, entry);
    byLowercaseId[id].push_back(entry);
    byLastIdPart[id.substr(id.rfind('.') + 1)].push_back(entry);
    byStartupWmClass[asciiLowercase(entry->startupWmClass)].push_back(entry);
    byProgram[asciiLowercase(entry->program)].push_back(entry);
    byWebApplicationId[asciiLowercase(entry->webApplicationId)].push_back(entry);
}

const DesktopEntries::List& DesktopEntries::find(const Keyed& keyed, const std::string& key) {
    static const List none;
    if (key.empty())
        return none;
    const auto found = keyed.find(asciiLowercase(key));
    return found == keyed.end() ? none : found->second;
}

const DesktopEntry* DesktopEntries::withId(const std::string& id) const {
    const auto found = byId.find(id);
    return found == byId.end() ? nullptr : found->second;
}

const DesktopEntry* DesktopEntries::ofFile(const std::string& path) const {
    const auto found = byPath.find(path);
    return found == byPath.end() ? withId(desktopEntryId(path)) : found->second;
}

const DesktopEntries::List& DesktopEntries::withIdIgnoringCase(const std::string& id) const {
    return find(byLowercaseId, id);
}

const DesktopEntries::List& DesktopEntries::withLastIdPart(const std::string& part) const {
    return find(byLastIdPart, part);
}

const DesktopEntries::List& DesktopEntries::withStartupWmClass(const std::string& startupWmClass) const {
    return find(byStartupWmClass, startupWmClass);
}

const DesktopEntries::List& DesktopEntries::withProgram(const std::string& program) const {
    return find(byProgram, program);
}

const DesktopEntries::List& DesktopEntries::withWebApplicationId(const std::string& id) const {
    return find(byWebApplicationId, id);
}

DesktopEntries::List DesktopEntries::family(const std::string& id, char separator) const {
    List members;
    if (const auto* head = withId(id))
        members.push_back(head);
    const auto prefix = id + separator;
    for (auto at = byId.lower_bound(prefix); at != byId.end() && at->first.starts_with(prefix); ++at)
        members.push_back(at->second);
    return members;
}

} // namespace mirrolet::platform::desktop
