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

/// Polls the window list for a window to offer, and tells its owner when there is one and when there is none
/// any more. Belongs to the main thread; only the polls run on a queue of the monitor's own. The owner calls
/// stop() before it lets the monitor go.
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

    /// Called on the main thread, each at most once more after stop(). Both must be set before start(),
    /// because the polls read them on their queue.
    std::function<void(const DetectedWindowInfo&)> onCallDetected;
    std::function<void()> onCallEnded;

    /// Polls at once, and then at the interval that the settings give. Does nothing if monitoring is on.
    void start();
    /// Ends monitoring, and the call that was reported.
    void stop();
    /// Polls at the interval that the settings give now. The call that was reported goes on.
    void restartIfMonitoring();
    [[nodiscard]] bool isMonitoring() const { return monitoring; }

    // The searches keep no state and run on any thread.
    /// The windows of other programs, front to back, without small ones.
    static std::vector<InternalWindowInfo> currentWindows();
    static std::optional<DetectedWindowInfo> largestWindow(const std::vector<InternalWindowInfo>& windows);
    /// The largest window of the frontmost application. If it has none, the largest window of all.
    static std::optional<DetectedWindowInfo>
    largestFrontmostWindow(const std::vector<InternalWindowInfo>& windows);
    /// The window that is most likely a call, among windows of the one known messenger.
    static std::optional<DetectedWindowInfo> likelyCallWindow(const std::vector<InternalWindowInfo>& windows);
    static std::optional<DetectedWindowInfo> candidateForAllWindows();
    static std::optional<DetectedWindowInfo> candidateForSpecificApps(const std::set<std::string>& selected);

  private:
    WindowMonitor();
    void poll();
    void cancelTimer();

    std::shared_ptr<platform::DispatchSourceTimer> timer; ///< Only while monitoring.
    platform::DispatchQueue queue;
    /// True between a detection and its end. The polls and stop() set it.
    std::atomic<bool> isCallActive = false;
    bool monitoring = false;
};

} // namespace mirrolet
