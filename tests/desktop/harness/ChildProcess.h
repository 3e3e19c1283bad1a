#pragma once

#include "tests/desktop/harness/Sandbox.h"
#include "tests/desktop/harness/Wait.h"

#include <filesystem>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace mirrolet::harness {

/// Starts and owns one process. The destructor ends the process and its children. The process and its
/// children also end when the test program ends, even if the test program crashes. Only the thread that made
/// a ChildProcess may use it.
class ChildProcess {
  public:
    struct Options {
        std::vector<std::string> command = {}; ///< The program's name, looked up on PATH, and its arguments.
        Environment environment = {};          ///< The process inherits no other variables.
        /// The file that receives standard error, and also standard output unless `pipeOutput` is set.
        /// Without a file the output is discarded.
        std::filesystem::path log = {};
        bool pipeInput = false;  ///< Must be set if the test calls write().
        bool pipeOutput = false; ///< Must be set if the test calls lines().
        int keptDescriptor = -1; ///< A descriptor that stays open in the process, or -1.
    };

    /// Throws HarnessError if the program cannot be started.
    explicit ChildProcess(const Options& options);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    [[nodiscard]] pid_t pid() const { return process; }
    [[nodiscard]] bool running();
    void signal(int number) const;
    void write(const std::string& text) const;
    /// Returns all complete lines that the process has written to standard output so far.
    const std::vector<std::string>& lines();
    /// Returns the exit status as a shell shows it. After a signal the status is 128 plus the signal's
    /// number. Returns nothing if the process still runs when the deadline passes.
    std::optional<int> waitForExit(std::chrono::milliseconds deadline = patience);
    /// Asks the process to end, waits for its end, and kills the processes that are left in its process
    /// group. A second call does nothing.
    void stop();

  private:
    void drainOutput();

    pid_t process = -1;
    std::optional<int> status;
    int input = -1;
    int output = -1;
    std::string partial;
    std::vector<std::string> complete;
};

/// Returns whether the program is on PATH.
bool isInstalled(const std::string& program);

/// Throws HarnessError with the name of the Debian package if the program is not on PATH.
void requireProgram(const std::string& program, const std::string& package);

} // namespace mirrolet::harness
