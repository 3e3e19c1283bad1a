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

/// Polls the window list for a window to offer, and tells its owner when one appears and when there is none
/// any more. Made, started, stopped and let go on the main thread; polls on its own queue. The owner stops it
/// before it lets it go.
class WindowMonitor : public std::enable_shared_from_this<WindowMonitor> {
  public:
    /// One window of a snapshot.
    struct InternalWindowInfo {
        platform::CGWindowID windowID = 0;
        platform::CGRect bounds; ///< Points, from the top-left of the desktop.
        std::string windowName;  ///< Empty without a title.
        std::string ownerName;
        std::int32_t ownerPID = 0;
        std::optional<std::string> bundleIdentifier;
    };

    static std::shared_ptr<WindowMonitor> make();

    /// Both are called on the main thread, and may be once more just after stop(). Set before start(): the
    /// poll reads them on its queue.
    std::function<void(const DetectedWindowInfo&)> onCallDetected;
    std::function<void()> onCallEnded;

    /// Polls at once and then at the interval of the settings. Does nothing while it is monitoring.
    void start();
    /// Ends monitoring, and a call that was reported.
    void stop();
    /// Takes up a changed interval; a call that was reported goes on.
    void restartIfMonitoring();
    [[nodiscard]] bool isMonitoring() const { return monitoring; }

    // The searches keep no state and may run on any thread.
    /// Front to back, without this program's own windows and small ones.
    static std::vector<InternalWindowInfo> currentWindows();
    static std::optional<DetectedWindowInfo> largestWindow(const std::vector<InternalWindowInfo>& windows);
    /// The largest of the frontmost application, else the largest of all.
    static std::optional<DetectedWindowInfo>
    largestFrontmostWindow(const std::vector<InternalWindowInfo>& windows);
    /// The window that is most likely a call, among windows of the one messenger that is known.
    static std::optional<DetectedWindowInfo> likelyCallWindow(const std::vector<InternalWindowInfo>& windows);
    static std::optional<DetectedWindowInfo> candidateForAllWindows();
    static std::optional<DetectedWindowInfo> candidateForSpecificApps(const std::set<std::string>& selected);

  private:
    WindowMonitor();
    void poll();
    void cancelTimer();

    std::shared_ptr<platform::DispatchSourceTimer> timer; ///< Only while monitoring.
    platform::DispatchQueue queue;
    std::atomic<bool> isCallActive =
        false; ///< Between a detection and its end. Set by the poll and by stop().
    bool monitoring = false;
};

} // namespace mirrolet
