#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <sys/types.h>

namespace mirrolet::harness {

/// Returns the milliseconds that the threads of a process have run up to now, without threads that have
/// ended. Reads the scheduler's own count, because the ticks of /proc/PID/stat would miss a thread that
/// sleeps before the tick.
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

/// Returns how often the threads of a process have gone to sleep up to now, which is how often they were
/// woken.
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

/// Returns the peak resident memory of a process, in MB of 1024 kB.
inline double peakMemory(pid_t process) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string word; status >> word;)
        if (double kilobytes = 0; word == "VmHWM:" && status >> kilobytes)
            return kilobytes / 1024;
    return 0;
}

} // namespace mirrolet::harness
