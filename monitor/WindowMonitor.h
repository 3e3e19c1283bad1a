#pragma once

#include "monitor/DetectedWindowInfo.h"
#include "platform/dispatch/DispatchQueue.h"
#include "platform/dispatch/DispatchSourceTimer.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace mirrolet {

/// Polls the window list for a window to offer. Tells its owner when there is such a window, and when there
/// is none any more. Used on the main thread; only the polls run on the monitor's own queue. The owner calls
/// stop() before it releases the monitor.
class WindowMonitor : public std::enable_shared_from_this<WindowMonitor> {
  public:
    /// One window of a snapshot.
    struct InternalWindowInfo {
        platform::CGWindowID windowID = 0;
        platform::CGRect bounds; ///< Points, from the top-left of the desktop.
        std::string windowName;  ///< The title, or empty.
        std::string ownerName;
        std::int32_t ownerPID = 0;
        std::optional<std::string> bundleIdentifier;
    };

    static std::shared_ptr<WindowMonitor> make();

    /// Both callbacks run on the main thread, each at most once more after stop(). Both must be set before
    /// start(), because the polls read them on their queue.
    std::function<void(const DetectedWindowInfo&)> onCallDetected;
    std::function<void()> onCallEnded;

    /// Polls at once, and then at the interval that the settings give. Does nothing if monitoring is on.
    void start();
    /// Ends monitoring, and with it the call that was reported.
    void stop();
    /// Polls at the interval that the settings give now, if monitoring is on. The call that was reported goes
    /// on.
    void restartIfMonitoring();
    [[nodiscard]] bool isMonitoring() const { return monitoring; }

    // The searches keep no state. Any thread may run them.
    /// Returns the windows of other programs, front to back, without small ones.
    static std::vector<InternalWindowInfo> currentWindows();
    static std::optional<DetectedWindowInfo> largestWindow(const std::vector<InternalWindowInfo>& windows);
    /// Returns the largest window of the frontmost application, or the largest window of all if that
    /// application has none.
    static std::optional<DetectedWindowInfo>
    largestFrontmostWindow(const std::vector<InternalWindowInfo>& windows);
    /// Returns the window that is most likely a call, among windows of the one known messenger.
    static std::optional<DetectedWindowInfo> likelyCallWindow(const std::vector<InternalWindowInfo>& windows);
    static std::optional<DetectedWindowInfo> candidateForAllWindows();
    static std::optional<DetectedWindowInfo> candidateForSpecificApps(const std::set<std::string>& selected);

  private:
    WindowMonitor();
    void poll();
    void cancelTimer();

    std::shared_ptr<platform::DispatchSourceTimer> timer; ///< Set only while monitoring is on.
    platform::DispatchQueue queue;
    /// True between a detection and its end. The polls and stop() set it.
    std::atomic<bool> isCallActive = false;
    bool monitoring = false;
};

} // namespace mirrolet
