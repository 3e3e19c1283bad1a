#pragma once

#include <memory>

namespace mirrolet::platform {

/// An object that is told when the application starts and ends. Main thread.
class NSApplicationDelegate {
  public:
    virtual ~NSApplicationDelegate() = default;
    virtual void applicationDidFinishLaunching() = 0;
    virtual void applicationWillTerminate() = 0;
    /// Called when the user has started the program once more while the program runs.
    virtual void applicationShouldHandleReopen() = 0;
};

/// The application object, which sets up Qt, runs the event loop and ends the program. main() makes one per
/// process. Unless a comment says otherwise, for the main thread only.
class NSApplication {
  public:
    enum class ActivationPolicy { regular = 0, accessory = 1 };

    /// Qt removes its own options from the arguments. The arguments must outlive this object. Call
    /// desktop::Desktop::setCurrent() before making the object.
    NSApplication(int& argc, char** argv);
    ~NSApplication();
    NSApplication(const NSApplication&) = delete;
    NSApplication& operator=(const NSApplication&) = delete;

    /// Returns the process's application object. Aborts the program if there is none.
    static NSApplication& shared();

    void setDelegate(std::weak_ptr<NSApplicationDelegate> delegate);
    /// Brings the program's ordinary windows in front of the windows of other programs.
    void activateIgnoringOtherApps();
    /// Tells the delegate that the program ends, and makes run() return.
    void terminate();

    /// Tells the delegate that the program was started once more.
    void reopen();

    /// Runs the event loop until terminate(), SIGTERM, SIGINT or SIGHUP. Before the first event, calls the
    /// delegate's applicationDidFinishLaunching(). After the last event, writes the user defaults, however
    /// long that takes, and waits a bounded time for the tasks of all queues. Returns the exit status. If a
    /// task still runs, ends the process at once with that status instead.
    int run();

    /// Ends the process with a failing status because the connection to the window server is lost. First logs
    /// one line and writes the user defaults. Any thread. Does not return.
    [[noreturn]] static void serverLost();

    // Has no effect, because task lists on this desktop show windows and not applications. Kept for callers
    // that set a policy.
    void setActivationPolicy(ActivationPolicy /*policy*/) {}

  private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace mirrolet::platform
