#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <sys/types.h>

namespace mirrolet::bench {

/// Milliseconds that all threads of a process have run up to now. The scheduler's own count: exact, where the
/// ticks of /proc/PID/stat miss whatever sleeps before the tick. Threads that have ended are not in it.
inline double processorTime(pid_t process) {
    double nanoseconds = 0;
    std::error_code gone;
    const auto tasks = "/proc/" + std::to_string(process) + "/task";
    for (const auto& task : std::filesystem::directory_iterator(tasks, gone)) {
        double running = 0;
        std::ifstream(task.path() / "schedstat") >> running;
        nanoseconds += running;
    }
    return nanoseconds / 1e6;
}

/// How often the threads of a process have gone to sleep up to now, and so how often something woke them.
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

/// The most memory that a process ever had resident, in MB of 1024 kB.
inline double peakMemory(pid_t process) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string word; status >> word;)
        if (double kilobytes = 0; word == "VmHWM:" && status >> kilobytes)
            return kilobytes / 1024;
    return 0;
}

} // namespace mirrolet::bench
