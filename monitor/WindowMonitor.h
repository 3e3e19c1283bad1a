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

/// Polls the window list for a window that can be offered to the user. Calls onCallDetected when there is
/// such a window, and onCallEnded when there is none any more. Used on the main thread; only the polls run on
/// the monitor's own queue. The owner calls stop() before releasing the monitor.
class WindowMonitor : public std::enable_shared_from_this<WindowMonitor> {
  public:
    /// Describes one window of the window list, as it was when the list was read.
    struct InternalWindowInfo {
        platform::CGWindowID windowID = 0;
        platform::CGRect bounds; ///< In points from the desktop's top-left corner.
        std::string windowName;  ///< The window's title, which may be empty.
        std::string ownerName;
        std::int32_t ownerPID = 0;
        std::optional<std::string> bundleIdentifier;
    };

    static std::shared_ptr<WindowMonitor> make();

    /// Both callbacks run on the main thread. After stop(), each runs at most once more, because a run may
    /// have been posted already. Both must be set before start(), because the polls read them on the
    /// monitor's queue.
    std::function<void(const DetectedWindowInfo&)> onCallDetected;
    std::function<void()> onCallEnded;

    /// Polls at once, and then at the interval of the settings. Does nothing if monitoring is on.
    void start();
    /// Stops polling. If a video call was detected and has not ended, calls onCallEnded.
    void stop();
    /// If monitoring is on, starts polling again with the present interval of the settings. Does not call
    /// onCallEnded.
    void restartIfMonitoring();
    [[nodiscard]] bool isMonitoring() const { return monitoring; }

    // Any thread may call the functions below, because they use no member variable.
    /// Returns the windows of other programs from front to back. Leaves out windows that are less than 100
    /// points wide or high.
    static std::vector<InternalWindowInfo> currentWindows();
    static std::optional<DetectedWindowInfo> largestWindow(const std::vector<InternalWindowInfo>& windows);
    /// Returns the largest window of the frontmost application. If that application has no window in the
    /// list, returns the largest window of the list.
    static std::optional<DetectedWindowInfo>
    largestFrontmostWindow(const std::vector<InternalWindowInfo>& windows);
    /// Returns the window that most likely shows a video call. `windows` contains only the windows of the
    /// messenger application.
    static std::optional<DetectedWindowInfo> likelyCallWindow(const std::vector<InternalWindowInfo>& windows);
    static std::optional<DetectedWindowInfo> candidateForAllWindows();
    static std::optional<DetectedWindowInfo> candidateForSpecificApps(const std::set<std::string>& selected);

  private:
    WindowMonitor();
    void poll();
    void cancelTimer();

    std::shared_ptr<platform::DispatchSourceTimer> timer; ///< Set only while monitoring is on.
    platform::DispatchQueue queue;
    /// True from the poll that finds a candidate until a poll finds none, or until stop().
    std::atomic<bool> isCallActive = false;
    bool monitoring = false;
};

} // namespace mirrolet
