#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace mirrolet::platform::desktop {

/// The part of a desktop entry that helps to recognise the windows of its application.
struct DesktopEntry {
    /// The sandbox that the application's process runs in.
    enum class Sandbox { none, flatpak, snap };

    std::string id;   ///< The desktop file ID without ".desktop".
    std::string path; ///< Path of the file.
    std::string name; ///< In the user's language.
    std::string startupWmClass;
    /// The base name of the program. Empty for a program that runs other programs, such as a shell, an
    /// interpreter or a sandbox.
    std::string program;
    /// The browser's identifier of the web application (`--app-id`). Empty for any other application.
    std::string webApplicationId;
    Sandbox sandbox = Sandbox::none;
    bool isWebApplication = false; ///< Whether the entry starts a web application in a browser.
    bool shown = true;             ///< Whether menus show the entry.
    bool inTerminal = false;
};

/// Reads an entry from the content of its file. Returns none if the entry is broken, hidden, or not that of
/// an application. The result depends on the user's language and desktop, which environment variables name.
std::optional<DesktopEntry> parseDesktopEntry(std::string_view content, const std::string& id,
                                              const std::string& path);

} // namespace mirrolet::platform::desktop
