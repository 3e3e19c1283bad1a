#pragma once

#include <memory>

namespace mirrolet::platform {

/// Told of the application's start and end. Main thread.
class NSApplicationDelegate {
  public:
    virtual ~NSApplicationDelegate() = default;
    virtual void applicationDidFinishLaunching() = 0;
    virtual void applicationWillTerminate() = 0;
    /// The user has started the program once more while it runs.
    virtual void applicationShouldHandleReopen() = 0;
};

/// The application object: Qt, the event loop, start and end. One per process, made by main(). Main thread
/// where nothing else is said.
class NSApplication {
  public:
    enum class ActivationPolicy { regular = 0, accessory = 1 };

    /// Takes Qt's own options out of the arguments, which must outlive this object. The process's desktop is
    /// set already.
    NSApplication(int& argc, char** argv);
    ~NSApplication();
    NSApplication(const NSApplication&) = delete;
    NSApplication& operator=(const NSApplication&) = delete;

    /// The process's application object; stops the program if there is none.
    static NSApplication& shared();

    void setDelegate(std::weak_ptr<NSApplicationDelegate> delegate);
    /// Brings the program's ordinary windows to the front of the other programs'.
    void activateIgnoringOtherApps();
    /// Tells the delegate, and makes run() return.
    void terminate();

    /// The program was started once more: tells the delegate.
    void reopen();

    /// Runs the event loop; the delegate has finished launching before the first event. SIGTERM, SIGINT and
    /// SIGHUP end it as terminate() does. Then writes the user defaults, however long that takes, and waits
    /// a bounded time for the tasks of all queues. Returns the exit status; if a task still runs, the process
    /// ends at once with that status.
    int run();

    /// Ends the process with a failing status because the window server is gone, after one line that says so
    /// and after the user defaults were written. Any thread; does not return.
    [[noreturn]] static void serverLost();

    // Kept for those who set it, and without effect on this desktop, whose task lists show windows and not
    // applications.
    void setActivationPolicy(ActivationPolicy /*policy*/) {}

  private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace mirrolet::platform
