#pragma once

#include <memory>
#include <string>
#include <sys/types.h>

namespace mirrolet::harness {

/// One thread of a child process that stays in the call that opens a file, as it would on a dead network
/// mount. The other threads run on, and the process can be killed. Use it from the thread that made it.
class FrozenThread {
  public:
    /// Freezes the thread of this name when it opens its next file. None if there is no such thread, or it
    /// ended before.
    static std::unique_ptr<FrozenThread> find(pid_t process, const std::string& name);
    /// Lets the thread run on.
    ~FrozenThread();
    FrozenThread(const FrozenThread&) = delete;
    FrozenThread& operator=(const FrozenThread&) = delete;

    /// Whether the process has ended the thread. Its own end shows only after this was asked.
    [[nodiscard]] bool hasEnded();

  private:
    explicit FrozenThread(pid_t thread) : thread(thread) {}
    bool stopsAtOpen();

    pid_t thread; ///< 0 once it ended.
};

} // namespace mirrolet::harness
