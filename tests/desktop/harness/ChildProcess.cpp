#include "tests/desktop/harness/ChildProcess.h"

#include "tests/desktop/harness/HarnessError.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sstream>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace mirrolet::harness {

namespace {

struct Pipe {
    std::array<int, 2> ends{-1, -1};

    explicit Pipe(bool wanted = true) {
        if (wanted && pipe2(ends.data(), O_CLOEXEC) != 0)
            throw HarnessError(std::string("pipe: ") + std::strerror(errno));
    }
    ~Pipe() {
        for (const int end : ends)
            if (end >= 0)
                close(end);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    [[nodiscard]] int readEnd() const { return ends[0]; }
    [[nodiscard]] int writeEnd() const { return ends[1]; }
    int takeReadEnd() { return std::exchange(ends[0], -1); }
    int takeWriteEnd() { return std::exchange(ends[1], -1); }
    void closeWriteEnd() { close(takeWriteEnd()); }
};

std::vector<char*> pointersTo(std::vector<std::string>& strings) {
    std::vector<char*> pointers;
    pointers.reserve(strings.size() + 1);
    for (std::string& string : strings)
        pointers.push_back(string.data());
    pointers.push_back(nullptr);
    return pointers;
}

/// Runs in the child process between fork() and exec(), so it makes only async-signal-safe calls.
struct Launch {
    int input, output, error, keptDescriptor, failure;
    pid_t parent;
    char* const* arguments;
    char* const* environment;

    [[noreturn]] void run() const {
        setpgid(0, 0);
        // Asks the kernel to kill the child when the parent ends. The parent may have ended before this call,
        // so the child then checks that its parent is still the same process.
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent)
            _exit(127);
        dup2(input, STDIN_FILENO);
        dup2(output, STDOUT_FILENO);
        dup2(error, STDERR_FILENO);
        if (keptDescriptor >= 0)
            fcntl(keptDescriptor, F_SETFD, 0);
        sigset_t none;
        sigemptyset(&none);
        sigprocmask(SIG_SETMASK, &none, nullptr);
        execvpe(arguments[0], arguments, environment);
        const int reason = errno;
        if (::write(failure, &reason, sizeof reason) < 0)
            _exit(126);
        _exit(127);
    }
};

int openLog(const std::filesystem::path& log) {
    const char* file = log.empty() ? "/dev/null" : log.c_str();
    return open(file, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
}

} // namespace

ChildProcess::ChildProcess(const Options& options) {
    Pipe in(options.pipeInput);
    Pipe out(options.pipeOutput);
    Pipe failure;
    const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
    const int log = openLog(options.log);
    std::vector<std::string> arguments = options.command;
    std::vector<std::string> variables;
    for (const auto& [name, value] : options.environment)
        variables.push_back(name + "=" + value);
    const auto argumentPointers = pointersTo(arguments);
    const auto variablePointers = pointersTo(variables);
    const Launch launch{options.pipeInput ? in.readEnd() : nothing,
                        options.pipeOutput ? out.writeEnd() : log,
                        log,
                        options.keptDescriptor,
                        failure.writeEnd(),
                        getpid(),
                        argumentPointers.data(),
                        variablePointers.data()};
    process = fork();
    if (process == 0)
        launch.run();
    close(nothing);
    close(log);
    failure.closeWriteEnd();
    int reason = 0;
    if (process < 0 || read(failure.readEnd(), &reason, sizeof reason) > 0) {
        waitForExit();
        throw HarnessError("cannot start " + options.command.front() + ": " + std::strerror(reason));
    }
    if (options.pipeInput)
        input = in.takeWriteEnd();
    if (options.pipeOutput) {
        output = out.takeReadEnd();
        fcntl(output, F_SETFL, O_NONBLOCK);
    }
}

ChildProcess::~ChildProcess() {
    stop();
    for (const int end : {input, output})
        if (end >= 0)
            close(end);
}

bool ChildProcess::running() {
    if (status || process < 0)
        return false;
    int raw = 0;
    if (waitpid(process, &raw, WNOHANG) == process)
        status = WIFSIGNALED(raw) ? 128 + WTERMSIG(raw) : WEXITSTATUS(raw);
    return !status;
}

void ChildProcess::signal(int number) const {
    if (!status && process > 0)
        ::kill(process, number);
}

void ChildProcess::write(const std::string& text) const {
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t count = ::write(input, text.data() + done, text.size() - done);
        if (count < 0 && errno != EINTR)
            throw HarnessError(std::string("cannot write to a child: ") + std::strerror(errno));
        done += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
}

const std::vector<std::string>& ChildProcess::lines() {
    drainOutput();
    for (auto end = partial.find('\n'); end != std::string::npos; end = partial.find('\n')) {
        complete.push_back(partial.substr(0, end));
        partial.erase(0, end + 1);
    }
    return complete;
}

void ChildProcess::drainOutput() {
    std::array<char, 4096> block{};
    for (;;) {
        const ssize_t count = output < 0 ? 0 : read(output, block.data(), block.size());
        if (count <= 0)
            return;
        partial.append(block.data(), static_cast<std::size_t>(count));
    }
}

std::optional<int> ChildProcess::waitForExit(std::chrono::milliseconds deadline) {
    waitUntil([this] { return !running(); }, deadline);
    return status;
}

void ChildProcess::stop() {
    if (process <= 0)
        return;
    if (running()) {
        signal(SIGTERM);
        waitForExit(std::chrono::seconds(5));
    }
    ::kill(-process, SIGKILL);
    waitForExit();
    process = -1;
}

bool isInstalled(const std::string& program) {
    const char* path = std::getenv("PATH");
    std::istringstream folders(path == nullptr ? "/usr/bin:/bin" : path);
    for (std::string folder; std::getline(folders, folder, ':');)
        if (access((folder + "/" + program).c_str(), X_OK) == 0)
            return true;
    return false;
}

void requireProgram(const std::string& program, const std::string& package) {
    if (!isInstalled(program))
        throw HarnessError(program + " is missing: install the Debian package " + package);
}

} // namespace mirrolet::harness
