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

} // namespace mirrolet::bench
