#pragma once

#include <memory>

namespace mirrolet::platform {

/// An object that is told of the application's start and end. Main thread.
class NSApplicationDelegate {
  public:
    virtual ~NSApplicationDelegate() = default;
    virtual void applicationDidFinishLaunching() = 0;
    virtual void applicationWillTerminate() = 0;
    /// Called when the user has started the program once more while the program runs.
    virtual void applicationShouldHandleReopen() = 0;
};

/// The application object, which sets up Qt, runs the event loop and ends the program. main() makes one per
/// process. Main thread where nothing else is said.
class NSApplication {
  public:
    enum class ActivationPolicy { regular = 0, accessory = 1 };

    /// Takes Qt's own options out of the arguments, which must outlive this object. The process's desktop
    /// must be set before.
    NSApplication(int& argc, char** argv);
    ~NSApplication();
    NSApplication(const NSApplication&) = delete;
    NSApplication& operator=(const NSApplication&) = delete;

    /// Returns the process's application object. Aborts the program if there is none.
    static NSApplication& shared();

    void setDelegate(std::weak_ptr<NSApplicationDelegate> delegate);
    /// Brings the program's ordinary windows in front of the windows of other programs.
    void activateIgnoringOtherApps();
    /// Tells the delegate, and makes run() return.
    void terminate();

    /// Tells the delegate that the program was started once more.
    void reopen();

    /// Runs the event loop. The delegate has finished launching before the first event. SIGTERM, SIGINT and
    /// SIGHUP end the event loop as terminate() does. Then writes the user defaults, however long that takes,
    /// and waits a bounded time for the tasks of all queues. Returns the exit status. If a task still runs,
    /// the process ends at once with that status instead.
    int run();

    /// Ends the process with a failing status because the window server is gone. First logs one line that
    /// says so and writes the user defaults. Any thread. Does not return.
    [[noreturn]] static void serverLost();

    // Has no effect, because task lists on this desktop show windows and not applications. Kept for callers
    // that set a policy.
    void setActivationPolicy(ActivationPolicy /*policy*/) {}

  private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace mirrolet::platform
