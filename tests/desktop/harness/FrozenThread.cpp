#include "tests/desktop/harness/FrozenThread.h"

#include "tests/desktop/harness/Sandbox.h"

#include <filesystem>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>

namespace mirrolet::harness {

namespace {

bool opensAFile(pid_t thread) {
    __ptrace_syscall_info call{};
    return ptrace(PTRACE_GET_SYSCALL_INFO, thread, sizeof call, &call) > 0 &&
           call.op == PTRACE_SYSCALL_INFO_ENTRY && call.entry.nr == SYS_openat;
}

} // namespace

std::unique_ptr<FrozenThread> FrozenThread::find(pid_t process, const std::string& name) {
    std::error_code error;
    const auto tasks = "/proc/" + std::to_string(process) + "/task";
    for (const auto& task : std::filesystem::directory_iterator(tasks, error)) {
        if (Sandbox::read(task.path() / "comm") != name + '\n')
            continue;
        const pid_t number = std::stoi(task.path().filename());
        if (ptrace(PTRACE_SEIZE, number, 0, PTRACE_O_TRACESYSGOOD) != 0)
            return nullptr;
        std::unique_ptr<FrozenThread> thread(new FrozenThread(number));
        if (ptrace(PTRACE_INTERRUPT, number, 0, 0) == 0 && thread->stopsAtOpen())
            return thread;
    }
    return nullptr;
}

FrozenThread::~FrozenThread() {
    if (thread != 0)
        ptrace(PTRACE_DETACH, thread, 0, 0);
}

bool FrozenThread::stopsAtOpen() {
    int status = 0;
    while (waitpid(thread, &status, __WALL) == thread && WIFSTOPPED(status)) {
        if (opensAFile(thread))
            return true;
        ptrace(PTRACE_SYSCALL, thread, 0, 0);
    }
    thread = 0;
    return false;
}

bool FrozenThread::hasEnded() {
    int status = 0;
    if (thread != 0 && waitpid(thread, &status, __WALL | WNOHANG) == thread && !WIFSTOPPED(status))
        thread = 0;
    return thread == 0;
}

} // namespace mirrolet::harness
