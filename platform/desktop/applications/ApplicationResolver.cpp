#include "platform/desktop/applications/ApplicationResolver.h"

#include "platform/foundation/AsciiLowercase.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

namespace mirrolet::platform::desktop {

namespace {

using List = DesktopEntries::List;
using Sandbox = DesktopEntry::Sandbox;

std::string_view baseName(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

bool sameText(std::string_view one, std::string_view other) {
    return !one.empty() && asciiLowercase(one) == asciiLowercase(other);
}

/// Decodes a name from systemd. In such names, \xNN stands for a byte that is not allowed.
std::string unescaped(std::string_view name) {
    std::string text;
    while (!name.empty()) {
        unsigned code = 0;
        const auto* digits = name.data() + 2;
        if (name.size() >= 4 && name.starts_with("\\x") &&
            std::from_chars(digits, digits + 2, code, 16).ptr == digits + 2) {
            text += static_cast<char>(code);
            name.remove_prefix(4);
            continue;
        }
        text += name.front();
        name.remove_prefix(1);
    }
    return text;
}

/// Calls `visit` with each folder name in the control group paths, until `visit` returns true.
template <typename Visit> void eachGroupName(std::string_view cgroup, Visit visit) {
    while (!cgroup.empty()) {
        const auto end = cgroup.find_first_of("/\n");
        if (visit(cgroup.substr(0, end)) || end == std::string_view::npos)
            return;
        cgroup.remove_prefix(end + 1);
    }
}

std::string_view variable(std::string_view environment, std::string_view nameAndEquals) {
    while (!environment.empty()) {
        const auto end = environment.find('\0');
        const auto entry = environment.substr(0, end);
        if (entry.starts_with(nameAndEquals))
            return entry.substr(nameAndEquals.size());
        environment.remove_prefix(end == std::string_view::npos ? environment.size() : end + 1);
    }
    return {};
}

/// Finds the desktop entry of one window. Facts about the process are tried before the names of the window,
/// because a client can write any names.
class Search {
  public:
    Search(const WindowClass& window, const ProcessFacts& process, const DesktopEntries& entries)
        : window(window), process(process), entries(entries) {}

    const DesktopEntry* run() const {
        // A web application is an exception. It is found by the window's names, because a browser runs all
        // its web applications in one process. The facts about that process describe only the application
        // that was started first.
        if (const auto* entry = webApplication())
            return entry;
        if (const auto id = flatpakOf(process); !id.empty())
            return inFamily(id, '.');
        if (const auto snap = snapOf(process); !snap.snap.empty())
            return inSnap(snap);
        if (const auto* entry = launched())
            return entry;
        return byWindow();
    }

  private:
    const DesktopEntry* webApplication() const {
        constexpr std::string_view chromium = "crx_";
        List found;
        for (const auto& name : {window.instance, window.name}) {
            append(found, entries.withStartupWmClass(name));
            // The class of a web application's window is "crx_" followed by the web application's identifier.
            // Some browsers write two underscores.
            if (name.starts_with(chromium))
                append(found, entries.withWebApplicationId(withoutUnderscores(name.substr(chromium.size()))));
        }
        std::erase_if(found, [](const auto* entry) { return !entry->isWebApplication; });
        return best(found, [this](const DesktopEntry& entry) {
            // Two browsers can have installed the same web application. The entry of this window's browser is
            // preferred. The program of that entry begins with the window's class.
            return asciiLowercase(entry.program).starts_with(asciiLowercase(window.name));
        });
    }

    static std::string withoutUnderscores(const std::string& text) {
        return text.substr(std::min(text.find_first_not_of('_'), text.size()));
    }

    /// Returns the entry of one application. An application can have several entries, such as one for each
    /// program of an office suite. The ID of each entry is `id`, or begins with `id` and the separator. An
    /// entry whose StartupWMClass is one of the window's names is preferred. Without such an entry, returns
    /// the one whose ID is `id`.
    const DesktopEntry* inFamily(const std::string& id, char separator) const {
        const auto family = entries.family(id, separator);
        for (const auto& name : {window.name, window.instance}) {
            for (const auto* entry : family) {
                if (sameText(entry->startupWmClass, name))
                    return entry;
            }
        }
        return entries.withId(id);
    }

    const DesktopEntry* inSnap(const SnapApplication& snap) const {
        // Any program that a snap starts stays in the snap's control group, for example a program that was
        // started in an editor's terminal. The window's names are therefore tried first if the program's own
        // file is in no snap.
        const bool foreign =
            !process.executable.empty() && process.executable.find("/snap/") == std::string::npos;
        if (foreign) {
            if (const auto* entry = byWindow())
                return entry;
        }
        const auto family = entries.family(snap.snap, '_');
        for (const auto* entry : family) {
            if (sameText(entry->startupWmClass, window.name) ||
                sameText(entry->startupWmClass, window.instance))
                return entry;
        }
        if (const auto* entry = entries.withId(snap.snap + '_' + snap.application))
            return entry;
        return family.size() == 1 ? family.front() : nullptr;
    }

    /// Finds the entry from which the process was launched. The launcher writes the entry's file and the PID
    /// of the process into the environment. Child processes inherit the environment, so the file counts only
    /// if the PID is that of this process.
    const DesktopEntry* launched() const {
        const auto file = variable(process.environment, "GIO_LAUNCHED_DESKTOP_FILE=");
        const auto pid = variable(process.environment, "GIO_LAUNCHED_DESKTOP_FILE_PID=");
        if (file.empty() || process.pid <= 0 || pid != std::to_string(process.pid))
            return nullptr;
        const auto* entry = entries.ofFile(std::string(file));
        return entry && contradicted(*entry) ? nullptr : entry;
    }

    /// Returns whether the window fits another entry and not this one. For example, a browser that was
    /// started for a web application opens ordinary windows too.
    bool contradicted(const DesktopEntry& entry) const {
        if (entry.startupWmClass.empty() || sameText(entry.startupWmClass, window.name) ||
            sameText(entry.startupWmClass, window.instance))
            return false;
        return byWindow() != nullptr;
    }

    const DesktopEntry* byWindow() const {
        if (const auto* entry = entries.withId(window.gtkApplicationId); entry && mayRunHere(*entry))
            return entry;
        const std::array<const List*, 4> candidates = {
            &entries.withStartupWmClass(window.name), &entries.withStartupWmClass(window.instance),
            &entries.withIdIgnoringCase(window.name), &entries.withLastIdPart(window.name)};
        for (const auto* list : candidates) {
            if (const auto* entry = bestHere(*list))
                return entry;
        }
        const auto executable = std::string(baseName(process.executable));
        for (const auto& program : {window.name, window.instance, executable}) {
            if (const auto* entry = byProgram(program))
                return entry;
        }
        return nullptr;
    }

    /// Finds an entry by its program. Leaves out programs that run in a terminal, because their windows
    /// belong to the terminal.
    const DesktopEntry* byProgram(const std::string& program) const {
        List list = entries.withProgram(program);
        std::erase_if(list, [](const auto* entry) { return entry->inTerminal; });
        return bestHere(list);
    }

    const DesktopEntry* bestHere(List list) const {
        std::erase_if(list,
                      [this](const auto* entry) { return !mayRunHere(*entry) || entry->isWebApplication; });
        return best(list, [this](const DesktopEntry& entry) {
            return sameText(entry.program, baseName(process.executable)) || sameText(entry.id, entry.program);
        });
    }

    /// Returns whether the process can belong to the entry. If the executable can be read, the process is in
    /// no sandbox. The entry of a sandboxed application does not fit then.
    bool mayRunHere(const DesktopEntry& entry) const {
        return entry.sandbox == Sandbox::none || process.executable.empty();
    }

    /// Returns the best of several entries that fit. Entries that menus show come before hidden ones, such as
    /// handlers of links. Among equals, an entry for which `preferred` returns true comes first, then the
    /// earlier entry.
    template <typename Preferred> static const DesktopEntry* best(const List& list, Preferred preferred) {
        const auto rank = [&](const DesktopEntry* entry) {
            return (entry->shown ? 2 : 0) + (preferred(*entry) ? 1 : 0);
        };
        const auto found =
            std::max_element(list.begin(), list.end(),
                             [&](const auto* one, const auto* other) { return rank(one) < rank(other); });
        return found == list.end() ? nullptr : *found;
    }

    static void append(List& list, const List& more) { list.insert(list.end(), more.begin(), more.end()); }

    const WindowClass& window;
    const ProcessFacts& process;
    const DesktopEntries& entries;
};

} // namespace

std::string flatpakOf(const ProcessFacts& process) {
    // Only the first "name=" of the group [Application] counts. The file is not parsed as a whole, because a
    // process can put any file there.
    const std::string_view info = process.flatpakInfo;
    const auto groupStart = info.find("[Application]\n");
    const auto group = groupStart == std::string_view::npos ? std::string_view() : info.substr(groupStart);
    if (const auto at = group.substr(0, group.find("\n[")).find("\nname="); at != std::string_view::npos) {
        const auto value = group.substr(at + 6);
        return std::string(value.substr(0, value.find('\n')));
    }
    std::string id;
    eachGroupName(process.cgroup, [&id](std::string_view name) {
        constexpr std::string_view prefix = "app-flatpak-", suffix = ".scope";
        if (!name.starts_with(prefix) || !name.ends_with(suffix))
            return false;
        name = name.substr(prefix.size(), name.size() - prefix.size() - suffix.size());
        const auto number = name.rfind('-');
        if (number != std::string_view::npos)
            id = unescaped(name.substr(0, number));
        return !id.empty();
    });
    return id;
}

SnapApplication snapOf(const ProcessFacts& process) {
    SnapApplication result;
    eachGroupName(process.cgroup, [&result](std::string_view name) {
        constexpr std::string_view prefix = "snap.";
        if (!name.starts_with(prefix))
            return false;
        // The control group of a snap is named snap.NAME.APP.service, snap.NAME.APP.UUID.scope, or in newer
        // versions snap.NAME.APP-UUID.scope.
        name.remove_prefix(prefix.size());
        const auto dot = name.find('.');
        const auto rest = dot == std::string_view::npos ? std::string_view() : name.substr(dot + 1);
        const auto end = rest.find('.');
        if (end == std::string_view::npos)
            return false;
        auto application = unescaped(rest.substr(0, end));
        constexpr std::size_t uuid = 36;
        if (application.size() > uuid + 1 && application[application.size() - uuid - 1] == '-' &&
            rest.substr(end) == ".scope")
            application.resize(application.size() - uuid - 1);
        result = {unescaped(name.substr(0, dot)), std::move(application)};
        return true;
    });
    return result;
}

const DesktopEntry* entryOfWindow(const WindowClass& window, const ProcessFacts& process,
                                  const DesktopEntries& entries) {
    return Search(window, process, entries).run();
}

} // namespace mirrolet::platform::desktop
