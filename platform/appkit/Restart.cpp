#include "platform/appkit/Restart.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <unistd.h>

namespace mirrolet::platform {

namespace {
constexpr auto restartedVariable = "MIRROLET_RESTARTED";
}

void restartProgram() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error)
        return;
    // A thread may block signals, and the new run would block them too.
    sigset_t none;
    sigemptyset(&none);
    pthread_sigmask(SIG_SETMASK, &none, nullptr);
    setenv(restartedVariable, "1", 1); // NOLINT: every other thread ends with the next call.
    execl(program.c_str(), program.filename().c_str(), nullptr);
}

bool takeRestarted() {
    const bool restarted = std::getenv(restartedVariable) != nullptr;
    unsetenv(restartedVariable);
    return restarted;
}

} // namespace mirrolet::platform
