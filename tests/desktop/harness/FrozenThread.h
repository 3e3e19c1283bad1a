#pragma once

#include <memory>
#include <string>
#include <sys/types.h>

namespace mirrolet::harness {

/// Stops one thread of a child process when the thread opens a file, as if the file were on a dead network
/// mount. The other threads run on, and the process can be killed. Only the thread that called find() may use
/// the object, because ptrace requires it.
class FrozenThread {
  public:
    /// Waits until the thread of this name opens a file, and stops the thread there. Returns nullptr if the
    /// process has no such thread, or if the thread ends before it opens a file.
    static std::unique_ptr<FrozenThread> find(pid_t process, const std::string& name);
    /// Lets the thread run on.
    ~FrozenThread();
    FrozenThread(const FrozenThread&) = delete;
    FrozenThread& operator=(const FrozenThread&) = delete;

    /// Returns whether the thread has ended. A caller that waits for the end of the process must call this
    /// function until it returns true. The kernel does not report that end earlier, because this function
    /// collects the end of the traced thread.
    [[nodiscard]] bool hasEnded();

  private:
    explicit FrozenThread(pid_t thread) : thread(thread) {}
    bool stopsAtOpen();

    pid_t thread; ///< The thread's id, or 0 once the thread has ended.
};

} // namespace mirrolet::harness
