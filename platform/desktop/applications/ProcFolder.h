#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace mirrolet::platform::desktop {

/// What the kernel tells of a process, as far as it helps to find its application. What may not be read
/// (another user's process) is empty.
struct ProcessFacts {
    std::int32_t pid = 0;    ///< 0 for a client on another machine.
    std::string name;        ///< As the kernel calls it, cut to 15 bytes.
    std::string executable;  ///< Path of the program, as the process sees it.
    std::string flatpakInfo; ///< Content of the sandbox's own description.
    std::string cgroup;
    std::string environment; ///< NAME=value, each ended by a NUL.
};

/// When the process started, from the text of its `stat`, in ticks since boot.
std::optional<std::uint64_t> startTimeIn(std::string_view stat);

/// Reads processes from /proc. Stateless; any thread.
class ProcFolder {
  public:
    explicit ProcFolder(std::string folder = "/proc") : folder(std::move(folder)) {}
    /// None if there is no such process. Together with the number it tells a process from a later one of that
    /// number.
    [[nodiscard]] std::optional<std::uint64_t> startTime(std::int32_t pid) const;
    [[nodiscard]] ProcessFacts facts(std::int32_t pid) const;

  private:
    [[nodiscard]] std::string text(std::int32_t pid, const char* file) const;
    std::string folder;
};

} // namespace mirrolet::platform::desktop
