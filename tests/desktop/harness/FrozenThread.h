#pragma once

#include <memory>
#include <string>
#include <sys/types.h>

namespace mirrolet::harness {

/// One thread of a child process that is stopped in the call that opens a file, as it would be on a dead
/// network mount. The other threads run on, and the process can be killed. Only the thread that made an
/// object may use it.
class FrozenThread {
  public:
    /// Freezes the thread of this name when it opens its next file. Returns nullptr if there is no such
    /// thread, or if the thread ended before.
    static std::unique_ptr<FrozenThread> find(pid_t process, const std::string& name);
    /// Lets the thread run on.
    ~FrozenThread();
    FrozenThread(const FrozenThread&) = delete;
    FrozenThread& operator=(const FrozenThread&) = delete;

    /// Returns whether the process has ended the thread. The end of the process itself can be seen only after
    /// this call.
    [[nodiscard]] bool hasEnded();

  private:
    explicit FrozenThread(pid_t thread) : thread(thread) {}
    bool stopsAtOpen();

    pid_t thread; ///< Is 0 once the thread has ended.
};

} // namespace mirrolet::harness
