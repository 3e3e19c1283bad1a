#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace mirrolet::platform::desktop {

/// The facts about a process that help to find its application. A fact that may not be read is empty, for
/// example if the process belongs to another user.
struct ProcessFacts {
    std::int32_t pid = 0;    ///< 0 for a client on another machine.
    std::string name;        ///< The kernel's name of the process, cut to 15 bytes.
    std::string executable;  ///< Path of the program, as the process sees it.
    std::string flatpakInfo; ///< Content of the file in which a Flatpak sandbox describes itself.
    std::string cgroup;
    std::string environment; ///< Texts NAME=value, each ended by a NUL.
};

/// Returns the start of a process in ticks since boot, from the text of its `stat` file.
std::optional<std::uint64_t> startTimeIn(std::string_view stat);

/// Reads processes from /proc. May be used by any thread.
class ProcFolder {
  public:
    explicit ProcFolder(std::string folder = "/proc") : folder(std::move(folder)) {}
    /// Returns when the process started, in ticks since boot. Returns none if there is no such process. The
    /// kernel reuses process IDs, so only the ID and the start time together identify a process.
    [[nodiscard]] std::optional<std::uint64_t> startTime(std::int32_t pid) const;
    [[nodiscard]] ProcessFacts facts(std::int32_t pid) const;

  private:
    [[nodiscard]] std::string text(std::int32_t pid, const char* file) const;
    std::string folder;
};

} // namespace mirrolet::platform::desktop
