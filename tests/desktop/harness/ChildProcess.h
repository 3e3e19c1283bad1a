#pragma once

#include "tests/desktop/harness/Sandbox.h"
#include "tests/desktop/harness/Wait.h"

#include <filesystem>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace mirrolet::harness {

/// One process that the test started. It and all that it started end with the object, and with the test
/// program however that ends. Use it from one thread, the one that made it.
class ChildProcess {
  public:
    struct Options {
        std::vector<std::string> command = {}; ///< The program, looked up on PATH, and its arguments.
        Environment environment = {};          ///< All of it; nothing is inherited.
        std::filesystem::path log =
            {};                  ///< Takes standard error, and standard output unless piped; else dropped.
        bool pipeInput = false;  ///< For write().
        bool pipeOutput = false; ///< For lines().
        int keptDescriptor = -1; ///< Stays open in the child under the same number.
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
    /// Every whole line that standard output has given until now.
    const std::vector<std::string>& lines();
    /// As a shell gives it: the exit status, or 128 plus the signal's number. Nothing when it still runs
    /// then.
    std::optional<int> waitForExit(std::chrono::milliseconds deadline = patience);
    /// Asks it to end, then kills what is left of its process group. Does nothing the second time.
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

/// Throws HarnessError that names the Debian package if the program is not on PATH.
void requireProgram(const std::string& program, const std::string& package);

} // namespace mirrolet::harness
