#include "platform/foundation/ApplicationFolders.h"

#include "platform/foundation/FileManager.h"

namespace mirrolet::platform {

ApplicationFolders::ApplicationFolders() : roots(userApplicationFolders()) {}

std::optional<ApplicationFolders::Kind> ApplicationFolders::kindOf(const URL& folder) const {
    const auto path = folder.path();
    if (path == "/Applications")
        return Kind::local;
    if (path == "/System/Applications")
        return Kind::system;
    if (path == "/System/Applications/Utilities")
        return Kind::utilities;
    if (folder ==
        FileManager::standard().homeDirectoryForCurrentUser().appendingPathComponent("Applications"))
        return Kind::home;
    return std::nullopt;
}

ApplicationFolders::Kind ApplicationFolders::kindOfRoot(std::size_t root) const {
    if (root == 0)
        return Kind::home;
    return roots[root] == "/usr/share/applications" ? Kind::system : Kind::local;
}

std::optional<std::vector<URL>> ApplicationFolders::contents(const URL& folder) const {
    const auto kind = kindOf(folder);
    if (!kind)
        return std::nullopt;
    std::vector<URL> applications;
    for (const auto& file : desktopEntryFiles(roots))
        if (kindOfRoot(file.root) == *kind)
            applications.push_back(folder.appendingPathComponent(file.id + ".app"));
    return applications;
}

std::optional<DesktopEntryFile> ApplicationFolders::entryOf(const URL& application) const {
    const auto kind = kindOf(application.deletingLastPathComponent());
    if (!kind || application.pathExtension() != "app")
        return std::nullopt;
    auto file = desktopEntryFile(roots, application.deletingPathExtension().lastPathComponent());
    if (!file || kindOfRoot(file->root) != *kind)
        return std::nullopt;
    return file;
}

} // namespace mirrolet::platform
