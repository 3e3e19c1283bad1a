#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <sys/types.h>

namespace mirrolet::harness {

/// Returns how many milliseconds of processor time the running threads of a process have used so far. Leaves
/// out threads that have ended. Reads the nanoseconds that the scheduler counts, because the steps of 10 ms
/// in /proc/PID/stat are too coarse.
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

} // namespace mirrolet::harness
