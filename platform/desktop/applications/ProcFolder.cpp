#include "platform/desktop/applications/ProcFolder.h"

#include "platform/foundation/RegularFile.h"

#include <charconv>
#include <cstddef>
#include <filesystem>
#include <system_error>

namespace mirrolet::platform::desktop {

namespace {

constexpr std::size_t mostBytes = 1 << 20;

} // namespace

std::optional<std::uint64_t> startTimeIn(std::string_view stat) {
    // Field 2 of `stat` is the process name in parentheses. The name can itself contain spaces and
    // parentheses, so fields are counted from the last closing parenthesis. Field 3 begins behind that
    // parenthesis. The start time is field 22.
    const auto nameEnd = stat.rfind(')');
    if (nameEnd == std::string_view::npos)
        return std::nullopt;
    stat.remove_prefix(nameEnd + 1);
    for (int field = 3; field <= 22; ++field) {
        const auto start = stat.find(' ');
        if (start == std::string_view::npos)
            return std::nullopt;
        stat.remove_prefix(start + 1);
    }
    std::uint64_t time = 0;
    const auto result = std::from_chars(stat.data(), stat.data() + stat.size(), time);
    return result.ec == std::errc() ? std::optional(time) : std::nullopt;
}

std::string ProcFolder::text(std::int32_t pid, const char* file) const {
    return readRegularFile(folder + '/' + std::to_string(pid) + '/' + file, mostBytes)
        .value_or(std::string());
}

std::optional<std::uint64_t> ProcFolder::startTime(std::int32_t pid) const {
    return pid > 0 ? startTimeIn(text(pid, "stat")) : std::nullopt;
}

ProcessFacts ProcFolder::facts(std::int32_t pid) const {
    ProcessFacts facts;
    facts.pid = pid;
    if (pid <= 0)
        return facts;
    facts.name = text(pid, "comm");
    if (facts.name.ends_with('\n'))
        facts.name.pop_back();
    facts.cgroup = text(pid, "cgroup");
    facts.environment = text(pid, "environ");
    facts.flatpakInfo = text(pid, "root/.flatpak-info");
    std::error_code error;
    facts.executable =
        std::filesystem::read_symlink(folder + '/' + std::to_string(pid) + "/exe", error).string();
    return facts;
}

} // namespace mirrolet::platform::desktop
