#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace mirrolet::platform::desktop {

/// What a desktop entry says that helps to recognise its windows.
struct DesktopEntry {
    /// In what its process runs, where that is not the plain system.
    enum class Sandbox { none, flatpak, snap };

    std::string id;   ///< File ID without ".desktop".
    std::string path; ///< Of the file.
    std::string name; ///< In the user's language.
    std::string startupWmClass;
    /// Base name of the program; empty for one that runs anything (a shell, an interpreter, a sandbox).
    std::string program;
    /// The browser's identifier of a web application (`--app-id`), else empty.
    std::string webApplicationId;
    Sandbox sandbox = Sandbox::none;
    bool isWebApplication = false; ///< A window of a browser under a name of its own.
    bool shown = true;             ///< In menus.
    bool inTerminal = false;
};

/// Reads the content of an entry. None if it is broken, hidden, or no application. Pure but for the user's
/// language and desktop, which come from the environment.
std::optional<DesktopEntry> parseDesktopEntry(std::string_view content, const std::string& id,
                                              const std::string& path);

} // namespace mirrolet::platform::desktop
