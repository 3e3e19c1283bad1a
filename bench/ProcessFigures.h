#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <sys/types.h>

namespace mirrolet::harness {

/// Returns how often the running threads of a process have been woken so far. Counts how often they have gone
/// to sleep, which is the same number.
inline double wakeUps(pid_t process) {
    double count = 0;
    std::error_code gone;
    const auto tasks = "/proc/" + std::to_string(process) + "/task";
    for (const auto& task : std::filesystem::directory_iterator(tasks, gone)) {
        std::ifstream status(task.path() / "status");
        for (std::string word; status >> word;)
            if (double switches = 0; word == "voluntary_ctxt_switches:" && status >> switches)
                count += switches;
    }
    return count;
}

/// Returns the highest resident memory that a process has had so far, in MB of 1024 kB.
inline double peakMemory(pid_t process) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string word; status >> word;)
        if (double kilobytes = 0; word == "VmHWM:" && status >> kilobytes)
            return kilobytes / 1024;
    return 0;
}

} // namespace mirrolet::harness
