#pragma once

#include "pip/PiPPanel.h"
#include "platform/coregraphics/CGImage.h"
#include "platform/coregraphics/CGWindowList.h"
#include "platform/dispatch/DispatchQueue.h"
#include "platform/dispatch/DispatchSourceTimer.h"
#include "settings/PiPCorner.h"

#include <functional>
#include <memory>

namespace mirrolet {

/// One picture-in-picture session: mirrors one window of another application into a panel, fifteen times a
/// second, until it is stopped or the window is gone. Main thread, but for the capture tick. Its owner stops
/// it before letting it go.
class PiPController : public std::enable_shared_from_this<PiPController> {
  public:
    explicit PiPController(platform::CGWindowID windowID);
    PiPController(const PiPController&) = delete;
    PiPController& operator=(const PiPController&) = delete;

    /// Shows the panel and begins to capture. Nothing if it is running.
    void start();
    /// Ends the session; never calls onClose. Nothing if it is not running.
    void stop();

    /// Where a new panel goes, in screen coordinates.
    [[nodiscard]] static platform::NSRect initialFrame(PiPCorner corner);

    /// Called once, when the window can no longer be captured.
    std::function<void()> onClose;
    const platform::CGWindowID windowID;
    std::shared_ptr<PiPPanel> panel; ///< Of the running session; nullptr otherwise.
    bool isRunning() const { return running; }

  private:
    void showPanel();
    void startTimer();
    platform::CGImageRef captureFrame(const platform::CGImageRef& last);
    void deliver(const platform::CGImageRef& image);
    void handleCaptureFailure();

    std::shared_ptr<platform::DispatchSourceTimer> timer;
    platform::DispatchQueue captureQueue;
    bool running = false;
};

} // namespace mirrolet
