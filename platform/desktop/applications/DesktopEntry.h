#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace mirrolet::platform::desktop {

/// The part of a desktop entry that helps to recognise the windows of its application.
struct DesktopEntry {
    /// The sandbox that the application's process runs in.
    enum class Sandbox { none, flatpak, snap };

    std::string id;   ///< File ID without ".desktop".
    std::string path; ///< Path of the file.
    std::string name; ///< In the user's language.
    std::string startupWmClass;
    /// The base name of the program. Empty for a program that runs others: a shell, an interpreter, a
    /// sandbox.
    std::string program;
    /// The browser's identifier of the web application (`--app-id`). Empty for any other application.
    std::string webApplicationId;
    Sandbox sandbox = Sandbox::none;
    bool isWebApplication = false; ///< Whether a browser shows the application under the entry's name.
    bool shown = true;             ///< Whether menus show the entry.
    bool inTerminal = false;
};

/// Reads an entry from the content of its file. None if the entry is broken, hidden, or no application. The
/// result depends on the user's language and desktop, which the environment names.
std::optional<DesktopEntry> parseDesktopEntry(std::string_view content, const std::string& id,
                                              const std::string& path);

} // namespace mirrolet::platform::desktop
