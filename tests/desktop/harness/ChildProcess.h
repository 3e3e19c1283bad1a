#pragma once

#include "tests/desktop/harness/Sandbox.h"
#include "tests/desktop/harness/Wait.h"

#include <filesystem>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace mirrolet::harness {

/// One process that the test started. The destructor ends the process and its children. The process and its
/// children also end when the test program ends, however that happens. Only the thread that made an object
/// may use it.
class ChildProcess {
  public:
    struct Options {
        std::vector<std::string> command = {}; ///< The program, looked up on PATH, and its arguments.
        Environment environment = {};          ///< The whole environment. None is inherited.
        /// Gets standard error, and standard output unless that is piped. The default is to drop both.
        std::filesystem::path log = {};
        bool pipeInput = false;  ///< Is needed for write().
        bool pipeOutput = false; ///< Is needed for lines().
        int keptDescriptor = -1; ///< Stays open in the child, with the same number.
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
    /// Returns the whole lines on standard output until now.
    const std::vector<std::string>& lines();
    /// Returns the exit status as in a shell, which is 128 plus the signal's number after a signal. Returns
    /// nothing if the process still runs after the wait.
    std::optional<int> waitForExit(std::chrono::milliseconds deadline = patience);
    /// Asks the process to end, then kills the rest of its process group. A second call does nothing.
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

/// Throws HarnessError with the name of the Debian package if the program is not on PATH.
void requireProgram(const std::string& program, const std::string& package);

} // namespace mirrolet::harness
